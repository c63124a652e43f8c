#pragma once

#include <span>
#include <stdexcept>
#include <string>

namespace orv::apps {

/// What the replay tool was called with.
struct ReplayOptions {
    /// Empty for a temporary folder.
    std::string home;
    std::string out = ".";
    bool quietLog = false;
    bool help = false;
    /// A path, or "-" for standard input.
    std::string script;
};

/// The call does not fit; the text is one sentence that names the argument.
class OptionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Without the program's own name. Throws `OptionError`.
[[nodiscard]] ReplayOptions replayOptions(std::span<char *const> arguments);

[[nodiscard]] const char *replayHelp();

} // namespace orv::apps
