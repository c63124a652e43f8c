#pragma once

#include "orvane-streamer/desk/InputRecord.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace orv::apps {

/// Buttons and keys of the X server as a program presses them; knows which are down by it.
///
/// Borrows  the connection.
/// Thread   one at a time.
class PressedInput {
public:
    enum class Kind { button, key };

    PressedInput(xcb_connection_t *connection, xcb_window_t root);
    /// Lifts all that is down, in the reverse of the order in which it went down.
    ~PressedInput();
    PressedInput(const PressedInput &) = delete;
    PressedInput &operator=(const PressedInput &) = delete;

    void move(const ScreenPoint &point);
    /// What is down already stays as it is.
    void press(Kind kind, std::uint8_t code);
    /// What is not down by this program stays as it is.
    void release(Kind kind, std::uint8_t code);
    /// Down and up; what is down already goes up and down.
    void tap(Kind kind, std::uint8_t code);
    [[nodiscard]] bool isDown(Kind kind, std::uint8_t code) const;
    /// In the order in which they went down.
    [[nodiscard]] std::vector<std::uint8_t> keysDown() const;

private:
    struct Pressed {
        Kind kind = Kind::key;
        std::uint8_t code = 0;

        bool operator==(const Pressed &) const = default;
    };

    void send(std::uint8_t type, std::uint8_t code, const ScreenPoint &point = {});

    xcb_connection_t *connection_;
    xcb_window_t root_;
    std::vector<Pressed> down_;
};

} // namespace orv::apps
