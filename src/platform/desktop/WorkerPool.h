#pragma once

#include "platform/ports/MainThread.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace orv::platform {

/// A few threads for work that nobody waits for: encoding, saving, encrypting.
///
/// Thread   any. Its destructor runs what is still queued, so that no save is lost, and waits.
/// Fails    tasks do not throw.
class WorkerPool {
public:
    explicit WorkerPool(int threads);
    ~WorkerPool();
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;

    void add(Task task);

private:
    void work();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Task> tasks_;
    bool ending_ = false;
    std::vector<std::thread> threads_;
};

} // namespace orv::platform
