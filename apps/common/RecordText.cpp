#include "common/RecordText.h"

#include "common/ClientRecords.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace orv::apps {

namespace {

constexpr std::uint32_t kAnswerBit = 0x8000;

std::uint32_t word16(const stCommand_mgs &record, std::size_t offset)
{
    constexpr unsigned bitsOfAByte = 8;
    return record.ext.at(offset) | static_cast<std::uint32_t>(record.ext.at(offset + 1))
                                       << bitsOfAByte;
}

std::string modeText(const stCommand_mgs &record)
{
    constexpr std::array<std::string_view, 5> names{"annotation mode", "flipchart", "snapshot",
                                                    "spotlight", "screen cover"};
    if (record.wparam == 0 && record.lparam == 1 && record.ext[3] == 0) {
        return "help wanted";
    }
    const std::string name = record.lparam < names.size() ? std::string(names.at(record.lparam))
                                                          : fmt::format("mode {}", record.lparam);
    return fmt::format("{} {}, toolbar {}{}", name, record.ext[0] != 0 ? "shown" : "hidden",
                       record.ext[2] != 0 ? "on" : "off",
                       (record.wparam & kAnswerBit) != 0 ? " (as asked)" : "");
}

std::string onOff(std::string_view what, const stCommand_mgs &record)
{
    return fmt::format("{} {}", what, record.lparam != 0 ? "on" : "off");
}

std::string settingsText(const stCommand_mgs &record)
{
    constexpr std::uint32_t accessibility = 1;
    constexpr std::uint32_t keynote = 2;
    std::string text = "settings wanted for page turning:";
    text += (record.lparam & accessibility) != 0 ? " accessibility" : "";
    text += (record.lparam & keynote) != 0 ? " Keynote" : "";
    return text;
}

std::string numbersText(const stCommand_mgs &record)
{
    std::size_t used = record.ext.size();
    while (used > 0 && record.ext.at(used - 1) == 0) {
        --used;
    }
    return fmt::format("record {:#x}, {}{}{}", record.wparam, record.lparam, used > 0 ? ", " : "",
                       hexText(std::span(record.ext).first(used)));
}

} // namespace

std::string recordText(const stCommand_mgs &record)
{
    switch (record.wparam) {
    case 0:
    case kAnswerBit:
        return modeText(record);
    case 1:
        return onOff("keyboard for typing", record);
    case 2:
    case 18:
        return "snapshot saved";
    case 3:
        return onOff("annotation mode", record);
    case 4:
    case 0xEFFD:
        return onOff("client's mouse", record);
    case 6:
        return fmt::format("tool of size {}, colour {}", word16(record, 4),
                           hexText(std::span(record.ext).subspan(7, 3)));
    case 7:
    case 0xEFFE:
        return onOff("client's keyboard", record);
    case 8:
        return onOff("screen cover", record);
    case 9:
        return onOff("spotlight", record);
    case 10:
    case 16:
        return onOff("page buttons", record);
    case 17:
        return fmt::format("undo and redo: {} to undo, {} to redo", word16(record, 0),
                           word16(record, 2));
    case 20:
        return settingsText(record);
    case 21:
    case kAnswerBit | 21U:
        return fmt::format("video recording: status {}, error {}", word16(record, 0),
                           word16(record, 2));
    default:
        return numbersText(record);
    }
}

} // namespace orv::apps
