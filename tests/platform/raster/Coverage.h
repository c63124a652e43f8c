#pragma once

#include "platform/raster/StrokeMask.h"

#include <cstddef>
#include <vector>

namespace orv::platform {

/// What the mask covers, row after row of its area; nothing is covered then.
inline std::vector<int> takenCoverage(StrokeMask &mask)
{
    const PixelRect &area = mask.area();
    std::vector<int> found(static_cast<std::size_t>(area.width * area.height));
    mask.takeRows([&](const StrokeMask::Row &row) {
        for (std::size_t i = 0; i < row.count; ++i) {
            const auto place =
                static_cast<std::size_t>((row.y - area.y) * area.width + row.x - area.x);
            found[place + i] = row.coverage[i];
        }
    });
    return found;
}

} // namespace orv::platform
