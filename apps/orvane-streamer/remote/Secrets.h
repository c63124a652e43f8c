#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace orv::apps {

/// Fills the bytes from the system's source of randomness for keys. Throws `std::runtime_error`
/// when that has none.
void fillWithRandom(std::span<std::uint8_t> bytes);

/// Takes as long for a text that is nearly right as for one that is all wrong; only the lengths
/// show.
[[nodiscard]] bool isSameSecret(std::string_view one, std::string_view other);

} // namespace orv::apps
