#include "orvane-streamer/picture/ViewerFrames.h"

#include "orvane-streamer/picture/PictureLevels.h"

#include <gtest/gtest.h>

namespace orv::apps::test {

namespace {

using std::chrono::milliseconds;

class Frames : public testing::Test {
protected:
    static TileSet tiles(const TileBox &box)
    {
        TileSet set(kGrid);
        set.add(box);
        return set;
    }
    /// Draws at once whatever comes, the refinement included.
    void drawAll()
    {
        for (int i = 0; i < 1000; ++i) {
            if (const auto order = frames.next(now)) {
                now += milliseconds(5);
                frames.shown(order->frame, now);
            } else if (const auto due = frames.due()) {
                now = *due;
            } else {
                return;
            }
        }
        FAIL() << "there is always more to send";
    }

    static inline const TileGrid kGrid{1920, 1080};
    ViewerFrames::Time now{std::chrono::hours(1)};
    ViewerFrames frames{kGrid, now};
};

} // namespace

TEST_F(Frames, beginWithTheWholePicture)
{
    const auto first = frames.next(now);

    ASSERT_TRUE(first);
    EXPECT_EQ(first->frame, 1U);
    EXPECT_EQ(first->tiles, kGrid.all());
    EXPECT_FALSE(frames.next(now));
}

TEST_F(Frames, holdWhatChanged)
{
    drawAll();

    frames.changed(tiles({3, 3, 5, 4}), now);
    const auto order = frames.next(now);

    ASSERT_TRUE(order);
    EXPECT_EQ(order->tiles, (TileBox{3, 3, 5, 4}));
    EXPECT_EQ(order->level, kBestLevel);
}

TEST_F(Frames, areTwoUnderWayAtMost)
{
    drawAll();
    frames.changed(tiles({0, 0, 1, 1}), now);
    const auto first = frames.next(now);
    frames.changed(tiles({5, 5, 6, 6}), now);
    const auto second = frames.next(now);
    frames.changed(tiles({9, 9, 10, 10}), now);

    const auto early = frames.next(now);
    frames.shown(second->frame, now);
    const auto third = frames.next(now);

    EXPECT_FALSE(early);
    ASSERT_TRUE(third);
    EXPECT_EQ(third->frame, first->frame + 2);
    EXPECT_EQ(third->tiles, (TileBox{9, 9, 10, 10}));
}

TEST_F(Frames, gatherWhatChangesWhileTheViewerIsSlow)
{
    drawAll();
    for (int column = 0; column < 2; ++column) {
        frames.changed(tiles({column, 0, column + 1, 1}), now);
        ASSERT_TRUE(frames.next(now));
    }

    for (int column = 10; column < 14; ++column) {
        frames.changed(tiles({column, 8, column + 1, 9}), now);
    }
    EXPECT_FALSE(frames.isReady());
    frames.shown(1, now);
    EXPECT_FALSE(frames.isReady()) << "a frame of long ago";

    ViewerFrames::Order last;
    for (std::uint32_t frame = 1; frame < 1000 && !frames.isReady(); ++frame) {
        frames.shown(frame, now);
    }
    last = frames.next(now).value();
    EXPECT_EQ(last.tiles, (TileBox{10, 8, 14, 9}));
}

TEST_F(Frames, doNotHeedAnAnswerTwice)
{
    drawAll();
    frames.changed(tiles({0, 0, 1, 1}), now);
    const auto first = frames.next(now);
    frames.changed(tiles({1, 0, 2, 1}), now);
    frames.next(now);
    frames.shown(first->frame, now);
    frames.changed(tiles({2, 0, 3, 1}), now);
    frames.next(now);

    frames.shown(first->frame, now);
    frames.shown(0, now);
    frames.shown(0xffffffff, now);

    EXPECT_FALSE(frames.isReady());
}

TEST_F(Frames, beginWithWhatLacksLongest)
{
    drawAll();
    frames.changed(tiles({0, 0, 30, 30}), now);
    now += milliseconds(1);
    frames.changed(tiles({58, 33, 59, 34}), now);

    const auto first = frames.next(now);
    const auto second = frames.next(now);

    EXPECT_EQ(first->tiles, (TileBox{0, 0, 30, 30}));
    EXPECT_EQ(second->tiles, (TileBox{58, 33, 59, 34}));
}

TEST_F(Frames, beginWithTheSmallOfWhatChangedTogether)
{
    drawAll();
    TileSet both = tiles({0, 0, 30, 30});
    both.add({58, 33, 59, 34});
    frames.changed(both, now);

    const auto first = frames.next(now);

    EXPECT_EQ(first->tiles, (TileBox{58, 33, 59, 34}));
}

TEST_F(Frames, takeLargeBoxesBelowTheBestLevel)
{
    drawAll();

    frames.changed(tiles(kGrid.all()), now);
    const auto order = frames.next(now);

    EXPECT_GT(order->level, kBestLevel);
}

TEST_F(Frames, areBetterWhenTheyAreSmall)
{
    drawAll();
    frames.changed(tiles({0, 0, 10, 10}), now);
    const auto large = frames.next(now);
    now += milliseconds(1);

    frames.changed(tiles({20, 20, 24, 24}), now);
    const auto small = frames.next(now);

    EXPECT_GT(large->level, kBestLevel);
    EXPECT_EQ(small->level, kBestLevel);
}

TEST_F(Frames, fallInQualityWhenTheViewerIsLate)
{
    drawAll();
    frames.changed(tiles({0, 0, 10, 10}), now);
    const auto quick = frames.next(now);
    now += milliseconds(90);

    frames.changed(tiles({10, 0, 20, 10}), now);
    const auto meanwhile = frames.next(now);

    EXPECT_EQ(meanwhile->level, quick->level + 1);
}

TEST_F(Frames, areRefinedWhenCalm)
{
    const auto coarse = frames.next(now);
    const auto busy = frames.due();
    frames.shown(coarse->frame, now + milliseconds(10));

    const auto due = frames.due();
    const auto early = frames.next(now + milliseconds(299));
    const auto fine = frames.next(now + milliseconds(300));

    EXPECT_GT(coarse->level, kBestLevel);
    EXPECT_FALSE(busy) << "an answer comes first";
    EXPECT_EQ(due, now + milliseconds(300));
    EXPECT_FALSE(early);
    ASSERT_TRUE(fine);
    EXPECT_EQ(fine->level, kBestLevel);
    EXPECT_FALSE(frames.next(now + milliseconds(300))) << "one after the other";
}

TEST_F(Frames, areRefinedEverywhereAndThenRest)
{
    TileSet coarse = tiles(kGrid.all());
    frames.shown(frames.next(now)->frame, now);

    for (int i = 0; i < 1000 && frames.due(); ++i) {
        now = std::max(now, *frames.due());
        const auto order = frames.next(now);
        ASSERT_TRUE(order);
        EXPECT_LE(order->tiles.count(), 64);
        coarse.remove(order->tiles);
        frames.shown(order->frame, now);
    }

    EXPECT_TRUE(coarse.isEmpty());
    EXPECT_FALSE(frames.due());
    EXPECT_FALSE(frames.next(now + std::chrono::hours(1)));
}

TEST_F(Frames, areRefinedWhereOnlyTheLastColumnIsCoarse)
{
    const TileGrid wide(8000, 4000);
    frames.startOver(wide, now);
    frames.shown(frames.next(now)->frame, now);
    drawAll();
    TileSet diagonal(wide);
    for (int i = 0; i < 120; ++i) {
        diagonal.add({249 - i, i, 250 - i, i + 1});
    }

    frames.changed(diagonal, now);
    drawAll();

    EXPECT_FALSE(frames.due());
}

TEST_F(Frames, areNotRefinedBeforeItIsCalm)
{
    drawAll();
    frames.changed(tiles({0, 0, 20, 20}), now);
    frames.shown(frames.next(now)->frame, now);
    now += milliseconds(200);
    frames.changed(tiles({0, 0, 20, 20}), now);
    frames.shown(frames.next(now)->frame, now);

    const auto early = frames.next(now + milliseconds(150));
    const auto due = frames.due();

    EXPECT_FALSE(early);
    EXPECT_EQ(due, now + milliseconds(300));
}

TEST_F(Frames, areRefinedWhereItIsCalmAndElsewhereLater)
{
    drawAll();
    frames.changed(tiles({0, 0, 20, 20}), now);
    frames.shown(frames.next(now)->frame, now);
    now += milliseconds(200);
    frames.changed(tiles({40, 20, 60, 34}), now);
    frames.shown(frames.next(now)->frame, now);

    const auto order = frames.next(now + milliseconds(150));

    ASSERT_TRUE(order);
    EXPECT_EQ(order->level, kBestLevel);
    EXPECT_LE(order->tiles.right, 20);
}

TEST_F(Frames, stayAtTheirLevelWhenRefiningIsSlow)
{
    const auto first = frames.next(now);
    frames.shown(first->frame, now + milliseconds(50));
    now += milliseconds(400);
    const auto fine = frames.next(now);
    now += milliseconds(500);
    frames.shown(fine->frame, now);

    frames.changed(tiles(kGrid.all()), now);
    const auto second = frames.next(now);

    EXPECT_EQ(second->level, first->level);
}

TEST_F(Frames, startOverWithAnotherPictureAndCountOn)
{
    const auto first = frames.next(now);

    frames.startOver(TileGrid(100, 70), now);
    const auto second = frames.next(now);
    const auto third = frames.next(now);

    EXPECT_EQ(second->tiles, (TileBox{0, 0, 4, 3}));
    EXPECT_EQ(second->frame, first->frame + 1);
    EXPECT_FALSE(third);
    EXPECT_FALSE(frames.isReady());
}

TEST_F(Frames, areNoneOfAPictureWithoutPixels)
{
    frames.startOver(TileGrid(0, 0), now);

    const auto order = frames.next(now);

    EXPECT_FALSE(order);
    EXPECT_FALSE(frames.due());
}

} // namespace orv::apps::test
