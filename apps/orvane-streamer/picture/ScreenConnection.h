#pragma once

#include "orvane-streamer/picture/ScreenArea.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace orv::apps {

/// Frees what xcb hands over.
struct XcbFree {
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T> using XcbReply = std::unique_ptr<T, XcbFree>;

/// A connection of one's own to the X server, and the size of its screen.
///
/// Thread   one at a time.
class ScreenConnection {
public:
    /// Connects to the display that DISPLAY names. Throws `std::runtime_error` with one sentence
    /// when it cannot, or when the screen has no pixels of 32-bit RGB.
    ScreenConnection();

    [[nodiscard]] xcb_connection_t *get() const { return connection_.get(); }
    [[nodiscard]] xcb_window_t root() const { return root_; }
    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(get()) != 0; }
    /// To be polled for input once `nextEvent` has nothing more.
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(get()); }

    /// Does not wait; nothing when no event is there. Errors of requests are no events.
    XcbReply<xcb_generic_event_t> nextEvent();
    /// Follows an event of the screen; true when its size is another one now.
    bool resizes(const xcb_generic_event_t &event);

private:
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_;
    xcb_window_t root_ = 0;
    int width_ = 0;
    int height_ = 0;
};

} // namespace orv::apps
