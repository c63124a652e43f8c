#pragma once

#include "platform/desktop/LayerPixels.h"
#include "platform/desktop/PixelReader.h"
#include "platform/desktop/ScreenLayers.h"
#include "platform/desktop/XConnection.h"
#include "platform/ports/ScreenCapture.h"

#include <QRect>
#include <QRegion>

#include <optional>
#include <vector>

namespace orv::platform {

class DesktopDisplays;
class DesktopWindowServer;

/// Pictures of the screen below one of this process's windows, with or without a compositor.
///
/// For its life every top-level window of the screen draws into memory of its own, so that what is
/// covered can be read. Other programs' windows are read from there; ours come from their pictures,
/// as without a compositor the X server has their ink without its alpha.
///
/// Thread   main thread only.
/// Fails    null as well where the X server has no composite extension, and for a rectangle that is
///          not finite or has more pixels a side than the X server can count.
class DesktopScreenCapture final : public ScreenCapture {
public:
    /// All outlive this. To be made before the first window is shown: one that another has covered
    /// before has stale pixels until its program paints it again.
    DesktopScreenCapture(const XConnection &x, DesktopDisplays &displays,
                         DesktopWindowServer &windows);
    ~DesktopScreenCapture() override;
    DesktopScreenCapture(const DesktopScreenCapture &) = delete;
    DesktopScreenCapture &operator=(const DesktopScreenCapture &) = delete;

    [[nodiscard]] ImagePtr capture(const Rect &rect, int windowNumber,
                                   bool includingWindow) override;

private:
    /// In device pixels of the X screen.
    [[nodiscard]] std::optional<QRect> pixelsOf(const Rect &rect) const;
    [[nodiscard]] QRegion displayed() const;
    /// From the rearmost to the frontmost; nothing for an unknown window.
    [[nodiscard]] std::optional<std::vector<ScreenLayer>>
    layersBelow(int windowNumber, bool includingWindow, const QRect &area) const;
    [[nodiscard]] bool paint(const ScreenPicture &picture, const ScreenLayer &layer);

    const XConnection &x_;
    DesktopDisplays &displays_;
    DesktopWindowServer &windows_;
    bool isRedirected_;
    PixelReader reader_;
};

} // namespace orv::platform
