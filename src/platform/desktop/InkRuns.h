#pragma once

#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <cstdint>
#include <vector>

namespace orv::platform {

/// What of a picture is ink, as rectangles for a window's shape: pure arithmetic, no window.
///
/// A pixel is ink when its alpha is at least `visibleFrom` (1 to 256; nothing is ink at 256).

/// Runs one pixel high, row by row from the top, from the left in each: rows `first` to `end` - 1.
[[nodiscard]] std::vector<PixelRect> inkRuns(const Image &image, int first, int end,
                                             int visibleFrom);
/// How many runs a row has.
[[nodiscard]] int countRuns(const Image &image, int y, int visibleFrom);
/// Runs of bands of `step` rows: a column of a band belongs to it where any of its pixels is ink.
[[nodiscard]] std::vector<PixelRect> coarseInkRuns(const Image &image, int step, int visibleFrom);

struct InkChange {
    /// Ink in `after` and not in `before`, as runs one pixel high.
    std::vector<PixelRect> added;
    /// Ink in `before` and not in `after`.
    std::vector<PixelRect> removed;
};
/// Adds what differs in `within`; the pictures have one size.
void collectInkChange(const Image &before, const Image &after, const PixelRect &within,
                      int visibleFrom, InkChange &change);

/// The colour of a premultiplied pixel without its transparency; black where it has no colour.
[[nodiscard]] std::uint32_t opaqueColor(std::uint32_t pixel);

} // namespace orv::platform
