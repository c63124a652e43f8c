#include "orvane-streamer/remote/PairingLimit.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace orv::apps {
namespace {

using namespace std::chrono_literals;

class PairingLimitTest : public ::testing::Test {
protected:
    void noteWrongCodes(const std::string &address, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            limit.noteWrongCode(address);
        }
    }

    std::chrono::steady_clock::time_point now{1000s};
    PairingLimit limit{[this] { return now; }};
};

TEST_F(PairingLimitTest, oneAddressHasTenWrongCodesAMinute)
{
    noteWrongCodes("one", 9);
    EXPECT_EQ(limit.waitFor("one"), 0s);
    noteWrongCodes("one", 1);

    EXPECT_EQ(limit.waitFor("one"), 60s);
    EXPECT_EQ(limit.waitFor("other"), 0s);
}

TEST_F(PairingLimitTest, theWaitEndsWhenTheOldestWrongCodeIsAMinuteAgo)
{
    noteWrongCodes("one", 1);
    now += 20s;
    noteWrongCodes("one", 9);

    EXPECT_EQ(limit.waitFor("one"), 40s);
    now += 39500ms;
    EXPECT_EQ(limit.waitFor("one"), 1s);
    now += 500ms;
    EXPECT_EQ(limit.waitFor("one"), 0s);
}

TEST_F(PairingLimitTest, allAddressesTogetherHaveAHundred)
{
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(limit.waitFor(std::to_string(i)), 0s);
        limit.noteWrongCode(std::to_string(i));
    }

    EXPECT_EQ(limit.waitFor("new"), 60s);
    now += 60s;
    EXPECT_EQ(limit.waitFor("new"), 0s);
}

TEST_F(PairingLimitTest, remembersNoMoreThanItNeeds)
{
    noteWrongCodes("flood", 10'000);

    EXPECT_EQ(limit.waitFor("flood"), 60s);
    EXPECT_EQ(limit.waitFor("other"), 60s);
}

} // namespace
} // namespace orv::apps
