#include "orv-replay/ReplayOptions.h"

#include <string_view>

namespace orv::apps {

namespace {

std::string valueAfter(std::span<char *const> arguments, std::size_t &at)
{
    const std::string option = arguments[at];
    if (++at == arguments.size() || *arguments[at] == '\0') {
        throw OptionError(option + " needs the path of a folder after it.");
    }
    return arguments[at];
}

} // namespace

ReplayOptions replayOptions(std::span<char *const> arguments)
{
    ReplayOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help") {
            options.help = true;
            return options;
        }
        if (argument == "--home") {
            options.home = valueAfter(arguments, i);
        } else if (argument == "--out") {
            options.out = valueAfter(arguments, i);
        } else if (argument == "--quiet-log") {
            options.quietLog = true;
        } else if (argument.size() > 1 && argument.starts_with('-')) {
            throw OptionError("There is no option \"" + std::string(argument) + "\".");
        } else if (!options.script.empty()) {
            throw OptionError("One script at a time: \"" + std::string(argument) +
                              "\" is one too many.");
        } else {
            options.script = argument;
        }
    }
    if (options.script.empty()) {
        throw OptionError("The script is missing: a file, or - for standard input.");
    }
    return options;
}

const char *replayHelp()
{
    return "usage: orv-replay [--home DIR] [--out DIR] [--quiet-log] SCRIPT|-\n"
           "\n"
           "Plays a host's side of a session on virtual displays and in virtual time, and prints\n"
           "what comes back as one JSON object a line.\n"
           "\n"
           "  --home DIR   the user's home folder (default: a temporary one)\n"
           "  --out DIR    where pictures and data packages go (default: the current folder)\n"
           "  --quiet-log  no lines of the library's log\n"
           "\n"
           "Ends with 2 at the first line of the script that cannot be carried out.\n";
}

} // namespace orv::apps
