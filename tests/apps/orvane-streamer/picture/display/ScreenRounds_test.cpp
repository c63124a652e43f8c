#include "apps/orvane-streamer/picture/SeenFrame.h"
#include "apps/orvane-streamer/picture/display/Painter.h"
#include "orvane-streamer/picture/ScreenRounds.h"

#include <gtest/gtest.h>

#include <poll.h>

#include <vector>

namespace orv::apps::test {

namespace {

using std::chrono::milliseconds;

/// With nobody but the painter on the display, so that what changes and when is known.
class Rounds : public testing::Test {
protected:
    Rounds() { painter.showWindow(0, 0, 640, 480, kGreen); }

    /// Runs and answers until there is nothing more to do.
    void settle()
    {
        for (int i = 0; i < 1000; ++i) {
            const std::size_t before = frames.size();
            rounds.run(now);
            if (frames.size() > before) {
                rounds.shown(kAnna, frames.back().frame, now);
            } else if (const auto due = rounds.due()) {
                now = std::max(now, *due);
            } else if (!hears(milliseconds(100))) {
                return;
            }
        }
        FAIL() << "there is always more to do";
    }
    bool hears(milliseconds within)
    {
        pollfd source{rounds.descriptor(), POLLIN, 0};
        return ::poll(&source, 1, static_cast<int>(within.count())) == 1;
    }
    void draw(std::uint32_t colour)
    {
        painter.fill(64, 64, 32, 32, colour);
        ASSERT_TRUE(hears(std::chrono::seconds(10)));
    }

    static constexpr std::uint32_t kAnna = 1;
    static constexpr std::uint32_t kGreen = 0x00ff00;
    static constexpr std::uint32_t kRed = 0xff0000;
    static constexpr std::uint32_t kBlue = 0x0000ff;

    Painter painter;
    std::vector<SeenFrame> frames;
    ScreenRounds::Time now{std::chrono::hours(1)};
    ScreenRounds rounds{{0, 0, 640, 480}, [this](std::uint32_t, const auto &message) {
                            frames.push_back(seen(*message));
                        }};
};

} // namespace

TEST_F(Rounds, haveNothingToDoWhileNobodyLooksOn)
{
    rounds.run(now);

    painter.fill(64, 64, 32, 32, kRed);

    EXPECT_FALSE(hears(milliseconds(100)));
    EXPECT_FALSE(rounds.due());
}

TEST_F(Rounds, bringTheFirstChangeAtOnceAndTheNextAfterARound)
{
    rounds.join(kAnna, now);
    settle();
    now += std::chrono::seconds(1);
    frames.clear();

    draw(kRed);
    rounds.run(now);
    const std::size_t atOnce = frames.size();
    draw(kBlue);
    rounds.run(now + milliseconds(10));
    const std::size_t early = frames.size();
    const auto due = rounds.due();
    rounds.run(now + milliseconds(16));

    EXPECT_EQ(atOnce, 1U);
    EXPECT_EQ(early, 1U);
    EXPECT_EQ(due, now + milliseconds(16));
    ASSERT_EQ(frames.size(), 2U);
    EXPECT_TRUE(isNear(frames[0].at(80, 80), kRed, 8));
    EXPECT_TRUE(isNear(frames[1].at(80, 80), kBlue, 8));
}

TEST_F(Rounds, leaveTheScreenAloneWhileNoViewerIsReady)
{
    rounds.join(kAnna, now);
    settle();
    frames.clear();
    for (const std::uint32_t colour : {kRed, kBlue}) {
        now += std::chrono::seconds(1);
        draw(colour);
        rounds.run(now);
    }
    draw(kRed);
    rounds.run(now + std::chrono::seconds(1));

    painter.fill(64, 64, 32, 32, kGreen);
    const bool isTold = hears(milliseconds(100));
    const auto due = rounds.due();
    rounds.shown(kAnna, frames.back().frame, now);
    rounds.run(now + std::chrono::seconds(2));

    EXPECT_FALSE(isTold);
    EXPECT_FALSE(due);
    ASSERT_EQ(frames.size(), 3U);
    EXPECT_TRUE(isNear(frames[2].at(80, 80), kGreen, 8));
}

TEST_F(Rounds, sendNoPixelsThatAreKnownToBeOld)
{
    rounds.join(kAnna, now);
    settle();
    now += std::chrono::seconds(1);
    frames.clear();
    draw(kRed);
    rounds.run(now);
    draw(kBlue);

    rounds.join(2, now + milliseconds(5));
    rounds.run(now + milliseconds(5));
    const std::size_t early = frames.size();
    rounds.run(now + milliseconds(16));

    EXPECT_EQ(early, 1U);
    ASSERT_EQ(frames.size(), 3U);
    EXPECT_TRUE(isNear(frames[1].at(80, 80), kBlue, 24));
    EXPECT_TRUE(isNear(frames[2].at(80, 80), kBlue, 24));
}

TEST_F(Rounds, beginWithWhatChangedWhileNobodyLookedOn)
{
    rounds.join(kAnna, now);
    settle();
    rounds.leave(kAnna);
    frames.clear();
    painter.fill(64, 64, 32, 32, kRed);

    now += std::chrono::seconds(1);
    rounds.join(kAnna, now);
    rounds.run(now);

    ASSERT_FALSE(frames.empty());
    EXPECT_TRUE(isNear(frames[0].at(80, 80), kRed, 24));
}

} // namespace orv::apps::test
