#pragma once

#include "platform/desktop/SharedPixels.h"
#include "platform/desktop/XConnection.h"
#include "platform/values/Image.h"

#include <QRect>

#include <cstdint>
#include <optional>

namespace orv::platform {

/// The pixels of an area of a window or pixmap, 32 bits each, as they come through the connection.
/// Nothing when the area is empty or not inside, or the pixels are of another kind than 32-bit RGB.
[[nodiscard]] std::optional<Image> readPixels(const XConnection &x, xcb_drawable_t drawable,
                                              const QRect &area);

/// Reads pixels of the X server in the fastest way that there is.
///
/// Thread   main thread only.
class PixelReader {
public:
    explicit PixelReader(const XConnection &x) : x_(x), shared_(x) {}

    /// As `readPixels`, in rows of the area's width; they stay until the next call. Null where that
    /// has nothing.
    [[nodiscard]] const std::uint32_t *read(xcb_drawable_t drawable, const QRect &area);

private:
    const XConnection &x_;
    SharedPixels shared_;
    std::optional<Image> received_;
};

} // namespace orv::platform
