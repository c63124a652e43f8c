#pragma once

#include "InkPointer.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace orv::bench {

/// Draws with the mouse of the X server.
class MousePointer final : public InkPointer {
public:
    MousePointer() : x_(xcb_connect(nullptr, nullptr), xcb_disconnect)
    {
        if (xcb_connection_has_error(x_.get()) != 0) {
            throw std::runtime_error("no X server");
        }
        root_ = xcb_setup_roots_iterator(xcb_get_setup(x_.get())).data->root;
    }
    /// The server may drop what a client that has gone sent last; a button would stay down.
    ~MousePointer() override
    {
        std::free(xcb_get_input_focus_reply(x_.get(), xcb_get_input_focus(x_.get()), nullptr));
    }

    void press(ScreenPoint at) override
    {
        move(at);
        fake(XCB_BUTTON_PRESS, kLeftButton, {});
    }
    void move(ScreenPoint to) override { fake(XCB_MOTION_NOTIFY, 0, to); }
    void release(ScreenPoint /*at*/) override { fake(XCB_BUTTON_RELEASE, kLeftButton, {}); }

private:
    static constexpr std::uint8_t kLeftButton = 1;

    void fake(std::uint8_t event, std::uint8_t detail, ScreenPoint at) const
    {
        xcb_test_fake_input(x_.get(), event, detail, XCB_CURRENT_TIME, root_,
                            static_cast<std::int16_t>(at.x), static_cast<std::int16_t>(at.y), 0);
        xcb_flush(x_.get());
    }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> x_;
    xcb_window_t root_ = 0;
};

} // namespace orv::bench
