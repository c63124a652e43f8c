#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace orv::apps::test {

/// Another program on the display, with one window that the window manager leaves alone.
///
/// Units    pixels from the top left corner of the screen; colours 0xRRGGBB.
class Painter {
public:
    Painter();
    ~Painter();
    Painter(const Painter &) = delete;
    Painter &operator=(const Painter &) = delete;

    void showWindow(int x, int y, int width, int height, std::uint32_t colour);
    void hideWindow();
    /// The whole window, for good: the server paints it again where a compositor begins.
    void recolour(std::uint32_t colour);
    /// Inside the window.
    void fill(int x, int y, int width, int height, std::uint32_t colour);
    [[nodiscard]] std::uint32_t pixel(int x, int y);
    /// False when the server does not let it.
    bool resizeScreen(int width, int height);

private:
    void sync();

    xcb_connection_t *connection_;
    xcb_screen_t *screen_;
    xcb_window_t window_ = 0;
    xcb_gcontext_t context_ = 0;
    int x_ = 0;
    int y_ = 0;
};

} // namespace orv::apps::test
