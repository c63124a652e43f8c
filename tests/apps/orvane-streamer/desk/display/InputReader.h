#pragma once

#include "orvane-streamer/desk/KeyLayout.h"
#include "orvane-streamer/desk/XServer.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace orv::apps::test {

/// A window over the whole screen that writes down what it gets, and reads keys as applications do:
/// by the layout that the X server has when it comes to the event.
class InputReader {
public:
    struct Button {
        int number = 0;
        bool isDown = false;
        int x = 0;
        int y = 0;

        bool operator==(const Button &) const = default;
    };

    /// Returns when the window is there and has the keyboard.
    InputReader();

    /// Takes events until the condition holds; false when it does not within seconds.
    bool reads(const std::function<bool()> &condition);
    /// Whether the text becomes this one.
    bool readsText(const std::string &expected);

    /// How many keys the X server says are down.
    int keysDown();
    /// Whether it says that a button is down.
    bool hasButtonDown();
    /// What all keys bear.
    std::vector<std::uint32_t> mapping();
    /// Key or button, pressed by another program than the one under test.
    void pressKey(std::uint8_t key, bool down);
    void pressButton(std::uint8_t button, bool down);
    /// Gives a key another symbol.
    void write(std::uint8_t key, xkb_keysym_t symbol);
    /// 0 where no key bears the symbol alone.
    [[nodiscard]] std::uint8_t keyOf(xkb_keysym_t symbol);

    /// The characters of keys that went down, in UTF-8.
    std::string text;
    /// Symbols as they went down, then with a minus as they came up.
    std::vector<std::string> keys;
    std::vector<Button> buttons;
    int pointerX = -1;
    int pointerY = -1;

private:
    void take(const xcb_generic_event_t &event);
    void takeKey(const xcb_key_press_event_t &event, bool down);
    void readLayout();

    XServer server_;
    std::unique_ptr<xkb_context, XkbUnref> context_;
    std::unique_ptr<xkb_keymap, XkbUnref> keymap_;
    xcb_window_t window_ = 0;
    bool isVisible_ = false;
    bool isFocused_ = false;
};

} // namespace orv::apps::test
