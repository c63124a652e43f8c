#pragma once

#include "platform/desktop/Pixmap.h"
#include "platform/desktop/XConnection.h"
#include "platform/values/Image.h"

#include <QRect>
#include <QRegion>

#include <cstdint>
#include <map>
#include <vector>

namespace orv::platform {

/// One window as a layer of the screen: where it is seen and where its pixels are.
///
/// Units    device pixels from the top left corner of the X screen.
struct ScreenLayer {
    /// Of all its pixels.
    QRect frame;
    /// The part of the frame that it covers.
    QRegion shape;
    /// The pixels have premultiplied alpha.
    bool hasAlpha = false;
    /// Of the whole window, 0 to 255.
    std::uint32_t opacity = 255;
    /// The pixels of another program's window.
    Pixmap pixmap;
    /// The pixels of a window of ours, borrowed of it; null for another program's.
    const Image *picture = nullptr;

    [[nodiscard]] bool hidesWhatLiesBelow() const { return !hasAlpha && opacity == 255; }
};

/// The layers of those among `windows`, top-level ones that are redirected, that are seen in
/// `area`. What goes meanwhile is left out, and so is what has other pixels than 32-bit RGB. With
/// `isBlended` a window's own opacity counts, as a compositor applies it.
[[nodiscard]] std::map<xcb_window_t, ScreenLayer> layersOf(const XConnection &x,
                                                           const std::vector<xcb_window_t> &windows,
                                                           const QRect &area, bool isBlended);

/// Takes from each layer what others hide of it, beginning at the last one, the frontmost. Answers
/// what of `area` is still open below all.
[[nodiscard]] QRegion withoutHiddenParts(std::vector<ScreenLayer> &layers, const QRegion &area);

} // namespace orv::platform
