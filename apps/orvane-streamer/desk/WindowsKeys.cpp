#include "orvane-streamer/desk/WindowsKeys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>

namespace orv::apps {

namespace {

/// Keys with codes in a row whose symbols are in a row as well.
struct KeyRow {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    xkb_keysym_t keysym = XKB_KEY_NoSymbol;
};

constexpr std::array<KeyRow, 4> kRows{
    {{48, 57, XKB_KEY_0}, {65, 90, XKB_KEY_a}, {96, 105, XKB_KEY_KP_0}, {112, 135, XKB_KEY_F1}}};

struct NamedKey {
    std::uint32_t key = 0;
    xkb_keysym_t keysym = XKB_KEY_NoSymbol;
    /// What the key bears on layouts that lack the first; 0 for nothing.
    xkb_keysym_t otherwise = XKB_KEY_NoSymbol;
};

constexpr std::array kNamedKeys{
    NamedKey{8, XKB_KEY_BackSpace},
    NamedKey{9, XKB_KEY_Tab},
    NamedKey{13, XKB_KEY_Return},
    NamedKey{16, XKB_KEY_Shift_L},
    NamedKey{17, XKB_KEY_Control_L},
    NamedKey{18, XKB_KEY_Alt_L},
    NamedKey{19, XKB_KEY_Pause},
    NamedKey{20, XKB_KEY_Caps_Lock},
    NamedKey{27, XKB_KEY_Escape},
    NamedKey{32, XKB_KEY_space},
    NamedKey{33, XKB_KEY_Prior},
    NamedKey{34, XKB_KEY_Next},
    NamedKey{35, XKB_KEY_End},
    NamedKey{36, XKB_KEY_Home},
    NamedKey{37, XKB_KEY_Left},
    NamedKey{38, XKB_KEY_Up},
    NamedKey{39, XKB_KEY_Right},
    NamedKey{40, XKB_KEY_Down},
    NamedKey{44, XKB_KEY_Print},
    NamedKey{45, XKB_KEY_Insert},
    NamedKey{46, XKB_KEY_Delete},
    NamedKey{91, XKB_KEY_Super_L},
    NamedKey{92, XKB_KEY_Super_R},
    NamedKey{93, XKB_KEY_Menu},
    NamedKey{106, XKB_KEY_KP_Multiply},
    NamedKey{107, XKB_KEY_KP_Add},
    NamedKey{108, XKB_KEY_KP_Separator},
    NamedKey{109, XKB_KEY_KP_Subtract},
    NamedKey{110, XKB_KEY_KP_Decimal, XKB_KEY_KP_Separator},
    NamedKey{111, XKB_KEY_KP_Divide},
    NamedKey{144, XKB_KEY_Num_Lock},
    NamedKey{145, XKB_KEY_Scroll_Lock},
    NamedKey{160, XKB_KEY_Shift_L},
    NamedKey{161, XKB_KEY_Shift_R},
    NamedKey{162, XKB_KEY_Control_L},
    NamedKey{163, XKB_KEY_Control_R},
    NamedKey{164, XKB_KEY_Alt_L},
    NamedKey{165, XKB_KEY_Alt_R, XKB_KEY_ISO_Level3_Shift},
    NamedKey{186, XKB_KEY_semicolon},
    NamedKey{187, XKB_KEY_equal, XKB_KEY_plus},
    NamedKey{188, XKB_KEY_comma},
    NamedKey{189, XKB_KEY_minus},
    NamedKey{190, XKB_KEY_period},
    NamedKey{191, XKB_KEY_slash},
    NamedKey{192, XKB_KEY_grave, XKB_KEY_dead_grave},
    NamedKey{219, XKB_KEY_bracketleft},
    NamedKey{220, XKB_KEY_backslash},
    NamedKey{221, XKB_KEY_bracketright},
    NamedKey{222, XKB_KEY_apostrophe, XKB_KEY_dead_acute},
    NamedKey{226, XKB_KEY_less},
};

} // namespace

std::vector<xkb_keysym_t> keysymsOfWindowsKey(std::uint32_t virtualKey)
{
    for (const KeyRow &row : kRows) {
        if (virtualKey >= row.first && virtualKey <= row.last) {
            return {row.keysym + (virtualKey - row.first)};
        }
    }
    const auto *named =
        std::find_if(kNamedKeys.begin(), kNamedKeys.end(),
                     [virtualKey](const NamedKey &key) { return key.key == virtualKey; });
    if (named == kNamedKeys.end()) {
        return {};
    }
    if (named->otherwise == XKB_KEY_NoSymbol) {
        return {named->keysym};
    }
    return {named->keysym, named->otherwise};
}

} // namespace orv::apps
