#pragma once

#include "orvane-streamer/FileDescriptor.h"

namespace orv::apps {

/// A flag that a thread can wait for together with a socket.
///
/// Thread   any.
class StopSignal {
public:
    /// Throws `std::runtime_error` when the system has no descriptor left.
    StopSignal();

    void raise();
    /// Waits until there is something to read, or the signal is raised. True for the first alone.
    [[nodiscard]] bool waitForInput(int descriptor) const;

private:
    FileDescriptor event_;
};

} // namespace orv::apps
