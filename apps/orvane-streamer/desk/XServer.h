#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace orv::apps {

struct XFree {
    void operator()(void *memory) const { std::free(memory); }
};
/// What the X server answered; null when it refused or is gone.
template <typename T> using XReply = std::unique_ptr<T, XFree>;

struct XDisconnect {
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};

/// A connection of one's own to the X server that DISPLAY names.
struct XServer {
    XServer() : connection(xcb_connect(nullptr, &screenNumber)) {}

    [[nodiscard]] xcb_connection_t *get() const { return connection.get(); }
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(get()) != 0; }
    [[nodiscard]] bool has(xcb_extension_t &extension) const
    {
        const auto *data = xcb_get_extension_data(get(), &extension);
        return data != nullptr && data->present != 0;
    }
    /// Only while the connection is not lost.
    [[nodiscard]] const xcb_screen_t &screen() const
    {
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(get()));
        for (int before = screenNumber; before > 0 && screens.rem > 1; --before) {
            xcb_screen_next(&screens);
        }
        return *screens.data;
    }

    int screenNumber = 0;
    std::unique_ptr<xcb_connection_t, XDisconnect> connection;
};

} // namespace orv::apps
