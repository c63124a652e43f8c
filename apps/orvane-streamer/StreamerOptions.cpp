#include "orvane-streamer/StreamerOptions.h"

#include <charconv>
#include <string_view>

namespace orv::apps {

namespace {

std::string valueAfter(std::span<char *const> arguments, std::size_t &at)
{
    const std::string option = arguments[at];
    if (++at == arguments.size() || *arguments[at] == '\0') {
        throw OptionError(option + " needs a value after it.");
    }
    return arguments[at];
}

std::uint16_t numberAfter(std::span<char *const> arguments, std::size_t &at)
{
    const std::string option = arguments[at];
    const std::string text = valueAfter(arguments, at);
    std::uint16_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw OptionError(option + " takes a number from 0 to 65535, not \"" + text + "\".");
    }
    return number;
}

} // namespace

StreamerOptions streamerOptions(std::span<char *const> arguments)
{
    StreamerOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help") {
            options.help = true;
            return options;
        }
        if (argument == "--plugin") {
            options.plugin = numberAfter(arguments, i);
        } else if (argument == "--listen") {
            options.listen = numberAfter(arguments, i);
        } else if (argument == "--lesson") {
            options.lesson = valueAfter(arguments, i);
        } else if (argument == "--out") {
            options.out = valueAfter(arguments, i);
        } else {
            throw OptionError("There is no option \"" + std::string(argument) + "\".");
        }
    }
    if (options.listen && !options.lesson.empty()) {
        throw OptionError("--listen and --lesson exclude each other.");
    }
    return options;
}

const char *streamerHelp()
{
    return "usage: orvane-streamer [--plugin N] [--lesson FILE] [--out DIR]\n"
           "       orvane-streamer [--plugin N] --listen PORT\n"
           "\n"
           "Annotates this desktop as a remote client asks, and prints what is told to the "
           "client.\n"
           "Without --listen it plays a lesson: a session script of the commands host, record,\n"
           "stroke, type, wait, note and screenshot.\n"
           "\n"
           "  --plugin N     the plug-in to be (default: what the lesson says, else 17)\n"
           "  --lesson FILE  the lesson to play (default: the first lesson)\n"
           "  --out DIR      where pictures of the screen go (default: the current folder)\n"
           "  --listen PORT  wait on 127.0.0.1 for one client at a time, which sends and gets\n"
           "                 records of 64 bytes; 0 takes a free port\n";
}

} // namespace orv::apps
