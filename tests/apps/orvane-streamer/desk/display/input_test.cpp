#include "apps/orvane-streamer/desk/Records.h"
#include "apps/orvane-streamer/desk/display/InputReader.h"
#include "orvane-streamer/desk/DesktopInput.h"

#include <gmock/gmock.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <chrono>
#include <optional>
#include <thread>

namespace orv::apps::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Button = InputReader::Button;

/// A reader's window, and the input that is to reach it. The second is there while it is wanted.
class AnyDisplayInput : public testing::Test {
protected:
    AnyDisplayInput() : before_(reader.mapping()) { input.emplace(DesktopInput::Place{0, 0, 1}); }
    ~AnyDisplayInput() override
    {
        input.reset();
        EXPECT_EQ(reader.keysDown(), 0);
        EXPECT_FALSE(reader.hasButtonDown());
    }

    void type(const std::u16string &text)
    {
        for (const char16_t unit : text) {
            input->take(typed(unit));
        }
    }
    void press(std::uint32_t code)
    {
        input->take(key(code, true));
        input->take(key(code, false));
    }
    bool readsKeys(std::size_t count)
    {
        return reader.reads([&] { return reader.keys.size() >= count; });
    }
    bool readsButtons(std::size_t count)
    {
        return reader.reads([&] { return reader.buttons.size() >= count; });
    }
    [[nodiscard]] const std::vector<std::uint32_t> &mappingBefore() const { return before_; }

    InputReader reader;
    std::optional<DesktopInput> input;

private:
    std::vector<std::uint32_t> before_;
};

} // namespace

TEST_F(AnyDisplayInput, movesThePointerToThePixelOfThePicture)
{
    input->setPlace({100, 50, 8});

    input->take(mouse(10, 8 * 300 + 7, 8 * 200));

    EXPECT_TRUE(reader.reads([&] { return reader.pointerX == 400 && reader.pointerY == 250; }));
}

TEST_F(AnyDisplayInput, keepsThePointerOnTheScreen)
{
    input->setPlace({1900, 0, 1});

    input->take(mouse(10, 100'000, 100'000));

    EXPECT_TRUE(reader.reads([&] { return reader.pointerX == 1919 && reader.pointerY == 1079; }));
}

TEST_F(AnyDisplayInput, pressesAndReleasesBothButtonsWhereTheyWere)
{
    input->take(mouse(5, 10, 20));
    input->take(mouse(6, 30, 40));
    input->take(mouse(8, 50, 60));
    input->take(mouse(9, 0, 80U << 16U));

    ASSERT_TRUE(readsButtons(4));
    EXPECT_THAT(reader.buttons, ElementsAre(Button{1, true, 10, 20}, Button{1, false, 30, 40},
                                            Button{3, true, 50, 60}, Button{3, false, 0, 80}));
}

TEST_F(AnyDisplayInput, turnsTheWheelByNotches)
{
    input->take(mouse(11, 70, 80));
    input->take(mouse(12, 70, 80));

    ASSERT_TRUE(readsButtons(4));
    EXPECT_THAT(reader.buttons, ElementsAre(Button{4, true, 70, 80}, Button{4, false, 70, 80},
                                            Button{5, true, 70, 80}, Button{5, false, 70, 80}));
}

TEST_F(AnyDisplayInput, pressesAButtonOnceWhoeverRepeats)
{
    input->take(mouse(9, 5, 5));
    input->take(mouse(5, 5, 5));
    input->take(mouse(5, 5, 5));
    input->take(mouse(6, 5, 5));
    input->take(mouse(6, 5, 5));
    input->take(mouse(11, 5, 5));

    ASSERT_TRUE(readsButtons(4));
    EXPECT_THAT(reader.buttons, ElementsAre(Button{1, true, 5, 5}, Button{1, false, 5, 5},
                                            Button{4, true, 5, 5}, Button{4, false, 5, 5}));
}

TEST_F(AnyDisplayInput, typesCharactersOfAnyScript)
{
    type(u"aZ 9é{ß漢😀Ж€\r");

    EXPECT_TRUE(reader.readsText("aZ 9é{ß漢😀Ж€\r")) << reader.text;
}

TEST_F(AnyDisplayInput, typesMoreStrangeCharactersThanThereAreSpareKeys)
{
    std::u16string text;
    std::string expected;
    for (char16_t unit = 0x4E00; unit < 0x4E00 + 60; ++unit) {
        text += unit;
        expected +=
            {static_cast<char>(0xE0 | unit >> 12), static_cast<char>(0x80 | (unit >> 6 & 63)),
             static_cast<char>(0x80 | (unit & 63))};
    }

    std::thread typist([&] { type(text); });
    const bool isRead = reader.readsText(expected);
    typist.join();

    EXPECT_TRUE(isRead) << reader.text;
}

TEST_F(AnyDisplayInput, keepsTheStrangeCharactersThatWereTypedLast)
{
    const XServer server;
    const auto spare = static_cast<char16_t>(KeyLayout(server.get()).emptyKeys().size());
    ASSERT_GT(spare, 2);
    std::u16string text;
    for (char16_t unit = 0; unit < spare; ++unit) {
        text += static_cast<char16_t>(u'一' + unit);
    }

    type(text + u"一龍");

    ASSERT_TRUE(reader.reads([&] { return reader.keys.size() == 2 * text.size() + 4; }));
    EXPECT_NE(reader.keyOf(xkb_utf32_to_keysym(U'一')), 0);
    EXPECT_EQ(reader.keyOf(xkb_utf32_to_keysym(U'丁')), 0);
    EXPECT_NE(reader.keyOf(xkb_utf32_to_keysym(U'龍')), 0);
}

TEST_F(AnyDisplayInput, leavesApplicationsTimeBeforeAKeyGetsAnotherCharacter)
{
    const XServer server;
    const auto spare = static_cast<char16_t>(KeyLayout(server.get()).emptyKeys().size());
    std::u16string text;
    for (char16_t unit = 0; unit < spare; ++unit) {
        text += static_cast<char16_t>(u'一' + unit);
    }
    type(text);

    const auto start = std::chrono::steady_clock::now();
    type(text + u"龍");
    const auto taken = std::chrono::steady_clock::now() - start;

    EXPECT_GE(taken, std::chrono::milliseconds(60));
}

TEST_F(AnyDisplayInput, leavesTheLayoutAsItWas)
{
    type(u"漢字é");
    ASSERT_TRUE(reader.readsText("漢字é"));

    input.reset();

    EXPECT_TRUE(reader.reads([&] { return reader.mapping() == mappingBefore(); }));
}

TEST_F(AnyDisplayInput, pressesAndReleasesKeysByTheirCodes)
{
    press('A');
    press(0x74);
    press(0x25);
    press(0x65);

    ASSERT_TRUE(readsKeys(8));
    EXPECT_THAT(reader.keys,
                ElementsAre("a", "-a", "F5", "-F5", "Left", "-Left", "KP_Begin", "-KP_Begin"));
}

TEST_F(AnyDisplayInput, holdsModifiersDownWhileOtherKeysArePressed)
{
    input->take(key(0xA0, true));
    press('B');
    press('1');
    input->take(key(0xA0, false));
    press('C');

    ASSERT_TRUE(readsKeys(8));
    EXPECT_EQ(reader.text, "B!c");
}

TEST_F(AnyDisplayInput, ignoresARepeatedPressAndALonelyRelease)
{
    input->take(key('X', false));
    input->take(key(0xA1, true));
    input->take(key(0xA1, true));
    input->take(key(0xA1, false));
    press('Y');

    ASSERT_TRUE(readsKeys(4));
    EXPECT_THAT(reader.keys, ElementsAre("Shift_R", "-Shift_R", "y", "-y"));
}

TEST_F(AnyDisplayInput, holdsAKeyUntilBothItsCodesAreUp)
{
    input->take(key(0x10, true));
    input->take(key(0xA0, true));
    input->take(key(0x10, false));
    press('B');
    input->take(key(0xA0, false));
    press('C');

    ASSERT_TRUE(readsKeys(6));
    EXPECT_EQ(reader.text, "Bc");
}

TEST_F(AnyDisplayInput, typesWhatIsAskedForThoughShiftIsHeld)
{
    input->take(key(0x10, true));
    type(u"a1B");
    press('C');
    input->take(key(0x10, false));
    press('D');

    EXPECT_TRUE(reader.readsText("a1BCd")) << reader.text;
}

TEST_F(AnyDisplayInput, typesAKeyThatIsHeldAnyway)
{
    input->take(key('Q', true));
    type(u"q");
    input->take(key('Q', false));
    press('R');

    EXPECT_TRUE(reader.readsText("qqr")) << reader.text;
}

TEST_F(AnyDisplayInput, typesWhatIsAskedForThoughCapsLockIsOn)
{
    press(0x14);

    type(u"aBéÉ漢");
    press(0x14);
    type(u"aB");

    EXPECT_TRUE(reader.readsText("aBéÉ漢aB")) << reader.text;
}

TEST_F(AnyDisplayInput, takesCharactersThatEditAsKeys)
{
    type(u"\b\t\r");

    ASSERT_TRUE(readsKeys(6));
    EXPECT_THAT(reader.keys,
                ElementsAre("BackSpace", "-BackSpace", "Tab", "-Tab", "Return", "-Return"));
}

TEST_F(AnyDisplayInput, ignoresWhatMeansNothing)
{
    input->take(record(0xEFFD, 99, 10, 10));
    input->take(record(0xEFFD, 7, 10, 10));
    input->take(record(0xEFFE, 5, 65, 65));
    input->take(record(1, 5, 65, 65));
    input->take(key(0, true));
    input->take(key(0xFFFFFFFF, true));
    input->take(typed(0x11111));
    type({u'\0', u'\n', u'\x1f', 0xDE00, 0xFFFF});
    press('Z');

    ASSERT_TRUE(readsKeys(2));
    EXPECT_THAT(reader.keys, ElementsAre("z", "-z"));
    EXPECT_THAT(reader.buttons, IsEmpty());
}

TEST_F(AnyDisplayInput, liftsAllThatIsDownAtItsEnd)
{
    input->take(mouse(5, 10, 10));
    input->take(key(0x11, true));
    input->take(key('K', true));
    ASSERT_TRUE(readsKeys(2));
    ASSERT_TRUE(readsButtons(1));

    input.reset();

    ASSERT_TRUE(readsButtons(2));
    ASSERT_TRUE(readsKeys(4));
    EXPECT_THAT(reader.keys, ElementsAre("Control_L", "k", "-k", "-Control_L"));
    EXPECT_EQ(reader.buttons.back(), (Button{1, false, 10, 10}));
}

TEST_F(AnyDisplayInput, leavesAloneWhatAnotherProgramHoldsDown)
{
    const std::uint8_t control = reader.keyOf(XKB_KEY_Control_R);
    reader.pressKey(control, true);
    reader.pressButton(1, true);
    ASSERT_TRUE(readsButtons(1));

    input->take(key(0xA3, false));
    input->take(mouse(6, 10, 10));
    input.reset();

    EXPECT_EQ(reader.keysDown(), 1);
    EXPECT_TRUE(reader.hasButtonDown());
    reader.pressKey(control, false);
    reader.pressButton(1, false);
}

} // namespace orv::apps::test
