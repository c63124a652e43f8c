#include "platform/desktop/WorkerPool.h"

#include <utility>

namespace orv::platform {

WorkerPool::WorkerPool(int threads)
{
    for (int i = 0; i < threads; ++i) {
        threads_.emplace_back([this] { work(); });
    }
}

WorkerPool::~WorkerPool()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    for (std::thread &thread : threads_) {
        thread.join();
    }
}

void WorkerPool::add(Task task)
{
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    changed_.notify_one();
}

void WorkerPool::work()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || !tasks_.empty(); });
        if (tasks_.empty()) {
            return;
        }
        {
            const Task task = std::move(tasks_.front());
            tasks_.pop_front();
            lock.unlock();
            task();
        }
        lock.lock();
    }
}

} // namespace orv::platform
