#include "common/ClientRecords.h"
#include "common/HostSettings.h"
#include "common/ScriptCommand.h"
#include "common/ScriptError.h"
#include "common/ScriptReader.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>

// Session scripts come from people who report faults: whatever stands in them, each line is read or
// refused with a message.

namespace {

void readArguments(const orv::apps::Json &line, const std::string &command)
{
    using namespace orv::apps;
    const Json &argument = line.at(command);
    constexpr std::uint16_t plugin = 17;
    if (command == "host") {
        (void)hostSettings(argument);
    } else if (command == "record") {
        (void)clientRecord(argument, plugin);
    } else if (command == "stroke") {
        (void)strokeRecords(argument, plugin);
    } else if (command == "displays") {
        (void)scriptDisplays(argument, command);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::istringstream in(std::string(data, data + size));
    orv::apps::ScriptReader reader(in);
    int lastLine = -1;
    while (reader.lineNumber() != lastLine) {
        lastLine = reader.lineNumber();
        try {
            if (const auto line = reader.next()) {
                readArguments(*line, orv::apps::commandOf(*line));
            }
        } catch (const orv::apps::ScriptError &) {
            continue;
        }
    }
    return 0;
}
