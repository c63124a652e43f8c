#include "orvane-streamer/remote/PairedBrowsers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <set>
#include <string>
#include <vector>

namespace orv::apps {
namespace {

using namespace std::chrono_literals;
using std::chrono::system_clock;

class PairedBrowsersTest : public ::testing::Test {
protected:
    PairedBrowsers with(std::vector<PairedBrowser> known)
    {
        return {[this] { return now; }, std::move(known)};
    }
    static std::string token(char digit) { return std::string(48, digit); }

    system_clock::time_point now = system_clock::time_point(1'000'000h);
    PairedBrowsers browsers = with({});
};

TEST_F(PairedBrowsersTest, knowsATokenForTwelveHours)
{
    const std::string token = browsers.add();

    now += 12h - 1s;
    EXPECT_TRUE(browsers.isKnown(token));
    now += 1s;
    EXPECT_FALSE(browsers.isKnown(token));
    EXPECT_TRUE(browsers.all().empty());
}

TEST_F(PairedBrowsersTest, renewingBeginsTheTwelveHoursAnew)
{
    const std::string token = browsers.add();
    now += 11h;

    browsers.renew(token);

    now += 11h;
    EXPECT_TRUE(browsers.isKnown(token));
}

TEST_F(PairedBrowsersTest, whatIsOverIsNotRenewed)
{
    const std::string token = browsers.add();
    now += 12h;

    browsers.renew(token);

    EXPECT_FALSE(browsers.isKnown(token));
}

TEST_F(PairedBrowsersTest, tokensAreLongAndNeverTheSame)
{
    std::set<std::string> tokens;
    for (int i = 0; i < 60; ++i) {
        tokens.insert(browsers.add());
    }

    EXPECT_EQ(tokens.size(), 60U);
    for (const std::string &token : tokens) {
        EXPECT_EQ(token.size(), 48U);
    }
    EXPECT_FALSE(browsers.isKnown(""));
    EXPECT_FALSE(browsers.isKnown(token('0')));
}

TEST_F(PairedBrowsersTest, theOldestMakesRoom)
{
    const std::string first = browsers.add();
    now += 1s;
    const std::string second = browsers.add();
    now += 1s;

    for (std::size_t i = 2; i < PairedBrowsers::most + 1; ++i) {
        (void)browsers.add();
    }

    EXPECT_FALSE(browsers.isKnown(first));
    EXPECT_TRUE(browsers.isKnown(second));
    EXPECT_EQ(browsers.all().size(), PairedBrowsers::most);
}

TEST_F(PairedBrowsersTest, takesFromAFileOnlyWhatItCanHaveMade)
{
    const auto loaded = with({{token('a'), now + 1h},
                              {token('b'), now},
                              {token('c'), now + 13h},
                              {"short", now + 1h},
                              {token('x'), now + 1h},
                              {token('A'), now + 1h},
                              {"", now + 1h}});

    ASSERT_EQ(loaded.all().size(), 1U);
    EXPECT_TRUE(loaded.isKnown(token('a')));
}

TEST_F(PairedBrowsersTest, takesNoMoreFromAFileThanItRemembers)
{
    std::vector<PairedBrowser> many(1000, {token('a'), now + 1h});
    many.push_back({token('b'), now + 2h});

    const auto loaded = with(many);

    EXPECT_EQ(loaded.all().size(), PairedBrowsers::most);
    EXPECT_TRUE(loaded.isKnown(token('b')));
}

} // namespace
} // namespace orv::apps
