#include "orvane-streamer/desk/InputRecord.h"

#include "apps/orvane-streamer/desk/Records.h"

#include <gtest/gtest.h>

namespace orv::apps::test {

namespace {

using Act = MouseInput::Act;

constexpr ScreenSize kScreen{1920, 1080};

ScreenPoint pointAt(std::uint32_t x, std::uint32_t y, const DesktopInput::Place &place)
{
    return screenPoint({Act::move, 0, x, y}, place, kScreen);
}

} // namespace

TEST(InputAction, isAMouseActForEachMouseEvent)
{
    const std::vector<std::pair<std::uint32_t, MouseInput>> expected{
        {5, {Act::press, 1, 300, 200}},  {6, {Act::release, 1, 300, 200}},
        {8, {Act::press, 3, 300, 200}},  {9, {Act::release, 3, 300, 200}},
        {10, {Act::move, 0, 300, 200}},  {11, {Act::click, 4, 300, 200}},
        {12, {Act::click, 5, 300, 200}},
    };

    for (const auto &[event, act] : expected) {
        const auto action = inputAction(mouse(event, 300, 200));

        ASSERT_TRUE(action) << event;
        EXPECT_EQ(*action, InputAction(act)) << event;
    }
}

TEST(InputAction, takesBothCoordinatesFromTheSecondWordWhenTheFirstIsZero)
{
    const auto record = mouse(10, 0, 0x00C80000);

    const auto action = inputAction(record);

    EXPECT_EQ(action, InputAction(MouseInput{Act::move, 0, 0, 0xC8}));
}

TEST(InputAction, takesXFromTheLowHalfOfAPackedPoint)
{
    const auto record = mouse(10, 0, 0xFFFF8001);

    const auto action = inputAction(record);

    EXPECT_EQ(action, InputAction(MouseInput{Act::move, 0, 0x8001, 0xFFFF}));
}

TEST(InputAction, isAKeyGoingDownOrUp)
{
    const auto down = key(0x70, true);
    const auto up = key(0x01020304, false);

    const auto first = inputAction(down);
    const auto second = inputAction(up);

    EXPECT_EQ(first, InputAction(KeyInput{0x70, true}));
    EXPECT_EQ(second, InputAction(KeyInput{0x01020304, false}));
}

TEST(InputAction, isATypedUnit)
{
    const auto record = typed(0x6F22);

    const auto action = inputAction(record);

    EXPECT_EQ(action, InputAction(TypedUnit{u'漢'}));
}

TEST(InputAction, isNothingForWhatMeansNothing)
{
    const std::vector<stCommand_mgs> records{mouse(0, 1, 1),
                                             mouse(4, 1, 1),
                                             mouse(7, 1, 1),
                                             mouse(13, 1, 1),
                                             mouse(0xFFFFFFFF, 1, 1),
                                             record(0xEFFE, 0, 65, 65),
                                             record(0xEFFE, 3, 65, 65),
                                             typed(0x10000),
                                             record(1, 5, 1, 1),
                                             record(0, 1, 1, 1),
                                             record(0xEFFF, 1, 65, 65)};

    for (const stCommand_mgs &each : records) {
        const auto action = inputAction(each);

        EXPECT_FALSE(action) << each.wparam << " " << each.lparam;
    }
}

TEST(ScreenPoint, isThePixelThatThePointLiesIn)
{
    const DesktopInput::Place place{100, 50, 8};

    const auto first = pointAt(8, 16, place);
    const auto last = pointAt(15, 23, place);

    EXPECT_EQ(first, (ScreenPoint{101, 52}));
    EXPECT_EQ(last, (ScreenPoint{101, 52}));
}

TEST(ScreenPoint, isTheNearestOnTheScreenForAPointBeyond)
{
    const DesktopInput::Place left{-500, -20, 1};
    const DesktopInput::Place right{1900, 1000, 1};

    const auto beyondTheStart = pointAt(10, 10, left);
    const auto beyondTheEnd = pointAt(0xFFFFFFFF, 0xFFFFFFFF, right);

    EXPECT_EQ(beyondTheStart, (ScreenPoint{0, 0}));
    EXPECT_EQ(beyondTheEnd, (ScreenPoint{1919, 1079}));
}

TEST(ScreenPoint, isSomewhereForAScaleAndAScreenThatAreNone)
{
    const DesktopInput::Place place{0, 0, 0};

    const auto unscaled = pointAt(7, 9, place);
    const auto nowhere = screenPoint({Act::move, 0, 7, 9}, place, {});

    EXPECT_EQ(unscaled, (ScreenPoint{7, 9}));
    EXPECT_EQ(nowhere, (ScreenPoint{0, 0}));
}

TEST(CharacterJoiner, givesUnitsOutsideThePairsAtOnce)
{
    CharacterJoiner joiner;

    const auto first = joiner.add(u'\uD7FF');
    const auto second = joiner.add(u'\uE000');

    EXPECT_EQ(first, U'\uD7FF');
    EXPECT_EQ(second, U'\uE000');
}

TEST(CharacterJoiner, makesOneCharacterOfAPair)
{
    CharacterJoiner joiner;

    const auto half = joiner.add(0xD83D);
    const auto whole = joiner.add(0xDE00);

    EXPECT_FALSE(half);
    EXPECT_EQ(whole, U'😀');
}

TEST(CharacterJoiner, reachesTheLastCharacterThereIs)
{
    CharacterJoiner joiner;

    joiner.add(0xDBFF);
    const auto last = joiner.add(0xDFFF);

    EXPECT_EQ(last, U'\U0010FFFF');
}

TEST(CharacterJoiner, dropsHalvesThatAreAlone)
{
    CharacterJoiner joiner;

    const auto second = joiner.add(0xDE00);
    joiner.add(0xD83D);
    const auto between = joiner.add(u'x');
    const auto afterwards = joiner.add(0xDE00);

    EXPECT_FALSE(second);
    EXPECT_EQ(between, U'x');
    EXPECT_FALSE(afterwards);
}

} // namespace orv::apps::test
