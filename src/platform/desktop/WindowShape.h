#pragma once

#include "platform/desktop/XConnection.h"
#include "platform/raster/PixelRect.h"

#include <xcb/shape.h>

#include <vector>

namespace orv::platform {

/// Which part of a window is there at all, and which takes input, as the X server keeps it.
///
/// Units    device pixels from the window's top left corner.
class WindowShape {
public:
    /// Borrows the window, which outlives it.
    WindowShape(const XConnection &x, xcb_window_t window) : x_(x), window_(window) {}

    /// `rects`: sorted by y, then x, without overlap; none leaves nothing of the window.
    void set(const std::vector<PixelRect> &rects) const;
    void add(const std::vector<PixelRect> &rects) const;
    void remove(const std::vector<PixelRect> &rects) const;
    /// The whole rectangle, as a window begins.
    void clear() const;
    void setTakesInput(bool takes) const;

private:
    void send(std::uint8_t first, std::uint8_t rest, const std::vector<PixelRect> &rects) const;

    const XConnection &x_;
    xcb_window_t window_;
};

} // namespace orv::platform
