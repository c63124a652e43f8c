#include "orvane-streamer/desk/WindowsKeys.h"

#include <gmock/gmock.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <string>

namespace orv::apps::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string nameOf(std::uint32_t key)
{
    std::string name(32, '\0');
    const auto symbols = keysymsOfWindowsKey(key);
    const int length =
        symbols.empty() ? 0 : xkb_keysym_get_name(symbols.front(), name.data(), name.size());
    name.resize(static_cast<std::size_t>(length));
    return name;
}

} // namespace

TEST(WindowsKeys, areLettersWithoutShift)
{
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const auto key = static_cast<std::uint32_t>(letter - 'a' + 'A');

        const std::string name = nameOf(key);

        EXPECT_EQ(name, std::string(1, letter));
    }
}

TEST(WindowsKeys, areDigitsAndTheirTwinsOnTheKeypad)
{
    for (std::uint32_t digit = 0; digit <= 9; ++digit) {
        const std::string main = nameOf(48 + digit);
        const std::string keypad = nameOf(96 + digit);

        EXPECT_EQ(main, std::to_string(digit));
        EXPECT_EQ(keypad, "KP_" + std::to_string(digit));
    }
}

TEST(WindowsKeys, areFunctionKeys)
{
    for (std::uint32_t number = 1; number <= 24; ++number) {
        const std::string name = nameOf(111 + number);

        EXPECT_EQ(keysymsOfWindowsKey(111 + number).front(),
                  xkb_keysym_from_name(("F" + std::to_string(number)).c_str(), XKB_KEYSYM_NO_FLAGS))
            << name;
    }
}

TEST(WindowsKeys, haveTheNamesOfTheirSigns)
{
    const std::vector<std::pair<std::uint32_t, std::string>> expected{
        {8, "BackSpace"},     {9, "Tab"},           {13, "Return"},        {16, "Shift_L"},
        {17, "Control_L"},    {18, "Alt_L"},        {19, "Pause"},         {20, "Caps_Lock"},
        {27, "Escape"},       {32, "space"},        {33, "Prior"},         {34, "Next"},
        {35, "End"},          {36, "Home"},         {37, "Left"},          {38, "Up"},
        {39, "Right"},        {40, "Down"},         {44, "Print"},         {45, "Insert"},
        {46, "Delete"},       {91, "Super_L"},      {92, "Super_R"},       {93, "Menu"},
        {106, "KP_Multiply"}, {107, "KP_Add"},      {108, "KP_Separator"}, {109, "KP_Subtract"},
        {110, "KP_Decimal"},  {111, "KP_Divide"},   {144, "Num_Lock"},     {145, "Scroll_Lock"},
        {160, "Shift_L"},     {161, "Shift_R"},     {162, "Control_L"},    {163, "Control_R"},
        {164, "Alt_L"},       {165, "Alt_R"},       {186, "semicolon"},    {187, "equal"},
        {188, "comma"},       {189, "minus"},       {190, "period"},       {191, "slash"},
        {192, "grave"},       {219, "bracketleft"}, {220, "backslash"},    {221, "bracketright"},
        {222, "apostrophe"},  {226, "less"}};

    for (const auto &[key, sign] : expected) {
        const std::string name = nameOf(key);

        EXPECT_EQ(name, sign) << key;
    }
}

TEST(WindowsKeys, nameWhatARightAltKeyIsOnOtherLayouts)
{
    const std::uint32_t rightAlt = 165;

    const auto symbols = keysymsOfWindowsKey(rightAlt);

    EXPECT_THAT(symbols, ElementsAre(XKB_KEY_Alt_R, XKB_KEY_ISO_Level3_Shift));
}

TEST(WindowsKeys, areNoneForNumbersThatAreNoKeys)
{
    for (const std::uint32_t key :
         {0U, 1U, 7U, 47U, 58U, 64U, 136U, 255U, 256U, 0x10041U, 0xFFFFFFFFU}) {
        const auto symbols = keysymsOfWindowsKey(key);

        EXPECT_THAT(symbols, IsEmpty()) << key;
    }
}

} // namespace orv::apps::test
