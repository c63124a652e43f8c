#pragma once

#include "platform/raster/DrawingRecord.h"
#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <vector>

namespace orv::platform {

/// Paints things one over another into a picture, with all processors at work on bands of its rows.
///
/// `prelude` are the calls that lead to the state in which each of the things is drawn; they leave
/// it as they found it. What is seen is what one thread would have painted. Returns when all is
/// done.
void paintThings(Image &picture, const PixelGrid &grid, const DrawingRecord &prelude,
                 const std::vector<DrawingRecord> &things);

} // namespace orv::platform
