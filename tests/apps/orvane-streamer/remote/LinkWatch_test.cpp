#include "orvane-streamer/remote/LinkWatch.h"

#include "orvane-streamer/remote/MessageRate.h"

#include <gtest/gtest.h>

#include <chrono>

namespace orv::apps {
namespace {

using namespace std::chrono_literals;
using Verdict = LinkWatch::Verdict;

class LinkWatchTest : public ::testing::Test {
protected:
    [[nodiscard]] Verdict after(std::chrono::milliseconds time) const
    {
        return watch.look(begin + time);
    }

    std::chrono::steady_clock::time_point begin{100s};
    LinkWatch watch{begin};
};

TEST_F(LinkWatchTest, aSilentPageIsAskedAndThenGone)
{
    watch.noteGreeting();

    EXPECT_EQ(after(3900ms), Verdict::well);
    EXPECT_EQ(after(4s), Verdict::pingDue);
    EXPECT_EQ(after(9900ms), Verdict::pingDue);
    EXPECT_EQ(after(10s), Verdict::silent);
}

TEST_F(LinkWatchTest, aSignOfLifeBeginsAnew)
{
    watch.noteGreeting();
    watch.noteLife(begin + 9s);

    EXPECT_EQ(after(12s), Verdict::well);
    EXPECT_EQ(after(13s), Verdict::pingDue);
    EXPECT_EQ(after(19s), Verdict::silent);
}

TEST_F(LinkWatchTest, silenceSaysNothingWhileNobodyListens)
{
    watch.noteGreeting();
    watch.notePause();
    EXPECT_EQ(after(60s), Verdict::well);

    watch.noteResumed(begin + 60s);

    EXPECT_EQ(after(63s), Verdict::well);
    EXPECT_EQ(after(70s), Verdict::silent);
}

TEST_F(LinkWatchTest, aPageThatTakesNothingIsSeenEvenWhileNobodyListens)
{
    watch.noteGreeting();
    watch.notePause();
    watch.noteSendingBegun(begin + 5s);

    EXPECT_EQ(after(14900ms), Verdict::well);
    EXPECT_EQ(after(15s), Verdict::notReading);
    watch.noteSendingDone();
    EXPECT_EQ(after(15s), Verdict::well);
}

TEST_F(LinkWatchTest, aPageHasToSayWhoItIs)
{
    watch.noteLife(begin + 9s);

    EXPECT_EQ(after(9900ms), Verdict::well);
    EXPECT_EQ(after(10s), Verdict::neverGreeted);
    watch.noteGreeting();
    EXPECT_EQ(after(10s), Verdict::well);
}

TEST(MessageRate, admitsABurstAndThenSoManyASecond)
{
    std::chrono::steady_clock::time_point now{100s};
    MessageRate rate(10.0, now);
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(rate.admit(now)) << i;
    }
    EXPECT_FALSE(rate.admit(now));

    now += 500ms;
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(rate.admit(now)) << i;
    }
    EXPECT_FALSE(rate.admit(now));

    now += 1h;
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(rate.admit(now)) << i;
    }
    EXPECT_FALSE(rate.admit(now));
}

} // namespace
} // namespace orv::apps
