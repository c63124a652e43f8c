#include "platform/raster/TilePool.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>
#include <vector>

namespace orv::platform {
namespace {

TEST(TilePool, HandsOutWhatWasGivenBack)
{
    TilePool pool;
    TilePool::Tile tile = pool.take();
    const TilePool::Pixels *place = tile.get();

    pool.giveBack(std::move(tile));

    EXPECT_EQ(pool.take().get(), place);
}

TEST(TilePool, KeepsNoMoreThanItPrepares)
{
    TilePool pool;
    std::vector<TilePool::Tile> tiles;
    for (std::size_t i = 0; i < 2 * TilePool::prepared; ++i) {
        tiles.push_back(pool.take());
    }
    EXPECT_EQ(pool.ready(), 0U);

    for (TilePool::Tile &tile : tiles) {
        pool.giveBack(std::move(tile));
    }

    EXPECT_EQ(pool.ready(), TilePool::prepared);
}

TEST(TilePool, HasTilesAtHandOncePrepared)
{
    TilePool pool;
    pool.prepare();
    EXPECT_EQ(pool.ready(), TilePool::prepared);
    std::set<const TilePool::Pixels *> places;
    std::vector<TilePool::Tile> tiles;
    for (std::size_t i = 0; i <= TilePool::prepared; ++i) {
        tiles.push_back(pool.take());
        places.insert(tiles.back().get());
    }
    EXPECT_EQ(places.size(), TilePool::prepared + 1) << "one more than were at hand";

    pool.prepare();

    EXPECT_EQ(pool.ready(), TilePool::prepared);
}

} // namespace
} // namespace orv::platform
