#include "apps/orvane-streamer/desk/Records.h"
#include "apps/orvane-streamer/desk/display/InputReader.h"
#include "orvane-streamer/desk/DesktopInput.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <optional>

namespace orv::apps::test {

namespace {

using testing::ElementsAre;

/// With a keyboard layout of the test's choice, in place of the usual one.
class AnyDisplayLayouts : public testing::Test {
protected:
    AnyDisplayLayouts() { input.emplace(DesktopInput::Place{0, 0, 1}); }
    ~AnyDisplayLayouts() override
    {
        input.reset();
        EXPECT_EQ(reader.keysDown(), 0);
        choose("us");
    }

    static void choose(const std::string &layout)
    {
        ASSERT_EQ(std::system(("setxkbmap -model pc105 -option '' -layout " + layout).c_str()), 0);
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

    InputReader reader;
    std::optional<DesktopInput> input;
};

} // namespace

TEST_F(AnyDisplayLayouts, areFollowedWhenTheyChange)
{
    type(u"yz@");
    ASSERT_TRUE(reader.readsText("yz@")) << reader.text;

    choose("de");
    type(u"yzÜ@€^");

    EXPECT_TRUE(reader.readsText("yz@yzÜ@€^")) << reader.text;
}

TEST_F(AnyDisplayLayouts, areTypedOnAsAHandWould)
{
    choose("de");
    const auto before = reader.mapping();

    type(u"@A");

    ASSERT_TRUE(reader.reads([&] { return reader.keys.size() >= 8; }));
    EXPECT_THAT(reader.keys, ElementsAre("ISO_Level3_Shift", "at", "-at", "-ISO_Level3_Shift",
                                         "Shift_L", "A", "-A", "-Shift_L"));
    EXPECT_EQ(reader.mapping(), before);
}

TEST_F(AnyDisplayLayouts, giveKeysByTheSignsOnThem)
{
    choose("de");

    press('Z');
    press(0xBB);
    input->take(key(0xA5, true));
    press('Q');
    input->take(key(0xA5, false));

    EXPECT_TRUE(reader.readsText("z+@")) << reader.text;
}

TEST_F(AnyDisplayLayouts, haveDigitKeysEvenWhereDigitsWantShift)
{
    choose("fr");

    press('1');
    type(u"1");

    EXPECT_TRUE(reader.readsText("&1")) << reader.text;
}

TEST_F(AnyDisplayLayouts, offerShortcutsThoughTheLettersAreOthers)
{
    choose("ru,us");

    input->take(key(0x11, true));
    press('C');
    input->take(key(0x11, false));
    type(u"сc");

    ASSERT_TRUE(reader.reads([&] { return reader.keys.size() >= 8; }));
    EXPECT_THAT(reader.keys, ElementsAre("Control_L", "Cyrillic_es", "-Cyrillic_es", "-Control_L",
                                         "Cyrillic_es", "-Cyrillic_es", "c", "-c"));
}

TEST_F(AnyDisplayLayouts, mayTakeTheSpareKeysAway)
{
    type(u"漢字");
    ASSERT_TRUE(reader.readsText("漢字")) << reader.text;

    choose("de");
    type(u"漢字ä語");

    EXPECT_TRUE(reader.readsText("漢字漢字ä語")) << reader.text;
}

TEST_F(AnyDisplayLayouts, keepWhatOthersWroteOnSpareKeys)
{
    const xkb_keysym_t strange = xkb_utf32_to_keysym(U'漢');
    const xkb_keysym_t others = xkb_utf32_to_keysym(U'Ж');
    type(u"漢");
    ASSERT_TRUE(reader.readsText("漢")) << reader.text;
    const std::uint8_t spare = reader.keyOf(strange);
    ASSERT_NE(spare, 0);

    reader.write(spare, others);
    EXPECT_EQ(reader.keyOf(others), spare);
    input.reset();

    EXPECT_EQ(reader.keyOf(others), spare);
}

} // namespace orv::apps::test
