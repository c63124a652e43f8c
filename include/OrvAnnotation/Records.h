#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace orv {

/// The first two fields of every command record.
struct stCommandHeader {
    std::uint16_t pluginID = 0;
    std::uint16_t headerWord2 = 0;
};

/// The 64-byte command record that passes between the host and the library, both ways.
///
/// `pluginID`, `headerWord2`, `wparam` and `lparam` are in the host's order (little-endian) and
/// never swapped. What lies in `ext`, and in which order, depends on the command.
struct stCommand_mgs {
    std::uint16_t pluginID = 0;
    /// 1 on every outgoing record; not read on an incoming one.
    std::uint16_t headerWord2 = 0;
    /// The command's number.
    std::uint32_t wparam = 0;
    /// The command's first argument.
    std::uint32_t lparam = 0;
    /// Further arguments; zero where a command does not use it.
    std::array<std::uint8_t, 52> ext{};
};

static_assert(sizeof(stCommand_mgs) == 64, "a command record is 64 bytes without padding");

/// One packet of the data channel: a 24-byte header and up to 1436 bytes of data, little-endian.
struct stDataPacket {
    std::uint8_t checksum = 0;
    std::uint16_t pluginID = 0;
    std::uint8_t packetType = 0;
    std::uint16_t status = 0;
    std::uint32_t fileID = 0;
    std::uint32_t packetCount = 0;
    /// Counted from 1.
    std::uint32_t packetNumber = 0;
    /// Bytes of this packet that count, header included.
    std::uint16_t length = 0;
    std::uint8_t headerByte22 = 0;
    std::uint8_t padding23 = 0;
    std::array<std::uint8_t, 1436> data{};
};

static_assert(sizeof(stDataPacket) == 1460, "a data packet is 1460 bytes");
static_assert(offsetof(stDataPacket, data) == 24, "its header is 24 bytes");

} // namespace orv
