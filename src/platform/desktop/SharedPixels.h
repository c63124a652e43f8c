#pragma once

#include "platform/desktop/XConnection.h"
#include "platform/raster/PixelRect.h"

#include <QRect>

#include <xcb/shm.h>

#include <cstddef>
#include <cstdint>

namespace orv::platform {

/// Memory that the X server writes pixels into and reads them from, so that they need not go
/// through the connection.
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
    /// Fresh room is all zero.
    [[nodiscard]] bool makeRoom(std::size_t count);
    /// Null before there is room.
    [[nodiscard]] std::uint32_t *pixels() { return static_cast<std::uint32_t *>(memory_); }
    /// The pixels of an area that room was made for, 32 bits each, in rows of its width; they stay
    /// until the next call. Null when it is not inside the drawable or its pixels are of another
    /// kind.
    [[nodiscard]] const std::uint32_t *read(xcb_drawable_t drawable, const QRect &area);
    /// Has the drawable show `rect` of the picture that lies here in rows of `width`, at the same
    /// place; the server reads it some time later. The request waits in the connection's buffer.
    void put(xcb_drawable_t drawable, xcb_gcontext_t context, std::uint8_t depth, int width,
             const PixelRect &rect) const;

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
