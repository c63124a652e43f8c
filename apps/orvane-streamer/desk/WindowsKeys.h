#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <vector>

namespace orv::apps {

/// The symbols of X that the key with a Windows virtual key code bears on one layout or another,
/// the likeliest first; none when there is no such key. Letters and digits have the symbol of the
/// key without Shift, the other signs that of a US keyboard.
[[nodiscard]] std::vector<xkb_keysym_t> keysymsOfWindowsKey(std::uint32_t virtualKey);

} // namespace orv::apps
