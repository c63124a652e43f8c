#include "orvane-streamer/picture/LivePicture.h"

#include "apps/orvane-streamer/picture/SeenFrame.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orv::apps::test {

namespace {

using std::chrono::milliseconds;

/// A picture of 200 x 100 of which all but 8 columns at the left can be read.
class Live : public testing::Test {
protected:
    Live() { live.startOver({{8, 0, 192, 100}, 200, 100}, now); }

    void fill(const TileBox &tiles, std::uint32_t colour)
    {
        const PixelBox box = live.grid().pixels(tiles);
        const std::vector<std::uint32_t> fresh(static_cast<std::size_t>(box.width * box.height),
                                               colour);
        live.update(tiles, fresh, now);
    }
    /// What came since the last call.
    std::vector<std::pair<std::uint32_t, SeenFrame>> sent()
    {
        live.send(now);
        return std::exchange(frames, {});
    }
    /// Until all viewers have all.
    void settle()
    {
        for (int i = 0; i < 100; ++i) {
            for (const auto &[viewer, frame] : sent()) {
                live.shown(viewer, frame.frame, now);
                i = 0;
            }
            now = std::max(now, live.due().value_or(now));
        }
    }

    LivePicture::Time now{std::chrono::hours(1)};
    std::vector<std::pair<std::uint32_t, SeenFrame>> frames;
    LivePicture live{[this](std::uint32_t viewer, const auto &message) {
        frames.emplace_back(viewer, seen(*message));
    }};
};

} // namespace

TEST_F(Live, sendsNothingToNobody)
{
    fill(live.grid().all(), 0xff0000);

    const auto came = sent();

    EXPECT_TRUE(came.empty());
    EXPECT_FALSE(live.hasViewers());
    EXPECT_FALSE(live.hasReadyViewer());
}

TEST_F(Live, sendsTheWholePictureToANewcomer)
{
    fill(live.grid().all(), 0xff0000);

    live.join(5, now);
    const auto came = sent();

    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].first, 5U);
    EXPECT_EQ(came[0].second.box, (PixelBox{8, 0, 192, 100}));
    EXPECT_EQ(came[0].second.pictureWidth, 200);
    EXPECT_EQ(came[0].second.pictureHeight, 100);
    EXPECT_TRUE(isNear(came[0].second.at(199, 99), 0xff0000, 8));
}

TEST_F(Live, sendsWhatChangedAsItLooksNow)
{
    live.join(5, now);
    settle();
    fill({1, 1, 2, 2}, 0x00ff00);

    fill({1, 1, 2, 2}, 0x0000ff);
    const auto came = sent();

    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].second.box, (PixelBox{40, 32, 32, 32}));
    EXPECT_TRUE(isNear(came[0].second.at(50, 50), 0x0000ff, 4));
}

TEST_F(Live, sendsNothingForPixelsThatAreTheSame)
{
    live.join(5, now);
    fill(live.grid().all(), 0x123456);
    settle();

    fill(live.grid().all(), 0xff123456);
    const auto came = sent();

    EXPECT_TRUE(came.empty());
}

TEST_F(Live, keepsASlowViewerBackAndNoOther)
{
    live.join(5, now);
    live.join(6, now);
    settle();
    std::vector<std::uint32_t> got;

    for (std::uint32_t i = 1; i <= 4; ++i) {
        fill({0, 0, 1, 1}, i * 0x102030);
        for (const auto &[viewer, frame] : sent()) {
            got.push_back(viewer);
            if (viewer == 6) {
                live.shown(viewer, frame.frame, now);
            }
        }
    }

    EXPECT_EQ(std::count(got.begin(), got.end(), 5U), 2);
    EXPECT_EQ(std::count(got.begin(), got.end(), 6U), 4);
    EXPECT_TRUE(live.hasReadyViewer());
    live.leave(6);
    EXPECT_FALSE(live.hasReadyViewer());
    EXPECT_TRUE(live.hasViewers());
}

TEST_F(Live, countsTheFramesOfEachViewer)
{
    live.join(5, now);
    settle();
    live.join(6, now);

    const auto came = sent();

    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].first, 6U);
    EXPECT_EQ(came[0].second.frame, 1U);
}

TEST_F(Live, givesASecondViewerTheSamePixels)
{
    live.join(5, now);
    live.join(6, now);
    settle();

    fill({2, 1, 4, 2}, 0x336699);
    const auto came = sent();

    ASSERT_EQ(came.size(), 2U);
    EXPECT_EQ(came[0].second.box, came[1].second.box);
    EXPECT_EQ(came[0].second.pixels, came[1].second.pixels);
}

TEST_F(Live, showsAnotherPictureWhole)
{
    live.join(5, now);
    settle();

    live.startOver({{0, 0, 64, 64}, 64, 64}, now);
    fill(live.grid().all(), 0x00ff00);
    const auto came = sent();

    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].second.box, (PixelBox{0, 0, 64, 64}));
    EXPECT_EQ(came[0].second.pictureWidth, 64);
    EXPECT_TRUE(isNear(came[0].second.at(63, 63), 0x00ff00, 8));
}

TEST_F(Live, refinesWhenItIsCalmAndThenRests)
{
    live.join(5, now);
    fill(live.grid().all(), 0x00ff00);
    const auto coarse = sent();
    live.shown(5, coarse.at(0).second.frame, now);
    ASSERT_EQ(live.due(), now + milliseconds(300));

    now += milliseconds(300);
    const auto fine = sent();
    live.shown(5, fine.at(0).second.frame, now);

    EXPECT_FALSE(coarse[0].second.hasFineColour);
    EXPECT_TRUE(fine[0].second.hasFineColour);
    EXPECT_EQ(fine[0].second.box, coarse[0].second.box);
    EXPECT_FALSE(live.due());
}

TEST_F(Live, sendsBoxesThatLieApartEachWithItsPixels)
{
    live.startOver({{0, 0, 1280, 640}, 1280, 640}, now);
    live.join(5, now);
    settle();

    fill({0, 0, 1, 1}, 0xff0000);
    fill({39, 19, 40, 20}, 0x0000ff);
    const auto came = sent();

    ASSERT_EQ(came.size(), 2U);
    for (const auto &[viewer, frame] : came) {
        EXPECT_TRUE(
            isNear(frame.at(frame.box.x, frame.box.y), frame.box.x == 0 ? 0xff0000 : 0x0000ff, 8));
    }
}

TEST_F(Live, ignoresAnswersOfNobody)
{
    live.join(5, now);
    sent();

    live.shown(77, 1, now);
    live.shown(5, 99, now);
    live.leave(77);

    EXPECT_TRUE(live.hasReadyViewer());
    EXPECT_FALSE(live.due()) << "the first frame is still under way";
}

} // namespace orv::apps::test
