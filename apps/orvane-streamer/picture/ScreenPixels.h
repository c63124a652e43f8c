#pragma once

#include "orvane-streamer/picture/ScreenArea.h"
#include "orvane-streamer/picture/ScreenConnection.h"
#include "orvane-streamer/picture/SharedPixels.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <span>

namespace orv::apps {

/// Reads what the screen shows, all windows and overlays included, whether or not a compositor puts
/// them together.
///
/// Borrows  the connection.
/// Thread   one at a time.
class ScreenPixels {
public:
    explicit ScreenPixels(const ScreenConnection &connection) : connection_(connection) {}

    /// Row by row without gaps, as 0x00RRGGBB with anything in the high byte; valid until the next
    /// call. Nothing when the screen has no such area, or is gone.
    std::span<const std::uint32_t> read(const ScreenArea &area);

private:
    bool readShared(const ScreenArea &area);

    const ScreenConnection &connection_;
    std::unique_ptr<SharedPixels> shared_;
    bool isUnshared_ = false;
    XcbReply<xcb_get_image_reply_t> image_;
};

} // namespace orv::apps
