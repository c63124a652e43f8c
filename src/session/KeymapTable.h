#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace orv {

/// What the client's key code stands for on this side.
struct tag_keymap_mtable {
    /// (PC scan code << 16) + 1; kept for hosts that look at it.
    std::uint32_t win_scancode = 0;
    std::uint32_t mac_vkey = 0;
};

/// By the client's key code. A code without a row is the key of the letter A.
using KeymapTable = std::array<tag_keymap_mtable, 256>;

/// Virtual key of what has no counterpart.
constexpr std::uint32_t kNoVirtualKey = 255;

[[nodiscard]] const KeymapTable &keymapTable();

/// What a virtual key types on a US keyboard under the modifier flags; empty for none.
[[nodiscard]] std::u16string charactersOfVirtualKey(std::uint32_t vkey, std::uint64_t flags);
/// The flags that a key carries by itself: numeric pad and function, for arrows and function keys.
[[nodiscard]] std::uint64_t ownFlagsOfVirtualKey(std::uint32_t vkey);

} // namespace orv
