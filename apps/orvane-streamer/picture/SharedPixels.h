#pragma once

#include "orvane-streamer/picture/ScreenConnection.h"

#include <xcb/shm.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace orv::apps {

/// Memory that the X server writes pixels into.
///
/// Borrows  the connection.
class SharedPixels {
public:
    /// Has no memory when the server shares none, as over a network.
    SharedPixels(xcb_connection_t *connection, std::size_t pixels);
    ~SharedPixels();
    SharedPixels(const SharedPixels &) = delete;
    SharedPixels &operator=(const SharedPixels &) = delete;

    [[nodiscard]] std::span<const std::uint32_t> pixels() const { return pixels_; }
    [[nodiscard]] xcb_shm_seg_t segment() const { return segment_; }

private:
    xcb_connection_t *connection_;
    xcb_shm_seg_t segment_ = 0;
    std::span<const std::uint32_t> pixels_;
};

} // namespace orv::apps
