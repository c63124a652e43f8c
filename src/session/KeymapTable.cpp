#include "session/KeymapTable.h"

#include "platform/values/Event.h"

#include <algorithm>

namespace orv {

namespace {

/// The client's key code, its PC scan code (0x100 added for an extended key), the virtual key.
struct Row {
    std::uint8_t keyCode;
    std::uint32_t scanCode;
    std::uint32_t vkey;
};

// Where a key code stands twice the later row counts: Return is the keypad's Enter.
constexpr std::array keymap_table{
    Row{65, 30, 0},    Row{66, 48, 11},    Row{67, 46, 8},    Row{68, 32, 2},    Row{69, 18, 14},
    Row{70, 33, 3},    Row{71, 34, 5},     Row{72, 35, 4},    Row{73, 23, 34},   Row{74, 36, 38},
    Row{75, 37, 40},   Row{76, 38, 37},    Row{77, 50, 46},   Row{78, 49, 45},   Row{79, 24, 31},
    Row{80, 25, 35},   Row{81, 16, 12},    Row{82, 19, 15},   Row{83, 31, 1},    Row{84, 20, 17},
    Row{85, 22, 32},   Row{86, 47, 9},     Row{87, 17, 13},   Row{88, 45, 7},    Row{89, 21, 16},
    Row{90, 44, 6},    Row{49, 2, 18},     Row{50, 3, 19},    Row{51, 4, 20},    Row{52, 5, 21},
    Row{53, 6, 23},    Row{54, 7, 22},     Row{55, 8, 26},    Row{56, 9, 28},    Row{57, 10, 25},
    Row{48, 11, 29},   Row{13, 28, 36},    Row{27, 1, 53},    Row{8, 14, 51},    Row{9, 15, 48},
    Row{32, 57, 49},   Row{189, 12, 27},   Row{187, 13, 24},  Row{219, 26, 33},  Row{221, 27, 30},
    Row{220, 43, 42},  Row{186, 39, 41},   Row{222, 40, 39},  Row{192, 41, 50},  Row{188, 51, 43},
    Row{190, 52, 47},  Row{191, 53, 44},   Row{20, 58, 57},   Row{112, 59, 122}, Row{113, 60, 120},
    Row{114, 61, 99},  Row{115, 62, 118},  Row{116, 63, 96},  Row{117, 64, 97},  Row{118, 65, 98},
    Row{119, 66, 100}, Row{120, 67, 101},  Row{121, 68, 109}, Row{122, 87, 103}, Row{123, 88, 111},
    Row{44, 418, 255}, Row{145, 70, 255},  Row{19, 69, 255},  Row{45, 338, 114}, Row{36, 327, 115},
    Row{33, 329, 116}, Row{46, 339, 117},  Row{35, 335, 119}, Row{34, 337, 121}, Row{39, 333, 124},
    Row{37, 331, 123}, Row{40, 336, 125},  Row{38, 328, 126}, Row{144, 325, 71}, Row{111, 309, 75},
    Row{106, 55, 67},  Row{109, 74, 78},   Row{107, 78, 69},  Row{13, 284, 76},  Row{97, 79, 83},
    Row{98, 80, 84},   Row{99, 81, 85},    Row{100, 75, 86},  Row{101, 76, 87},  Row{102, 77, 88},
    Row{103, 71, 89},  Row{104, 72, 91},   Row{105, 73, 92},  Row{96, 82, 82},   Row{110, 83, 65},
    Row{146, 0, 81},   Row{193, 123, 102}, Row{21, 121, 104}, Row{162, 29, 59},  Row{160, 42, 56},
    Row{164, 56, 58},  Row{91, 91, 55},    Row{163, 285, 62}, Row{161, 54, 60},  Row{165, 312, 61},
    Row{92, 92, 54}};

struct KeyCharacters {
    std::uint32_t vkey;
    char16_t plain;
    char16_t shifted;
};

// Keys that type nothing carry their function-key characters, from 0xF700 up.
constexpr std::array kUSLayout{
    KeyCharacters{0, u'a', u'A'},       KeyCharacters{1, u's', u'S'},
    KeyCharacters{2, u'd', u'D'},       KeyCharacters{3, u'f', u'F'},
    KeyCharacters{4, u'h', u'H'},       KeyCharacters{5, u'g', u'G'},
    KeyCharacters{6, u'z', u'Z'},       KeyCharacters{7, u'x', u'X'},
    KeyCharacters{8, u'c', u'C'},       KeyCharacters{9, u'v', u'V'},
    KeyCharacters{11, u'b', u'B'},      KeyCharacters{12, u'q', u'Q'},
    KeyCharacters{13, u'w', u'W'},      KeyCharacters{14, u'e', u'E'},
    KeyCharacters{15, u'r', u'R'},      KeyCharacters{16, u'y', u'Y'},
    KeyCharacters{17, u't', u'T'},      KeyCharacters{31, u'o', u'O'},
    KeyCharacters{32, u'u', u'U'},      KeyCharacters{34, u'i', u'I'},
    KeyCharacters{35, u'p', u'P'},      KeyCharacters{37, u'l', u'L'},
    KeyCharacters{38, u'j', u'J'},      KeyCharacters{40, u'k', u'K'},
    KeyCharacters{45, u'n', u'N'},      KeyCharacters{46, u'm', u'M'},
    KeyCharacters{18, u'1', u'!'},      KeyCharacters{19, u'2', u'@'},
    KeyCharacters{20, u'3', u'#'},      KeyCharacters{21, u'4', u'$'},
    KeyCharacters{23, u'5', u'%'},      KeyCharacters{22, u'6', u'^'},
    KeyCharacters{26, u'7', u'&'},      KeyCharacters{28, u'8', u'*'},
    KeyCharacters{25, u'9', u'('},      KeyCharacters{29, u'0', u')'},
    KeyCharacters{27, u'-', u'_'},      KeyCharacters{24, u'=', u'+'},
    KeyCharacters{33, u'[', u'{'},      KeyCharacters{30, u']', u'}'},
    KeyCharacters{42, u'\\', u'|'},     KeyCharacters{41, u';', u':'},
    KeyCharacters{39, u'\'', u'"'},     KeyCharacters{50, u'`', u'~'},
    KeyCharacters{43, u',', u'<'},      KeyCharacters{47, u'.', u'>'},
    KeyCharacters{44, u'/', u'?'},      KeyCharacters{49, u' ', u' '},
    KeyCharacters{67, u'*', u'*'},      KeyCharacters{69, u'+', u'+'},
    KeyCharacters{75, u'/', u'/'},      KeyCharacters{78, u'-', u'-'},
    KeyCharacters{65, u'.', u'.'},      KeyCharacters{81, u'=', u'='},
    KeyCharacters{82, u'0', u'0'},      KeyCharacters{83, u'1', u'1'},
    KeyCharacters{84, u'2', u'2'},      KeyCharacters{85, u'3', u'3'},
    KeyCharacters{86, u'4', u'4'},      KeyCharacters{87, u'5', u'5'},
    KeyCharacters{88, u'6', u'6'},      KeyCharacters{89, u'7', u'7'},
    KeyCharacters{91, u'8', u'8'},      KeyCharacters{92, u'9', u'9'},
    KeyCharacters{36, 0x0D, 0x0D},      KeyCharacters{76, 0x03, 0x03},
    KeyCharacters{48, 0x09, 0x09},      KeyCharacters{51, 0x7F, 0x7F},
    KeyCharacters{53, 0x1B, 0x1B},      KeyCharacters{117, 0xF728, 0xF728},
    KeyCharacters{115, 0xF729, 0xF729}, KeyCharacters{119, 0xF72B, 0xF72B},
    KeyCharacters{116, 0xF72C, 0xF72C}, KeyCharacters{121, 0xF72D, 0xF72D},
    KeyCharacters{114, 0xF746, 0xF746}, KeyCharacters{123, 0xF702, 0xF702},
    KeyCharacters{124, 0xF703, 0xF703}, KeyCharacters{125, 0xF701, 0xF701},
    KeyCharacters{126, 0xF700, 0xF700}, KeyCharacters{71, 0xF739, 0xF739},
    KeyCharacters{122, 0xF704, 0xF704}, KeyCharacters{120, 0xF705, 0xF705},
    KeyCharacters{99, 0xF706, 0xF706},  KeyCharacters{118, 0xF707, 0xF707},
    KeyCharacters{96, 0xF708, 0xF708},  KeyCharacters{97, 0xF709, 0xF709},
    KeyCharacters{98, 0xF70A, 0xF70A},  KeyCharacters{100, 0xF70B, 0xF70B},
    KeyCharacters{101, 0xF70C, 0xF70C}, KeyCharacters{109, 0xF70D, 0xF70D},
    KeyCharacters{103, 0xF70E, 0xF70E}, KeyCharacters{111, 0xF70F, 0xF70F}};

constexpr char16_t kFirstFunctionCharacter = 0xF700;

const KeyCharacters *findCharacters(std::uint32_t vkey)
{
    const auto *const found =
        std::find_if(kUSLayout.begin(), kUSLayout.end(),
                     [vkey](const KeyCharacters &key) { return key.vkey == vkey; });
    return found == kUSLayout.end() ? nullptr : found;
}

bool isArrow(std::uint32_t vkey)
{
    constexpr std::uint32_t left = 123;
    constexpr std::uint32_t up = 126;
    return vkey >= left && vkey <= up;
}

KeymapTable makeTable()
{
    KeymapTable table{};
    table[0] = {1, kNoVirtualKey};
    for (const Row &row : keymap_table) {
        table.at(row.keyCode) = {(row.scanCode << 16U) + 1U, row.vkey};
    }
    return table;
}

} // namespace

const KeymapTable &keymapTable()
{
    static const KeymapTable table = makeTable();
    return table;
}

std::u16string charactersOfVirtualKey(std::uint32_t vkey, std::uint64_t flags)
{
    const KeyCharacters *key = findCharacters(vkey);
    if (key == nullptr) {
        return {};
    }
    const bool isLetter = key->plain >= u'a' && key->plain <= u'z';
    const bool shift = (flags & platform::modifier::shift) != 0;
    const bool caps = isLetter && (flags & platform::modifier::capsLock) != 0;
    return {shift || caps ? key->shifted : key->plain};
}

std::uint64_t ownFlagsOfVirtualKey(std::uint32_t vkey)
{
    const KeyCharacters *key = findCharacters(vkey);
    const bool function = key != nullptr && key->plain >= kFirstFunctionCharacter;
    return (isArrow(vkey) ? platform::modifier::numericPad : 0U) |
           (function ? platform::modifier::function : 0U);
}

} // namespace orv
