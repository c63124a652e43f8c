#pragma once

#include <cstdint>

namespace orv::platform {

/// X keys as the virtual key codes of the logic, which count by a key's place on the keyboard.

/// The code of a key that has no counterpart.
constexpr std::uint16_t kNoVirtualKey = 255;

/// Named keys (Escape, arrows, the keypad, modifiers) go by `keysym`, so that a remapped key does
/// what its name says. Other keys go by their place, which `keycode` tells, and where the place is
/// unknown by the Latin character.
[[nodiscard]] std::uint16_t virtualKey(std::uint32_t keysym, std::uint32_t keycode);

/// The modifier flag that a key switches; 0 for a key that is no modifier.
[[nodiscard]] std::uint64_t modifierOfKey(std::uint16_t virtualKey);
/// The flags that come with the key itself: keypad and function keys.
[[nodiscard]] std::uint64_t flagsOfKey(std::uint16_t virtualKey);

} // namespace orv::platform
