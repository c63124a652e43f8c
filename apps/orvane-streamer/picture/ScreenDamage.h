#pragma once

#include "orvane-streamer/picture/ScreenArea.h"
#include "orvane-streamer/picture/ScreenConnection.h"

#include <xcb/damage.h>
#include <xcb/xfixes.h>

#include <cstdint>
#include <vector>

namespace orv::apps {

/// Where the screen was drawn on.
///
/// Borrows  the connection.
/// Thread   one at a time.
class ScreenDamage {
public:
    explicit ScreenDamage(const ScreenConnection &connection);

    /// Whether the X server tells at all.
    [[nodiscard]] bool isKnown() const { return isKnown_; }
    [[nodiscard]] bool isWatched() const { return damage_ != 0; }
    void watch();
    void unwatch();

    /// Whether the event says that something was drawn since the last `take`.
    [[nodiscard]] bool tells(const xcb_generic_event_t &event) const;
    /// What was drawn on; another event tells of all that comes later.
    std::vector<ScreenArea> take();

private:
    const ScreenConnection &connection_;
    bool isKnown_ = false;
    std::uint8_t event_ = 0;
    xcb_damage_damage_t damage_ = 0;
    xcb_xfixes_region_t region_ = 0;
};

} // namespace orv::apps
