#pragma once

#include "orvane-streamer/picture/LivePicture.h"
#include "orvane-streamer/picture/ScreenArea.h"
#include "orvane-streamer/picture/ScreenConnection.h"
#include "orvane-streamer/picture/ScreenDamage.h"
#include "orvane-streamer/picture/ScreenPixels.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace orv::apps {

/// Brings what changes on the screen to those who look at it, one round after the other.
///
/// Thread   one at a time; made on any.
class ScreenRounds {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Viewer = LivePicture::Viewer;

    /// Throws as `ScreenConnection`.
    ScreenRounds(const ScreenArea &area, LivePicture::Sink sink);

    void join(Viewer viewer, Time now);
    void leave(Viewer viewer);
    void shown(Viewer viewer, std::uint32_t frame, Time now) { live_.shown(viewer, frame, now); }
    void setArea(const ScreenArea &area, Time now);

    /// Whether the X server tells what changes. Else the whole picture is compared all the time.
    [[nodiscard]] bool isTold() const { return damage_.isKnown(); }
    [[nodiscard]] bool isLost() const { return connection_.isLost(); }
    /// To be polled for input.
    [[nodiscard]] int descriptor() const { return connection_.descriptor(); }

    /// What there is to do now.
    void run(Time now);
    /// When there is something to do though nothing happens until then.
    [[nodiscard]] std::optional<Time> due() const;

private:
    void takeEvents(Time now);
    void placePicture(Time now);
    void look(Time now);
    [[nodiscard]] bool mayHaveChanged() const { return wasDrawn_ || !unread_.isEmpty(); }

    ScreenConnection connection_;
    ScreenDamage damage_;
    ScreenPixels pixels_;
    LivePicture live_;
    ScreenArea area_;
    /// What of the area is on the screen.
    ScreenArea visible_;
    TileSet unread_;
    bool wasDrawn_ = false;
    Time nextLook_;
};

} // namespace orv::apps
