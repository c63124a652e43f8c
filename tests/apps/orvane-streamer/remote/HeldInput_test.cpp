#include "orvane-streamer/remote/HeldInput.h"

#include "apps/orvane-streamer/remote/RawClient.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace orv::apps {
namespace {

using ::testing::IsEmpty;

stCommand_mgs mouse(std::uint32_t event, std::uint8_t x, std::uint8_t y, std::uint16_t plugin = 17)
{
    return {plugin, 1, 0xEFFD, event, {0, 0, 0, x, 0, 0, 0, y}};
}

stCommand_mgs key(std::uint32_t action, std::uint8_t code, std::uint16_t plugin = 17)
{
    return {plugin, 1, 0xEFFE, action, {0, 0, 0, code}};
}

class HeldInputTest : public ::testing::Test {
protected:
    void follow(const std::vector<stCommand_mgs> &records) { held.follow(records); }
    void expectLift(const std::vector<stCommand_mgs> &wanted)
    {
        EXPECT_EQ(bytesOf(held.lift()), bytesOf(wanted));
    }

    HeldInput held;
};

TEST_F(HeldInputTest, liftsAButtonAtTheLastPoint)
{
    follow({mouse(5, 1, 2), mouse(10, 3, 4)});

    expectLift({mouse(6, 3, 4)});
    EXPECT_THAT(held.lift(), IsEmpty());
}

TEST_F(HeldInputTest, liftsNothingThatIsUp)
{
    follow({mouse(10, 1, 1), mouse(5, 1, 2), mouse(6, 3, 4), mouse(8, 1, 1), mouse(9, 1, 1),
            key(1, 65), key(2, 65), key(64, 7)});

    EXPECT_THAT(held.lift(), IsEmpty());
}

TEST_F(HeldInputTest, liftsBothButtonsAndKeys)
{
    follow({key(1, 16), mouse(8, 1, 2), mouse(5, 3, 4), key(1, 65), key(2, 16)});

    expectLift({mouse(6, 3, 4), mouse(9, 3, 4), key(2, 65)});
}

TEST_F(HeldInputTest, knowsEachPluginsOwn)
{
    follow({mouse(5, 1, 2), mouse(5, 3, 4, 0), mouse(6, 5, 6), key(1, 65, 0)});

    expectLift({mouse(6, 3, 4, 0), key(2, 65, 0)});
}

TEST_F(HeldInputTest, theWheelHasNoPoint)
{
    follow({mouse(5, 1, 2), mouse(11, 0, 0)});

    expectLift({mouse(6, 1, 2)});
}

TEST_F(HeldInputTest, otherRecordsHoldNothing)
{
    follow({{17, 1, 1, 5, {}}, {17, 1, 5, 1, {}}});

    EXPECT_THAT(held.lift(), IsEmpty());
}

TEST_F(HeldInputTest, keepsNoMoreKeysThanThereAre)
{
    std::vector<stCommand_mgs> many;
    for (int i = 0; i < 1000; ++i) {
        many.push_back({17,
                        1,
                        0xEFFE,
                        1,
                        {0, 0, static_cast<std::uint8_t>(i >> 8), static_cast<std::uint8_t>(i)}});
    }

    follow(many);

    EXPECT_EQ(held.lift().size(), HeldInput::mostKeys);
}

} // namespace
} // namespace orv::apps
