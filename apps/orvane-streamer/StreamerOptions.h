#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

namespace orv::apps {

/// What the streamer was called with.
struct StreamerOptions {
    enum class Task { serve, demo, diagnose, forget, help, version };

    Task task = Task::serve;
    std::optional<std::uint16_t> plugin;
    std::string address = "127.0.0.1";
    /// Nothing for the usual port, or a free one when that is taken; 0 for any free port.
    std::optional<std::uint16_t> port;
    /// Empty for the first lesson.
    std::string lesson;
    std::string out = ".";
};

/// The port of the remote page: no service is registered for it, and it needs no rights.
inline constexpr std::uint16_t kUsualPort = 8720;

/// The call does not fit; the text is one sentence that names the argument.
class OptionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Without the program's own name. Throws `OptionError`.
[[nodiscard]] StreamerOptions streamerOptions(std::span<char *const> arguments);

[[nodiscard]] const char *streamerHelp();

} // namespace orv::apps
