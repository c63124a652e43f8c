#include "orvane-streamer/remote/PairingCode.h"

#include "orvane-streamer/remote/Secrets.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <set>
#include <string>

namespace orv::apps {
namespace {

TEST(PairingCode, hasSixteenOfThirtyTwoDigits)
{
    std::set<char> seen;
    std::set<std::string> codes;
    for (int i = 0; i < 200; ++i) {
        const std::string code = makePairingCode();
        EXPECT_EQ(code.size(), 16U);
        seen.insert(code.begin(), code.end());
        codes.insert(code);
    }

    EXPECT_EQ(std::string(seen.begin(), seen.end()), "0123456789ABCDEFGHJKMNPQRSTVWXYZ");
    EXPECT_EQ(codes.size(), 200U);
}

TEST(PairingCode, isShownInGroupsOfFour)
{
    EXPECT_EQ(shownPairingCode("0123456789ABCDEF"), "0123-4567-89AB-CDEF");
    EXPECT_EQ(shownPairingCode(""), "");
}

TEST(PairingCode, isTakenAsPeopleTypeIt)
{
    EXPECT_EQ(normalisedPairingCode("o123-456i 89ab-cdeL"), "0123456189ABCDE1");
    EXPECT_EQ(normalisedPairingCode(shownPairingCode("ZYXWVTSRQPNMKJHG")), "ZYXWVTSRQPNMKJHG");
    EXPECT_EQ(normalisedPairingCode("0123456789ABCDEU"), "0123456789ABCDEU");
    EXPECT_EQ(normalisedPairingCode(""), "");
}

TEST(Secrets, areTheSameOnlyAsAWhole)
{
    EXPECT_TRUE(isSameSecret("abc", "abc"));
    EXPECT_TRUE(isSameSecret("", ""));
    EXPECT_FALSE(isSameSecret("abc", "abd"));
    EXPECT_FALSE(isSameSecret("abc", "bbc"));
    EXPECT_FALSE(isSameSecret("abc", "ab"));
    EXPECT_FALSE(isSameSecret("", "a"));
}

TEST(Secrets, randomBytesFillAll)
{
    std::set<std::uint8_t> first;
    std::set<std::uint8_t> last;
    for (int i = 0; i < 50; ++i) {
        std::array<std::uint8_t, 1000> bytes{};
        fillWithRandom(bytes);
        first.insert(bytes.front());
        last.insert(bytes.back());
    }

    EXPECT_GT(first.size(), 10U);
    EXPECT_GT(last.size(), 10U);
}

} // namespace
} // namespace orv::apps
