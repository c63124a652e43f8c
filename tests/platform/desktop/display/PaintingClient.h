#pragma once

#include <xcb/xcb.h>

#include <QRect>

#include <cstdint>
#include <vector>

namespace orv::platform::test {

/// Another program on the display that shows windows of all sorts, none of them managed. What it
/// asks for is done when a call returns.
///
/// Units    pixels from the top left corner of the screen.
class PaintingClient {
public:
    PaintingClient();
    /// The screen has a black background without a picture again.
    ~PaintingClient();
    PaintingClient(const PaintingClient &) = delete;
    PaintingClient &operator=(const PaintingClient &) = delete;

    /// A window of one colour (0xRRGGBB) above all others. The frame is without the border, which
    /// is white.
    xcb_window_t show(const QRect &frame, std::uint32_t color, int border = 0);
    /// The same of one premultiplied 0xAARRGGBB pixel.
    xcb_window_t showTranslucent(const QRect &frame, std::uint32_t pixel);
    void hide(xcb_window_t window);
    void destroy(xcb_window_t window);
    void recolor(xcb_window_t window, std::uint32_t color);
    /// Rectangles from the window's top left corner.
    void setShape(xcb_window_t window, const std::vector<QRect> &rects);
    /// As compositors apply it, 0 to 1.
    void setOpacity(xcb_window_t window, double opacity);
    /// Makes any window a child of one of this client's, at its top left corner.
    void adopt(xcb_window_t child, xcb_window_t parent);

    /// The root window's own colour, with no picture.
    void setRootColor(std::uint32_t color);
    /// A picture of the root window that its programs share, in rows of `width`.
    void setRootPicture(int width, const std::vector<std::uint32_t> &pixels);
    /// A name of a picture that there is none of.
    void setLostRootPicture();

private:
    xcb_window_t showWindow(const QRect &frame, std::uint8_t depth, xcb_visualid_t visual,
                            std::uint32_t pixel, int border);
    void setRootPictureName(xcb_pixmap_t name);
    [[nodiscard]] xcb_atom_t atom(const char *name);
    void finish();

    xcb_connection_t *connection_;
    const xcb_screen_t *screen_;
};

} // namespace orv::platform::test
