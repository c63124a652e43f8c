#pragma once

#include "OrvAnnotation/Records.h"
#include "common/ScriptReader.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace orv::apps {

/// The argument of a script's "record" command: an object of fields, or 128 hexadecimal digits.
/// Throws `ScriptError` that names the field at fault.
[[nodiscard]] stCommand_mgs clientRecord(const Json &argument, std::uint16_t defaultPluginID);

/// 64 bytes as they travel.
[[nodiscard]] stCommand_mgs
recordFromBytes(std::span<const std::uint8_t, sizeof(stCommand_mgs)> bytes);
/// Two lower-case digits a byte.
[[nodiscard]] std::string hexText(std::span<const std::uint8_t> bytes);
[[nodiscard]] std::string hexText(const stCommand_mgs &record);

/// Plug-ins 16 to 18 have numbers of their own for what they send.
[[nodiscard]] bool isSecondGeneration(std::uint16_t pluginID);
/// `offset` counts from the start of `ext`; throws `std::out_of_range` for one that does not fit.
void putBigEndian32(stCommand_mgs &record, std::size_t offset, std::uint32_t value);

/// A record that is handed over some time after the start of a stroke or of a text.
struct TimedRecord {
    double seconds = 0.0;
    stCommand_mgs record;
};

/// The argument of a script's "stroke" command as records of the client's mouse: a press at the
/// first point, moves about every 16 ms, and a release at the last point when `seconds` are over.
///
/// {"points": [[x, y], ...], "seconds": s}; points in pixels of the client's screen from its top
/// left corner, two at least, 0 to 65535. Throws `ScriptError` that names what does not fit.
[[nodiscard]] std::vector<TimedRecord> strokeRecords(const Json &argument, std::uint16_t pluginID);

} // namespace orv::apps
