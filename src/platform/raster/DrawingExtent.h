#pragma once

#include "platform/raster/DrawingRecord.h"
#include "platform/raster/PixelRect.h"

#include <vector>

namespace orv::platform {

// Which pixels a piece of drawing may touch. All answers are in device pixels and may be somewhat
// too large, never too small.

/// A box round a rectangle that `toDevice` maps, with what smoothing adds.
[[nodiscard]] PixelRect pixelsRound(const Rect &rect, const AffineTransform &toDevice);

/// A few boxes that hold all that a mark paints: a long line has one for each of its pieces.
[[nodiscard]] std::vector<PixelRect> extentOf(const DrawingRecord &record,
                                              const drawing::Mark &mark);
/// The same of all marks.
[[nodiscard]] std::vector<PixelRect> extentOf(const DrawingRecord &record);

/// Boxes that hold every pixel which the two leave different on the same ground. Where a line has
/// only grown since, they hold what it has grown by.
[[nodiscard]] std::vector<PixelRect> differenceOf(const DrawingRecord &older,
                                                  const DrawingRecord &newer);

} // namespace orv::platform
