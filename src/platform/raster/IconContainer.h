#pragma once

#include <cstdint>
#include <span>

namespace orv::platform {

/// Icon files of one file with a picture for each size ("icns"): four letters and a length, then
/// members of four letters, a length and their bytes; lengths are big-endian and count all of that.

[[nodiscard]] bool isIconContainer(std::span<const std::uint8_t> bytes);

/// The bytes of the PNG member with the most pixels, within `container`. Empty when there is none
/// or a length is not what is there.
[[nodiscard]] std::span<const std::uint8_t>
largestPngMember(std::span<const std::uint8_t> container);

} // namespace orv::platform
