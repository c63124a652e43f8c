#pragma once

#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv::platform {

/// The pixels of an `Image`, or others that lie as those do.
struct PixelRows {
    const std::uint32_t *data;
    int width;

    [[nodiscard]] const std::uint32_t *row(int y) const
    {
        return data + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
};
[[nodiscard]] inline PixelRows rowsOf(const Image &image)
{
    return {image.data(), image.width()};
}

/// The pixels in `within` that differ between two pictures of one size, as few upright rectangles
/// from the top down that do not overlap. `within` lies inside the pictures.
[[nodiscard]] std::vector<PixelRect> changedRects(const PixelRows &before, const PixelRows &after,
                                                  const PixelRect &within);

/// Makes the pixels in `within` those of `from`, in a picture of its size that begins at `to`.
/// Answers what has changed, as `changedRects` does.
[[nodiscard]] std::vector<PixelRect> copyChanges(const PixelRows &from, std::uint32_t *to,
                                                 const PixelRect &within);

/// Copies the pixels of `rect` between two pictures of one size.
void copyPixels(const Image &from, Image &to, const PixelRect &rect);

} // namespace orv::platform
