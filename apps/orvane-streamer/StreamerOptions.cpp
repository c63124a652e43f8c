#include "orvane-streamer/StreamerOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::apps {

namespace {

using Task = StreamerOptions::Task;

constexpr std::array<std::pair<std::string_view, Task>, 5> kTasks{{{"--demo", Task::demo},
                                                                   {"--diagnose", Task::diagnose},
                                                                   {"--forget", Task::forget},
                                                                   {"--help", Task::help},
                                                                   {"--version", Task::version}}};
// What only a remote page and only a lesson has a use for.
constexpr std::array<std::string_view, 2> kServing{"--bind", "--port"};
constexpr std::array<std::string_view, 2> kPlaying{"--lesson", "--out"};

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

/// False when the argument is no task.
bool takeTask(std::string_view argument, std::string &chosen, StreamerOptions &options)
{
    const auto *task = std::find_if(kTasks.begin(), kTasks.end(),
                                    [&](const auto &named) { return named.first == argument; });
    if (task == kTasks.end()) {
        return false;
    }
    if (!chosen.empty() && chosen != argument) {
        throw OptionError(chosen + " and " + std::string(argument) + " exclude each other.");
    }
    chosen = argument;
    options.task = task->second;
    return true;
}

void takeValue(std::span<char *const> arguments, std::size_t &at, StreamerOptions &options)
{
    const std::string_view argument = arguments[at];
    if (argument == "--plugin") {
        options.plugin = numberAfter(arguments, at);
    } else if (argument == "--bind") {
        options.address = valueAfter(arguments, at);
    } else if (argument == "--port") {
        options.port = numberAfter(arguments, at);
    } else if (argument == "--lesson") {
        options.lesson = valueAfter(arguments, at);
    } else if (argument == "--out") {
        options.out = valueAfter(arguments, at);
    } else {
        throw OptionError("There is no option \"" + std::string(argument) + "\".");
    }
}

void checkFits(const std::vector<std::string_view> &given, const StreamerOptions &options)
{
    const auto refuse = [&](const auto &names, const char *reason) {
        for (const std::string_view name : names) {
            if (std::find(given.begin(), given.end(), name) != given.end()) {
                throw OptionError(std::string(name) + reason);
            }
        }
    };
    if (options.task != Task::serve) {
        refuse(kServing, " is for serving the remote page, and something else was asked for.");
    }
    if (options.task != Task::demo) {
        refuse(kPlaying, " goes with --demo.");
    }
    constexpr std::array<std::uint16_t, 3> plugins{16, 17, 18};
    if (options.task == Task::serve && options.plugin &&
        std::find(plugins.begin(), plugins.end(), *options.plugin) == plugins.end()) {
        throw OptionError("The remote page speaks for the plug-ins 16, 17 and 18, not for " +
                          std::to_string(*options.plugin) + ".");
    }
}

} // namespace

StreamerOptions streamerOptions(std::span<char *const> arguments)
{
    StreamerOptions options;
    std::string chosen;
    std::vector<std::string_view> given;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        given.emplace_back(arguments[i]);
        if (!takeTask(given.back(), chosen, options)) {
            takeValue(arguments, i, options);
        }
        if (options.task == Task::help) {
            return options;
        }
    }
    checkFits(given, options);
    return options;
}

const char *streamerHelp()
{
    return "usage: orvane-streamer [--bind ADDRESS] [--port N] [--plugin N]\n"
           "       orvane-streamer --demo [--lesson FILE] [--out DIR] [--plugin N]\n"
           "       orvane-streamer --diagnose | --forget | --help | --version\n"
           "\n"
           "Shows this desktop to remote pages in browsers, and annotates it as they ask. Prints\n"
           "the address with its pairing code; opened in a browser, it is the remote.\n"
           "\n"
           "  --bind ADDRESS  listen on this address of the machine instead of 127.0.0.1 alone;\n"
           "                  0.0.0.0 is every IPv4 network that it is in. Nothing is encrypted:\n"
           "                  use it only in networks whose members you trust\n"
           "  --port N        listen there; 0 takes a free port (default: 8720, or a free one)\n"
           "  --plugin N      the plug-in to be (default: 17; with --demo what the lesson says)\n"
           "  --demo          play a lesson: a session script of the commands host, record,\n"
           "                  stroke, type, wait, note and screenshot\n"
           "  --lesson FILE   the lesson to play (default: the first lesson)\n"
           "  --out DIR       where pictures of the screen go (default: the current folder)\n"
           "  --diagnose      print what this desktop has and what works on it\n"
           "  --forget        forget the browsers that were paired\n"
           "  --help          print this\n"
           "  --version       print the version\n";
}

} // namespace orv::apps
