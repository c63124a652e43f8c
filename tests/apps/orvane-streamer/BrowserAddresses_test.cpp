#include "orvane-streamer/BrowserAddresses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::apps {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

TEST(BrowserAddresses, AnAddressOfItsOwnIsOneAddress)
{
    EXPECT_THAT(browserAddresses("127.0.0.1", 8720, "ABC"),
                ElementsAre("http://127.0.0.1:8720/?code=ABC"));
    EXPECT_THAT(browserAddresses("::1", 1, "ABC"), ElementsAre("http://[::1]:1/?code=ABC"));
}

TEST(BrowserAddresses, EveryAddressIsOneForEachNetworkThatOfThisMachineLast)
{
    for (const char *every : {"0.0.0.0", "::"}) {
        const auto addresses = browserAddresses(every, 8720, "ABC");
        ASSERT_FALSE(addresses.empty());
        EXPECT_EQ(addresses.back(), "http://127.0.0.1:8720/?code=ABC");
        EXPECT_THAT(addresses, testing::Not(testing::Contains(StartsWith("http://0.0.0.0"))));
    }
}

TEST(BrowserAddresses, WhatIsNoAddressHasNone)
{
    for (const char *text : {"", "localhost", "1.2.3", "1.2.3.4.5", "256.0.0.1", "::g", "[::1]"}) {
        EXPECT_THAT(browserAddresses(text, 1, "A"), IsEmpty()) << text;
    }
}

TEST(BrowserAddresses, OnlyLoopbackIsClosedToOthers)
{
    EXPECT_FALSE(isOpenToOthers("127.0.0.1"));
    EXPECT_FALSE(isOpenToOthers("127.255.0.1"));
    EXPECT_FALSE(isOpenToOthers("::1"));
    EXPECT_TRUE(isOpenToOthers("0.0.0.0"));
    EXPECT_TRUE(isOpenToOthers("128.0.0.1"));
    EXPECT_TRUE(isOpenToOthers("::"));
    EXPECT_TRUE(isOpenToOthers("fe80::1"));
}

} // namespace
} // namespace orv::apps
