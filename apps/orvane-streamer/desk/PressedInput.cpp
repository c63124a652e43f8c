#include "orvane-streamer/desk/PressedInput.h"

#include <xcb/xtest.h>

#include <algorithm>

namespace orv::apps {

PressedInput::PressedInput(xcb_connection_t *connection, xcb_window_t root)
    : connection_(connection), root_(root)
{
}

PressedInput::~PressedInput()
{
    while (!down_.empty()) {
        const Pressed last = down_.back();
        release(last.kind, last.code);
    }
    xcb_flush(connection_);
}

void PressedInput::move(const ScreenPoint &point)
{
    constexpr std::uint8_t absolute = 0;
    send(XCB_MOTION_NOTIFY, absolute, point);
}

void PressedInput::press(Kind kind, std::uint8_t code)
{
    if (!isDown(kind, code)) {
        down_.push_back({kind, code});
        send(kind == Kind::key ? XCB_KEY_PRESS : XCB_BUTTON_PRESS, code);
    }
}

void PressedInput::release(Kind kind, std::uint8_t code)
{
    if (std::erase(down_, Pressed{kind, code}) != 0) {
        send(kind == Kind::key ? XCB_KEY_RELEASE : XCB_BUTTON_RELEASE, code);
    }
}

void PressedInput::tap(Kind kind, std::uint8_t code)
{
    const bool wasDown = isDown(kind, code);
    release(kind, code);
    press(kind, code);
    if (!wasDown) {
        release(kind, code);
    }
}

bool PressedInput::isDown(Kind kind, std::uint8_t code) const
{
    return std::find(down_.begin(), down_.end(), Pressed{kind, code}) != down_.end();
}

std::vector<std::uint8_t> PressedInput::keysDown() const
{
    std::vector<std::uint8_t> keys;
    for (const Pressed &pressed : down_) {
        if (pressed.kind == Kind::key) {
            keys.push_back(pressed.code);
        }
    }
    return keys;
}

void PressedInput::send(std::uint8_t type, std::uint8_t code, const ScreenPoint &point)
{
    xcb_test_fake_input(connection_, type, code, XCB_CURRENT_TIME, root_,
                        static_cast<std::int16_t>(point.x), static_cast<std::int16_t>(point.y), 0);
}

} // namespace orv::apps
