#include "common/ScriptCommand.h"

#include "common/ScriptError.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace orv::apps {

namespace {

struct CommandSyntax {
    std::string_view name;
    /// Keys that may stand beside it; empty ones are not used.
    std::array<std::string_view, 3> furtherKeys;
};

constexpr std::array kCommands{
    CommandSyntax{"host", {}},
    CommandSyntax{"record", {}},
    CommandSyntax{"stroke", {}},
    CommandSyntax{"type", {}},
    CommandSyntax{"packet", {}},
    CommandSyntax{"wait", {}},
    CommandSyntax{"mouse", {"at", "flags"}},
    CommandSyntax{"key", {"code", "characters", "flags"}},
    CommandSyntax{"click", {}},
    CommandSyntax{"call", {"args"}},
    CommandSyntax{"post", {}},
    CommandSyntax{"displays", {}},
    CommandSyntax{"front", {}},
    CommandSyntax{"running", {}},
    CommandSyntax{"accessibility", {}},
    CommandSyntax{"freeBytes", {}},
    CommandSyntax{"age", {}},
    CommandSyntax{"screenshot", {"display"}},
    CommandSyntax{"state", {}},
    CommandSyntax{"note", {}},
};

const CommandSyntax *findCommand(std::string_view name)
{
    const auto *const found =
        std::find_if(kCommands.begin(), kCommands.end(),
                     [name](const CommandSyntax &command) { return command.name == name; });
    return found == kCommands.end() ? nullptr : found;
}

} // namespace

std::string commandOf(const Json &line)
{
    const CommandSyntax *command = nullptr;
    for (const auto &[key, value] : line.items()) {
        const CommandSyntax *found = findCommand(key);
        if (found != nullptr && command != nullptr) {
            throw ScriptError(
                fmt::format(R"(two commands in one line: "{}" and "{}")", command->name, key));
        }
        command = found != nullptr ? found : command;
    }
    if (command == nullptr) {
        throw ScriptError(line.empty() ? std::string("no command")
                                       : fmt::format("unknown command \"{}\"", line.begin().key()));
    }
    for (const auto &[key, value] : line.items()) {
        const auto &further = command->furtherKeys;
        if (key != command->name &&
            (key.empty() || std::find(further.begin(), further.end(), key) == further.end())) {
            throw ScriptError(fmt::format(R"("{}" has the unknown key "{}")", command->name, key));
        }
    }
    return std::string(command->name);
}

} // namespace orv::apps
