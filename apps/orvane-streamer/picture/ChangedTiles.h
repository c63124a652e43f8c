#pragma once

#include "orvane-streamer/picture/Tiles.h"

#include <cstdint>
#include <span>
#include <vector>

namespace orv::apps {

/// The pixels of a whole picture, row by row without gaps, as 0x00RRGGBB. What the high byte holds
/// does not matter.
struct Picture {
    TileGrid grid;
    std::vector<std::uint32_t> pixels;

    Picture() = default;
    explicit Picture(const TileGrid &tiles);
};

/// Takes the present pixels of some tiles over and adds those to `changed` that look different now.
///
/// `fresh`  as many pixels as the tiles have, row by row.
void takeOver(Picture &picture, const TileBox &tiles, std::span<const std::uint32_t> fresh,
              TileSet &changed);

} // namespace orv::apps
