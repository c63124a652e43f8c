#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace orv::platform {

/// A re-entrant lock that a thread lets go of while it waits for another one.
///
/// `shared` is the one between the main thread and the host's threads.
/// The main thread holds it round each callback, the entries for hosts round their direct steps. It
/// is let go, whatever the depth, while a thread waits for the other one or an animation
/// blocks. The logic below those entries does not know of it.
class Monitor {
public:
    static Monitor &shared();

    void enter();
    void leave();

    /// Holds the monitor for the length of a scope.
    class Hold {
    public:
        explicit Hold(Monitor &monitor = Monitor::shared()) : monitor_(monitor)
        {
            monitor_.enter();
        }
        ~Hold() { monitor_.leave(); }
        Hold(const Hold &) = delete;
        Hold &operator=(const Hold &) = delete;

    private:
        Monitor &monitor_;
    };

    /// Lets go of all of this thread's holds, on this and on every other monitor, for the length of
    /// a scope, and takes them back at its end in the order in which they were taken. Harmless
    /// where the thread holds nothing. What the monitors guard may have changed meanwhile.
    class Release {
    public:
        Release();
        ~Release();
        Release(const Release &) = delete;
        Release &operator=(const Release &) = delete;

    private:
        std::vector<std::pair<Monitor *, std::size_t>> released_;
    };

private:
    std::size_t leaveAll();
    void enterTimes(std::size_t depth);

    std::mutex mutex_;
    std::condition_variable freed_;
    std::thread::id owner_;
    std::size_t depth_ = 0;
};

} // namespace orv::platform
