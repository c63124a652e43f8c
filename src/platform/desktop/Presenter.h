#pragma once

#include "platform/desktop/InkShape.h"
#include "platform/desktop/WindowPixels.h"
#include "platform/desktop/XConnection.h"
#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <QRegion>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class QWindow;

namespace orv::platform {

/// Brings a surface's picture onto its window: a small change as it is, of a large one only the
/// pixels that differ from what is there.
///
/// Under a compositor the window shows the pixels with their alpha. Without one it is shaped to
/// the ink, which is then opaque.
///
/// Thread   main thread only.
/// Units    device pixels from the window's top left corner.
class Presenter {
public:
    /// The window has been created and outlives it.
    Presenter(QWindow &window, const XConnection &x);

    /// Shaped or blended from now on; what was presented is put again in the new way. `alpha`, 0 to
    /// 1, is the whole window's; a compositor applies it by itself.
    void setShaped(bool shaped, double alpha);
    /// Shows `model`, of which at most `within` has changed since the last call, and does not wait
    /// for the X server. Another size than then makes all of it new, which does wait.
    void present(const Image &model, const std::vector<PixelRect> &within);
    /// The X server has lost these pixels.
    void expose(const QRegion &region);

    /// Pixels sent to the window so far.
    [[nodiscard]] std::uint64_t pixelsSent() const { return pixelsSent_; }

private:
    struct Shaped {
        InkShape shape;
        int visibleFrom;
        /// What was presented last, with its transparency.
        Image picture;
    };

    [[nodiscard]] PixelRect bounds() const { return {0, 0, pixels_.width(), pixels_.height()}; }
    [[nodiscard]] Image presented() const;
    [[nodiscard]] bool fit(const Image &model);
    void keep(const Image &model, const PixelRect &rect);
    /// Sets `all` when the whole window is to be put.
    std::vector<PixelRect> keepShaped(const Image &model, const PixelRect &within, bool &all);
    void put(std::span<const PixelRect> rects);

    QWindow &window_;
    const XConnection &x_;
    WindowPixels pixels_;
    /// Empty while windows are blended.
    std::optional<Shaped> shaped_;
    std::uint64_t pixelsSent_ = 0;
};

} // namespace orv::platform
