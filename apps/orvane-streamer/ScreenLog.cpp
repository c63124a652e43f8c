#include "orvane-streamer/ScreenLog.h"

#include <fmt/format.h>

#include <iostream>

namespace orv::apps {

void ScreenLog::write(const std::string &line)
{
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    const std::string text = fmt::format("{:.3f} s  {}\n", passed.count(), line);
    const std::lock_guard lock(mutex_);
    std::cout << text << std::flush;
}

} // namespace orv::apps
