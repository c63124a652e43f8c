#pragma once

#include "orvane-streamer/picture/Tiles.h"

#include <vector>

namespace orv::apps {

/// The smallest box that holds all tiles of a set that lie in `box`; empty when there are none.
TileBox boundsIn(const TileSet &set, const TileBox &box);

/// A few boxes that hold all tiles of a set and as few others as is worth a box of its own.
///
/// Four at most; they do not overlap.
std::vector<TileBox> coveringBoxes(const TileSet &set);

} // namespace orv::apps
