#include "platform/desktop/KeyTranslation.h"

#include "platform/values/Event.h"

#include <X11/keysym.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace orv::platform {

namespace {

struct KeysymRow {
    std::uint32_t keysym;
    std::uint16_t key;
};

constexpr std::array kNamedKeys = {
    KeysymRow{XK_BackSpace, 51},
    KeysymRow{XK_Tab, 48},
    KeysymRow{XK_ISO_Left_Tab, 48},
    KeysymRow{XK_Return, 36},
    KeysymRow{XK_Escape, 53},
    KeysymRow{XK_space, 49},
    KeysymRow{XK_Pause, kNoVirtualKey},
    KeysymRow{XK_Scroll_Lock, kNoVirtualKey},
    KeysymRow{XK_Print, kNoVirtualKey},
    KeysymRow{XK_Insert, 114},
    KeysymRow{XK_Home, 115},
    KeysymRow{XK_Prior, 116},
    KeysymRow{XK_Delete, 117},
    KeysymRow{XK_End, 119},
    KeysymRow{XK_Next, 121},
    KeysymRow{XK_Left, 123},
    KeysymRow{XK_Right, 124},
    KeysymRow{XK_Down, 125},
    KeysymRow{XK_Up, 126},
    KeysymRow{XK_F1, 122},
    KeysymRow{XK_F2, 120},
    KeysymRow{XK_F3, 99},
    KeysymRow{XK_F4, 118},
    KeysymRow{XK_F5, 96},
    KeysymRow{XK_F6, 97},
    KeysymRow{XK_F7, 98},
    KeysymRow{XK_F8, 100},
    KeysymRow{XK_F9, 101},
    KeysymRow{XK_F10, 109},
    KeysymRow{XK_F11, 103},
    KeysymRow{XK_F12, 111},
    KeysymRow{XK_Num_Lock, 71},
    KeysymRow{XK_KP_Divide, 75},
    KeysymRow{XK_KP_Multiply, 67},
    KeysymRow{XK_KP_Subtract, 78},
    KeysymRow{XK_KP_Add, 69},
    KeysymRow{XK_KP_Enter, 76},
    KeysymRow{XK_KP_Equal, 81},
    KeysymRow{XK_KP_Decimal, 65},
    KeysymRow{XK_KP_Separator, 65},
    KeysymRow{XK_KP_Delete, 65},
    KeysymRow{XK_KP_0, 82},
    KeysymRow{XK_KP_Insert, 82},
    KeysymRow{XK_KP_1, 83},
    KeysymRow{XK_KP_End, 83},
    KeysymRow{XK_KP_2, 84},
    KeysymRow{XK_KP_Down, 84},
    KeysymRow{XK_KP_3, 85},
    KeysymRow{XK_KP_Next, 85},
    KeysymRow{XK_KP_4, 86},
    KeysymRow{XK_KP_Left, 86},
    KeysymRow{XK_KP_5, 87},
    KeysymRow{XK_KP_Begin, 87},
    KeysymRow{XK_KP_6, 88},
    KeysymRow{XK_KP_Right, 88},
    KeysymRow{XK_KP_7, 89},
    KeysymRow{XK_KP_Home, 89},
    KeysymRow{XK_KP_8, 91},
    KeysymRow{XK_KP_Up, 91},
    KeysymRow{XK_KP_9, 92},
    KeysymRow{XK_KP_Prior, 92},
    KeysymRow{XK_Muhenkan, 102},
    KeysymRow{XK_Henkan, 104},
    KeysymRow{XK_Control_L, 59},
    KeysymRow{XK_Control_R, 62},
    KeysymRow{XK_Shift_L, 56},
    KeysymRow{XK_Shift_R, 60},
    KeysymRow{XK_Alt_L, 58},
    KeysymRow{XK_Meta_L, 58},
    KeysymRow{XK_Alt_R, 61},
    KeysymRow{XK_Meta_R, 61},
    KeysymRow{XK_ISO_Level3_Shift, 61},
    KeysymRow{XK_Super_L, 55},
    KeysymRow{XK_Super_R, 54},
    KeysymRow{XK_Caps_Lock, 57},
};

/// By PC scan code, which is what an X keycode is above 8.
constexpr std::array<std::uint8_t, 89> kPlaces = {
    255, 53, 18, 19, 20, 21,  23,  22, 26,  28, 25, 29, 27,  24,  51,  48,  12,  13,
    14,  15, 17, 16, 32, 34,  31,  35, 33,  30, 36, 59, 0,   1,   2,   3,   5,   4,
    38,  40, 37, 41, 39, 50,  56,  42, 6,   7,  8,  9,  11,  45,  46,  43,  47,  44,
    60,  67, 58, 49, 57, 122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 71,  255, 89,
    91,  92, 78, 86, 87, 88,  69,  83, 84,  85, 82, 65, 255, 255, 255, 103, 111};
constexpr std::uint32_t kFirstKeycode = 8;

/// One character for each scan code from 2 to 53, a blank where there is none, plain and shifted.
constexpr std::string_view kPlainCharacters =
    "1234567890-=  qwertyuiop[]  asdfghjkl;'` \\zxcvbnm,./";
constexpr std::string_view kShiftedCharacters =
    "!@#$%^&*()_+  QWERTYUIOP{}  ASDFGHJKL:\"~ |ZXCVBNM<>?";
constexpr std::size_t kFirstCharacterPlace = 2;
static_assert(kPlainCharacters.size() == kShiftedCharacters.size());
static_assert(kPlainCharacters[44 - kFirstCharacterPlace] == 'z');

constexpr std::array<std::uint8_t, 18> kKeypadKeys = {65, 67, 69, 71, 75, 76, 78, 81, 82,
                                                      83, 84, 85, 86, 87, 88, 89, 91, 92};
constexpr std::array<std::uint8_t, 18> kFunctionKeys = {
    122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111, 114, 115, 116, 117, 119, 121};
constexpr std::uint16_t kFirstArrow = 123;
constexpr std::uint16_t kLastArrow = 126;

std::uint16_t keyOfCharacter(std::uint32_t keysym)
{
    if (keysym <= XK_space || keysym > XK_asciitilde) {
        return kNoVirtualKey;
    }
    const char character = static_cast<char>(keysym);
    for (const std::string_view row : {kPlainCharacters, kShiftedCharacters}) {
        if (const auto place = row.find(character); place != std::string_view::npos) {
            return kPlaces.at(place + kFirstCharacterPlace);
        }
    }
    return kNoVirtualKey;
}

} // namespace

std::uint16_t virtualKey(std::uint32_t keysym, std::uint32_t keycode)
{
    const auto *const named =
        std::find_if(kNamedKeys.begin(), kNamedKeys.end(),
                     [keysym](const KeysymRow &row) { return row.keysym == keysym; });
    if (named != kNamedKeys.end()) {
        return named->key;
    }
    if (keycode > kFirstKeycode && keycode - kFirstKeycode < kPlaces.size()) {
        return kPlaces.at(keycode - kFirstKeycode);
    }
    return keyOfCharacter(keysym);
}

std::uint64_t modifierOfKey(std::uint16_t virtualKey)
{
    switch (virtualKey) {
    case 54:
    case 55:
        return modifier::command;
    case 56:
    case 60:
        return modifier::shift;
    case 57:
        return modifier::capsLock;
    case 58:
    case 61:
        return modifier::option;
    case 59:
    case 62:
        return modifier::control;
    default:
        return 0;
    }
}

std::uint64_t flagsOfKey(std::uint16_t virtualKey)
{
    const auto isIn = [virtualKey](const auto &keys) {
        return std::find(keys.begin(), keys.end(), virtualKey) != keys.end();
    };
    if (virtualKey >= kFirstArrow && virtualKey <= kLastArrow) {
        return modifier::numericPad | modifier::function;
    }
    if (isIn(kKeypadKeys)) {
        return modifier::numericPad;
    }
    return isIn(kFunctionKeys) ? modifier::function : 0;
}

} // namespace orv::platform
