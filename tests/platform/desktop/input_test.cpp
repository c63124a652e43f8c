#include "platform/desktop/DeviceSpace.h"
#include "platform/desktop/KeyTranslation.h"
#include "platform/desktop/PointerInput.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <string_view>

namespace orv::platform {

namespace {

/// What an X keycode is above the PC scan code.
constexpr std::uint32_t kScan = 8;

} // namespace

TEST(VirtualKey, goesByTheNameOfANamedKey)
{
    EXPECT_EQ(virtualKey(XK_Escape, 9), 53);
    EXPECT_EQ(virtualKey(XK_Return, 36), 36);
    EXPECT_EQ(virtualKey(XK_KP_Enter, 104), 76);
    EXPECT_EQ(virtualKey(XK_BackSpace, 22), 51);
    EXPECT_EQ(virtualKey(XK_Tab, 23), 48);
    EXPECT_EQ(virtualKey(XK_space, 65), 49);
    EXPECT_EQ(virtualKey(XK_Left, 113), 123);
    EXPECT_EQ(virtualKey(XK_KP_Home, 79), 89);
    EXPECT_EQ(virtualKey(XK_KP_7, 79), 89);
    EXPECT_EQ(virtualKey(XK_Print, 107), kNoVirtualKey);
    // A caps lock key that was made an Escape key.
    EXPECT_EQ(virtualKey(XK_Escape, kScan + 58), 53);
}

TEST(VirtualKey, goesByThePlaceOfACharacterKey)
{
    EXPECT_EQ(virtualKey(XK_a, kScan + 30), 0);
    EXPECT_EQ(virtualKey(XK_A, kScan + 30), 0);
    // The key right of T: "y" here, "z" on a German keyboard.
    EXPECT_EQ(virtualKey(XK_y, kScan + 21), 16);
    EXPECT_EQ(virtualKey(XK_z, kScan + 21), 16);
    EXPECT_EQ(virtualKey(XK_exclam, kScan + 2), 18);
    EXPECT_EQ(virtualKey(XK_Cyrillic_ef, kScan + 30), 0);
}

TEST(VirtualKey, goesByTheLatinCharacterWhereThePlaceIsUnknown)
{
    constexpr std::uint32_t nowhere = 250;
    EXPECT_EQ(virtualKey(XK_a, nowhere), 0);
    EXPECT_EQ(virtualKey(XK_Z, nowhere), 6);
    EXPECT_EQ(virtualKey(XK_0, nowhere), 29);
    EXPECT_EQ(virtualKey(XK_question, nowhere), 44);
    EXPECT_EQ(virtualKey(XK_bar, nowhere), 42);
    EXPECT_EQ(virtualKey(XK_Cyrillic_ef, nowhere), kNoVirtualKey);
    EXPECT_EQ(virtualKey(0, 0), kNoVirtualKey);
}

TEST(VirtualKey, tellsItsFlags)
{
    EXPECT_EQ(modifierOfKey(55), modifier::command);
    EXPECT_EQ(modifierOfKey(60), modifier::shift);
    EXPECT_EQ(modifierOfKey(57), modifier::capsLock);
    EXPECT_EQ(modifierOfKey(58), modifier::option);
    EXPECT_EQ(modifierOfKey(62), modifier::control);
    EXPECT_EQ(modifierOfKey(0), 0U);
    EXPECT_EQ(flagsOfKey(122), modifier::function);
    EXPECT_EQ(flagsOfKey(92), modifier::numericPad);
    EXPECT_EQ(flagsOfKey(126), modifier::numericPad | modifier::function);
    EXPECT_EQ(flagsOfKey(0), 0U);
}

TEST(PointerInput, becomesTheTypeOfItsActionAndButtons)
{
    PointerInput input;
    EXPECT_EQ(eventType(input), EventType::mouseMoved);
    input.rightHeld = true;
    EXPECT_EQ(eventType(input), EventType::rightMouseDragged);
    input.leftHeld = true;
    EXPECT_EQ(eventType(input), EventType::leftMouseDragged);
    input.action = PointerInput::Action::press;
    EXPECT_EQ(eventType(input), EventType::leftMouseDown);
    input.button = MouseButton::right;
    EXPECT_EQ(eventType(input), EventType::rightMouseDown);
    input.action = PointerInput::Action::release;
    EXPECT_EQ(eventType(input), EventType::rightMouseUp);
}

TEST(PointerInput, hasTheModifiersOfTheToolkitAndOfTheServer)
{
    EXPECT_EQ(modifierFlags(Qt::ShiftModifier | Qt::MetaModifier),
              modifier::shift | modifier::command);
    EXPECT_EQ(modifierFlags(Qt::AltModifier | Qt::ControlModifier),
              modifier::option | modifier::control);
    EXPECT_EQ(modifierFlagsOfState(0x1 | 0x2 | 0x4 | 0x8 | 0x40),
              modifier::shift | modifier::capsLock | modifier::control | modifier::option |
                  modifier::command);
    // Num lock and a held button.
    EXPECT_EQ(modifierFlagsOfState(0x10 | 0x100), 0U);
}

TEST(ClickCounter, countsClicksAtOnePlaceInShortSuccession)
{
    ClickCounter clicks;
    EXPECT_EQ(clicks.press(MouseButton::left, {10, 10}, 1.0), 1);
    EXPECT_EQ(clicks.press(MouseButton::left, {12, 9}, 1.3), 2);
    EXPECT_EQ(clicks.press(MouseButton::left, {12, 9}, 1.6), 3);
    EXPECT_EQ(clicks.present(), 3);
    EXPECT_EQ(clicks.press(MouseButton::right, {12, 9}, 1.7), 1);
    EXPECT_EQ(clicks.press(MouseButton::right, {40, 9}, 1.8), 1);
    EXPECT_EQ(clicks.press(MouseButton::right, {40, 9}, 2.9), 1);
}

TEST(DeviceSpace, turnsYOverAtTheMainDisplayAndScales)
{
    // A main display of 2000 by 1000 pixels right of another one, one and a half pixels a point.
    const DeviceSpace space{1.5, 300, 1000};
    EXPECT_EQ(space.toPoints(QPointF(300, 1000)), (Point{0, 0}));
    EXPECT_EQ(space.toPoints(QPointF(330, 970)), (Point{20, 20}));
    EXPECT_EQ(space.toPoints(QRect(0, 100, 300, 600)), Rect::make(-200, 200, 200, 400));
    EXPECT_EQ(space.topLeft(Rect::make(-200, 200, 200, 400)), QPoint(0, 100));
}

} // namespace orv::platform
