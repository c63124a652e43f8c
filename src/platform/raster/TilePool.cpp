#include "platform/raster/TilePool.h"

#include <utility>

namespace orv::platform {

TilePool::Tile TilePool::take()
{
    if (tiles_.empty()) {
        return std::make_unique_for_overwrite<Pixels>();
    }
    Tile tile = std::move(tiles_.back());
    tiles_.pop_back();
    return tile;
}

void TilePool::giveBack(Tile tile)
{
    if (tiles_.size() < prepared) {
        tiles_.push_back(std::move(tile));
    }
}

void TilePool::prepare()
{
    tiles_.reserve(prepared);
    while (tiles_.size() < prepared) {
        tiles_.push_back(std::make_unique<Pixels>());
    }
}

} // namespace orv::platform
