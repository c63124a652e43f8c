#pragma once

#include "platform/desktop/SharedPixels.h"
#include "platform/desktop/VisualFormat.h"
#include "platform/desktop/XConnection.h"
#include "platform/raster/PixelRect.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace orv::platform {

/// The pixels that a window is to show, kept where the X server can read them.
///
/// The server reads them some time after `put`. What was put may be overwritten at once, if only by
/// pixels of a newer frame that are put as well: until the server comes to those it shows parts of
/// two frames at worst.
///
/// Thread   main thread only.
/// Units    device pixels from the window's top left corner.
/// Fails    where the server is another machine's, or refuses to share memory, pixels go through
///          the connection.
class WindowPixels {
public:
    /// Borrows the window, which outlives it.
    WindowPixels(const XConnection &x, xcb_window_t window);
    ~WindowPixels();
    WindowPixels(const WindowPixels &) = delete;
    WindowPixels &operator=(const WindowPixels &) = delete;

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    /// Premultiplied 0xAARRGGBB, the rows one after the other.
    [[nodiscard]] const std::uint32_t *data() const { return pixels_; }
    [[nodiscard]] std::uint32_t *row(int y)
    {
        return pixels_ + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }
    [[nodiscard]] bool isShared() const { return shared_.has_value(); }

    /// All transparent then, and nothing of it put. Waits for the X server's answer.
    void resize(int width, int height);
    /// Has the window show these pixels, which lie inside. The request waits in the connection's
    /// buffer.
    void put(const PixelRect &rect);

private:
    void send(const PixelRect &rect);

    const XConnection &x_;
    xcb_window_t window_;
    xcb_gcontext_t context_;
    VisualFormat format_;
    bool mayShare_;
    int width_ = 0;
    int height_ = 0;
    std::uint32_t *pixels_ = nullptr;
    /// One of the two holds the pixels.
    std::optional<SharedPixels> shared_;
    std::vector<std::uint32_t> own_;
    std::vector<std::uint8_t> request_;
};

} // namespace orv::platform
