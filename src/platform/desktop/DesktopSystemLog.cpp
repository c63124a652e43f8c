#include "platform/desktop/DesktopSystemLog.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <chrono>
#include <cstdio>

namespace orv::platform {

void DesktopSystemLog::write(const std::string &line)
{
    const auto now =
        std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto milliseconds = now.time_since_epoch().count() % 1000;
    const std::string text =
        fmt::format("{:%Y-%m-%d %H:%M:%S}.{:03} {}\n",
                    fmt::localtime(std::chrono::system_clock::to_time_t(now)), milliseconds, line);
    std::fwrite(text.data(), 1, text.size(), stderr);
}

} // namespace orv::platform
