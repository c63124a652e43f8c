#pragma once

#include "platform/desktop/XConnection.h"

#include <QRect>

#include <xcb/shm.h>

#include <cstddef>
#include <cstdint>

namespace orv::platform {

/// Memory that the X server writes pixels into, so that they need not come through the connection.
///
/// Thread   main thread only.
/// Fails    where the server is another machine's, or refuses, there is never any room.
class SharedPixels {
public:
    explicit SharedPixels(const XConnection &x);
    ~SharedPixels();
    SharedPixels(const SharedPixels &) = delete;
    SharedPixels &operator=(const SharedPixels &) = delete;

    /// Sees to it that `count` pixels have room; false when they can't have any.
    [[nodiscard]] bool makeRoom(std::size_t count);
    /// The pixels of an area that room was made for, 32 bits each, in rows of its width; they stay
    /// until the next call. Null when it is not inside the drawable or its pixels are of another
    /// kind.
    [[nodiscard]] const std::uint32_t *read(xcb_drawable_t drawable, const QRect &area);

private:
    [[nodiscard]] bool attach(std::size_t bytes);
    void release();

    const XConnection &x_;
    bool isPossible_;
    xcb_shm_seg_t segment_ = XCB_NONE;
    void *memory_ = nullptr;
    std::size_t room_ = 0;
};

} // namespace orv::platform
