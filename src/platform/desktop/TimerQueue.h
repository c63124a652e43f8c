#pragma once

#include "platform/ports/MainThread.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace orv::platform {

/// The delayed and repeating tasks of a loop, ordered by the moment they are due.
///
/// Thread   any; `runDue` is for the thread of the loop.
/// Order    tasks of one moment run in the order in which they were added.
class TimerQueue {
public:
    using Clock = std::chrono::steady_clock;
    using Id = std::uint64_t;

    /// `interval` zero: once. True as `first` in the answer: it is now the earliest of all, and the
    /// loop has to be woken sooner.
    struct Added {
        bool first;
        Id id;
    };
    Added add(Clock::time_point due, Clock::duration interval, Task task);
    /// An ID that has run out or was cancelled is ignored. A task that runs meanwhile is not
    /// waited for.
    void cancel(Id id);
    /// When the loop has to look again; nothing while there is no task.
    [[nodiscard]] std::optional<Clock::time_point> earliest() const;
    /// Hands each task that is due at `now` to `run`. A repeating task that is late by several
    /// intervals runs once and then counts anew.
    void runDue(Clock::time_point now, const std::function<void(const Task &)> &run);

private:
    using Key = std::pair<Clock::time_point, Id>;
    struct Entry {
        Clock::duration interval;
        std::shared_ptr<const Task> task;
    };
    std::shared_ptr<const Task> takeDue(Clock::time_point now);

    mutable std::mutex mutex_;
    Id lastId_ = 0;
    std::map<Key, Entry> entries_;
    std::map<Id, Key> keys_;
};

} // namespace orv::platform
