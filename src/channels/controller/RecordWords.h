#pragma once

#include "OrvAnnotation/Records.h"

#include <cstddef>
#include <cstdint>

namespace orv {

/// Reading the words of a record's `ext`, whose order differs from command to command. `offset`
/// counts from the start of `ext`; one that does not fit throws `std::out_of_range`.

/// The words of mouse and keyboard input, and colours.
[[nodiscard]] inline std::uint32_t bigEndian32(const stCommand_mgs &record, std::size_t offset)
{
    return (std::uint32_t{record.ext.at(offset)} << 24U) |
           (std::uint32_t{record.ext.at(offset + 1)} << 16U) |
           (std::uint32_t{record.ext.at(offset + 2)} << 8U) |
           std::uint32_t{record.ext.at(offset + 3)};
}

/// The fields of a draw type.
[[nodiscard]] inline std::uint16_t littleEndian16(const stCommand_mgs &record, std::size_t offset)
{
    return static_cast<std::uint16_t>(record.ext.at(offset) |
                                      (std::uint32_t{record.ext.at(offset + 1)} << 8U));
}

/// Not swapped, unlike the mouse words in the same place.
[[nodiscard]] inline std::int32_t pinchLength(const stCommand_mgs &record)
{
    return static_cast<std::int32_t>(littleEndian16(record, 0) |
                                     (std::uint32_t{littleEndian16(record, 2)} << 16U));
}

} // namespace orv
