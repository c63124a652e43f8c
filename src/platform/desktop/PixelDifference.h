#pragma once

#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <vector>

namespace orv::platform {

/// The pixels in `within` that differ between two pictures of one size, as few upright rectangles
/// from the top down that do not overlap. `within` lies inside the pictures.
[[nodiscard]] std::vector<PixelRect> changedRects(const Image &before, const Image &after,
                                                  const PixelRect &within);

/// Copies the pixels of `rect` between two pictures of one size.
void copyPixels(const Image &from, Image &to, const PixelRect &rect);

} // namespace orv::platform
