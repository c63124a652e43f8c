#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

namespace orv::apps {

/// What the streamer was called with.
struct StreamerOptions {
    std::optional<std::uint16_t> plugin;
    /// Set: wait for clients there instead of playing a lesson; 0 for any free port.
    std::optional<std::uint16_t> listen;
    /// Empty for the first lesson.
    std::string lesson;
    std::string out = ".";
    bool help = false;
};

/// The call does not fit; the text is one sentence that names the argument.
class OptionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Without the program's own name. Throws `OptionError`.
[[nodiscard]] StreamerOptions streamerOptions(std::span<char *const> arguments);

[[nodiscard]] const char *streamerHelp();

} // namespace orv::apps
