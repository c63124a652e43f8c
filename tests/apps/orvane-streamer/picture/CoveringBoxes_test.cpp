#include "orvane-streamer/picture/CoveringBoxes.h"

#include <gmock/gmock.h>

#include <random>

namespace orv::apps::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

const TileGrid kGrid(60 * TileGrid::kSide, 34 * TileGrid::kSide);

} // namespace

TEST(CoveringBoxes, holdNothingOfAnEmptySet)
{
    const TileSet none(kGrid);

    const auto boxes = coveringBoxes(none);

    EXPECT_THAT(boxes, IsEmpty());
}

TEST(CoveringBoxes, areTheBoxItselfForOneBox)
{
    TileSet set(kGrid);
    set.add({3, 4, 9, 20});

    const auto boxes = coveringBoxes(set);

    EXPECT_EQ(boxes, std::vector<TileBox>({{3, 4, 9, 20}}));
}

TEST(CoveringBoxes, areApartWhereTheTilesAre)
{
    TileSet set(kGrid);
    set.add({0, 0, 2, 2});
    set.add({58, 0, 60, 1});
    set.add({30, 33, 31, 34});

    const auto boxes = coveringBoxes(set);

    EXPECT_THAT(boxes, UnorderedElementsAre(TileBox{0, 0, 2, 2}, TileBox{58, 0, 60, 1},
                                            TileBox{30, 33, 31, 34}));
}

TEST(CoveringBoxes, areOneWhereTwoWouldSaveLittle)
{
    TileSet set(kGrid);
    set.add({10, 10, 12, 12});
    set.add({13, 10, 15, 12});

    const auto boxes = coveringBoxes(set);

    EXPECT_THAT(boxes, ElementsAre(TileBox{10, 10, 15, 12}));
}

TEST(CoveringBoxes, areOneWhereTwoWouldSaveAFewTiles)
{
    TileSet set(kGrid);
    set.add({10, 10, 11, 11});
    set.add({17, 10, 18, 11});

    const auto boxes = coveringBoxes(set);

    EXPECT_THAT(boxes, ElementsAre(TileBox{10, 10, 18, 11}));
}

TEST(CoveringBoxes, areOneWhereTwoWouldSaveASmallPartOnly)
{
    TileSet set(kGrid);
    set.add({0, 0, 60, 34});
    set.remove({0, 16, 60, 17});

    const auto boxes = coveringBoxes(set);

    EXPECT_THAT(boxes, ElementsAre(TileBox{0, 0, 60, 34}));
}

TEST(CoveringBoxes, holdEveryTileAreFewAndDoNotOverlap)
{
    std::minstd_rand random(7);
    for (int attempt = 0; attempt < 200; ++attempt) {
        TileSet set(kGrid);
        for (unsigned i = random() % 40; i < 40; ++i) {
            const int column = static_cast<int>(random() % 60);
            const int row = static_cast<int>(random() % 34);
            set.add({column, row, column + 1, row + 1});
        }

        const auto boxes = coveringBoxes(set);

        EXPECT_LE(boxes.size(), 4U);
        TileSet left = set;
        TileSet covered(kGrid);
        for (const TileBox &box : boxes) {
            forEachTile(covered, box, [](int, int) { ADD_FAILURE() << "overlaps"; });
            covered.add(box);
            left.remove(box);
            EXPECT_EQ(boundsIn(set, box), box);
        }
        EXPECT_TRUE(left.isEmpty());
    }
}

} // namespace orv::apps::test
