#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>

namespace orv::platform {

/// The one re-entrant lock between the main thread and the host's threads.
///
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

    /// Lets go of all of this thread's holds for the length of a scope, and takes them back at its
    /// end. Harmless where the thread holds nothing.
    class Release {
    public:
        explicit Release(Monitor &monitor = Monitor::shared())
            : monitor_(monitor), depth_(monitor.leaveAll())
        {
        }
        ~Release() { monitor_.enterTimes(depth_); }
        Release(const Release &) = delete;
        Release &operator=(const Release &) = delete;

    private:
        Monitor &monitor_;
        std::size_t depth_;
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
