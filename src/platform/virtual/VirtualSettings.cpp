#include "platform/virtual/VirtualSettings.h"

#include <ctime>

namespace orv::platform {

std::optional<std::chrono::system_clock::time_point> wallClockFromText(std::string_view text)
{
    const std::string whole(text);
    std::tm parts{};
    const char *end = ::strptime(whole.c_str(), "%Y-%m-%d %H:%M:%S", &parts);
    if (end != whole.c_str() + whole.size()) {
        return std::nullopt;
    }
    std::tm normal = parts;
    normal.tm_isdst = -1;
    const std::time_t seconds = std::mktime(&normal);
    // A day that its month does not have comes back as one of the next month.
    if (normal.tm_mday != parts.tm_mday || normal.tm_mon != parts.tm_mon) {
        return std::nullopt;
    }
    return std::chrono::system_clock::from_time_t(seconds);
}

} // namespace orv::platform
