#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace orv::platform::test {

/// Another program on the display: shows a window of one colour, records what input reaches it,
/// moves the pointer and the keys of the machine, and looks at the screen.
///
/// Units    pixels from the top left corner of the screen.
class XClient {
public:
    XClient();
    ~XClient();
    XClient(const XClient &) = delete;
    XClient &operator=(const XClient &) = delete;

    /// A window of this colour (0xRRGGBB), shown; managed where there is a window manager.
    xcb_window_t showWindow(int x, int y, int width, int height, std::uint32_t color,
                            bool overrideRedirect = false, std::uint32_t pid = 0);
    void raise(xcb_window_t window);
    void move(xcb_window_t window, int x, int y);
    void focus(xcb_window_t window);
    [[nodiscard]] xcb_window_t focused();

    /// Called before each input, so that the X server has done by then what others asked before.
    std::function<void()> beforeInput;
    /// As the mouse and the keyboard of this machine do it.
    void movePointer(int x, int y);
    void button(int number, bool down);
    void key(std::uint32_t keysym, bool down);

    /// Until `ungrabServer`, from any thread, the X server does nothing that other programs ask.
    void grabServer();
    void ungrabServer();

    /// 0xRRGGBB as the screen shows it.
    [[nodiscard]] std::uint32_t pixel(int x, int y);

    /// What the pointer looks like now: premultiplied 0xAARRGGBB from the top down, and the pixel
    /// that points.
    struct PointerLook {
        int width = 0;
        int height = 0;
        int hotX = 0;
        int hotY = 0;
        std::vector<std::uint32_t> pixels;
        friend bool operator==(const PointerLook &, const PointerLook &) = default;
    };
    [[nodiscard]] PointerLook pointerLook();

    /// Presses that have reached windows of this client so far.
    [[nodiscard]] int pressesSeen();
    [[nodiscard]] int keysSeen();

private:
    void input(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0);
    void collectEvents();

    xcb_connection_t *connection_;
    xcb_window_t root_ = 0;
    int presses_ = 0;
    int keys_ = 0;
};

} // namespace orv::platform::test
