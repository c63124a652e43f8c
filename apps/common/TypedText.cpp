#include "common/TypedText.h"

#include "common/Arguments.h"
#include "common/ScriptError.h"

#include <fmt/format.h>

namespace orv::apps {

namespace {

constexpr double kLongestText = 60.0;
constexpr std::size_t kMostUnits = 10'000;

// Numbers of keyboard records and of what the keyboard did.
constexpr std::uint32_t kKeyboard1 = 2;
constexpr std::uint32_t kKeyboard2 = 0xEFFE;
constexpr std::uint32_t kTyped = 64;
constexpr char16_t kReturn = 13;

stCommand_mgs typedRecord(std::uint16_t pluginID, char16_t unit)
{
    stCommand_mgs record;
    record.pluginID = pluginID;
    record.wparam = isSecondGeneration(pluginID) ? kKeyboard2 : kKeyboard1;
    record.lparam = kTyped;
    putBigEndian32(record, 4, unit == u'\n' ? kReturn : unit);
    return record;
}

} // namespace

std::u16string utf16Of(std::string_view text)
{
    std::u16string units;
    std::uint32_t point = 0;
    int missing = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            point = byte;
        } else if (byte >= 0xC0) {
            missing = byte >= 0xF0 ? 3 : (byte >= 0xE0 ? 2 : 1);
            point = byte & (0x3FU >> static_cast<unsigned>(missing));
            continue;
        } else {
            point = (point << 6U) | (byte & 0x3FU);
            if (--missing > 0) {
                continue;
            }
        }
        if (point >= 0x10000) {
            units += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10U));
            units += static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FFU));
        } else {
            units += static_cast<char16_t>(point);
        }
    }
    return units;
}

std::vector<TimedRecord> typedRecords(const Json &argument, std::uint16_t pluginID)
{
    checkKeys(argument, "type", {"text", "seconds"});
    const std::u16string units =
        utf16Of(asText(required(argument, "text", "type.text"), "type.text"));
    const double seconds = asNumber(required(argument, "seconds", "type.seconds"), "type.seconds");
    if (!(seconds >= 0.0 && seconds <= kLongestText)) {
        throw ScriptError(
            fmt::format("\"type.seconds\" is outside 0 to {}: {}", kLongestText, seconds));
    }
    if (units.empty() || units.size() > kMostUnits) {
        throw ScriptError(fmt::format("\"type.text\" has not 1 to {} characters", kMostUnits));
    }
    std::vector<TimedRecord> records;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const double part = static_cast<double>(i + 1) / static_cast<double>(units.size());
        records.push_back({part * seconds, typedRecord(pluginID, units[i])});
    }
    return records;
}

} // namespace orv::apps
