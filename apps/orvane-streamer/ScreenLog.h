#pragma once

#include <chrono>
#include <mutex>
#include <string>

namespace orv::apps {

/// What the streamer tells whoever reads its standard output: a line at a time, with the time since
/// it began, such as "0.532 s  undo and redo: 2 to undo, 0 to redo".
///
/// Thread   any.
class ScreenLog {
public:
    void write(const std::string &line);

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::mutex mutex_;
};

} // namespace orv::apps
