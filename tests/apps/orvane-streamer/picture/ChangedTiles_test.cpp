#include "orvane-streamer/picture/ChangedTiles.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace orv::apps::test {

namespace {

/// 100 x 70 pixels: 4 x 3 tiles, of which the last ones are cut off.
class ChangedTiles : public testing::Test {
protected:
    static std::size_t at(int x, int y) { return static_cast<std::size_t>(y * 100 + x); }
    [[nodiscard]] std::vector<std::pair<int, int>> marked() const
    {
        std::vector<std::pair<int, int>> tiles;
        forEachTile(changed, changed.all(),
                    [&tiles](int column, int row) { tiles.emplace_back(column, row); });
        return tiles;
    }

    Picture picture{TileGrid(100, 70)};
    TileSet changed{picture.grid};
    std::vector<std::uint32_t> screen = picture.pixels;
};

using Tiles = std::vector<std::pair<int, int>>;

} // namespace

TEST_F(ChangedTiles, areNoneWhereNothingLooksDifferent)
{
    screen.assign(screen.size(), 0x00123456);
    takeOver(picture, picture.grid.all(), screen, changed);
    changed.remove(changed.all());

    takeOver(picture, picture.grid.all(), screen, changed);

    EXPECT_TRUE(changed.isEmpty());
}

TEST_F(ChangedTiles, areThoseWithAPixelThatDiffers)
{
    screen[at(32, 31)] = 1;
    screen[at(99, 69)] = 0x00010000;

    takeOver(picture, picture.grid.all(), screen, changed);

    EXPECT_EQ(marked(), (Tiles{{1, 0}, {3, 2}}));
    EXPECT_EQ(picture.pixels, screen);
}

TEST_F(ChangedTiles, doNotHeedTheUnusedByte)
{
    screen[at(5, 5)] = 0xff000000;

    takeOver(picture, picture.grid.all(), screen, changed);

    EXPECT_TRUE(changed.isEmpty());
}

TEST_F(ChangedTiles, lieWhereTheBoxLies)
{
    const TileBox box{2, 1, 4, 3};
    std::vector<std::uint32_t> fresh(36 * 38);
    fresh[36 * 33 + 35] = 7;

    takeOver(picture, box, fresh, changed);

    EXPECT_EQ(marked(), (Tiles{{3, 2}}));
    EXPECT_EQ(picture.pixels[at(99, 65)], 7U);
}

TEST_F(ChangedTiles, areAddedToThoseBefore)
{
    changed.add({0, 2, 1, 3});
    screen[at(64, 0)] = 9;

    takeOver(picture, picture.grid.all(), screen, changed);

    EXPECT_EQ(marked(), (Tiles{{2, 0}, {0, 2}}));
}

} // namespace orv::apps::test
