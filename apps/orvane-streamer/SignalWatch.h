#pragma once

#include "orvane-streamer/FileDescriptor.h"
#include "orvane-streamer/StopSignal.h"

#include <functional>
#include <thread>

namespace orv::apps {

/// Turns SIGINT and SIGTERM into one call on a thread of its own.
///
/// Make it before any other thread: the signals are blocked for all threads that come after it.
class SignalWatch {
public:
    /// Blocks the signals. Throws `std::runtime_error` when they cannot be watched.
    SignalWatch();
    /// As `stop`.
    ~SignalWatch();
    SignalWatch(const SignalWatch &) = delete;
    SignalWatch &operator=(const SignalWatch &) = delete;

    /// Calls `quit` at the first signal, also at one that came before this.
    void start(std::function<void()> quit);
    /// No call comes after this; waits for one that runs.
    void stop();

private:
    FileDescriptor signals_;
    StopSignal stop_;
    std::thread thread_;
};

} // namespace orv::apps
