#include "orvane-streamer/MainThreadPace.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace orv::apps {
namespace {

/// A main thread that does one task when it is told to.
class Tasks {
public:
    void post(std::function<void()> task)
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
        posted_.notify_all();
    }
    void waitForPosted(std::size_t count)
    {
        std::unique_lock lock(mutex_);
        posted_.wait(lock, [&] { return tasks_.size() + done_ >= count; });
    }
    void doOne()
    {
        std::unique_lock lock(mutex_);
        posted_.wait(lock, [this] { return !tasks_.empty(); });
        const auto task = std::move(tasks_.front());
        tasks_.pop_front();
        ++done_;
        lock.unlock();
        task();
    }

private:
    std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<std::function<void()>> tasks_;
    std::size_t done_ = 0;
};

TEST(MainThreadPace, TheOtherThreadGetsAFewLotsAheadAndThenWaits)
{
    Tasks main;
    MainThreadPace pace([&main](std::function<void()> task) { main.post(std::move(task)); }, 2);
    std::atomic<int> passed = 0;
    std::thread poster([&] {
        for (int i = 0; i < 5; ++i) {
            pace.wait();
            ++passed;
        }
    });

    main.waitForPosted(3);
    EXPECT_LE(passed, 2);
    for (int i = 0; i < 5; ++i) {
        main.doOne();
    }
    poster.join();

    EXPECT_EQ(passed, 5);
}

TEST(MainThreadPace, ATaskMayRunAfterThePaceHasGone)
{
    Tasks main;
    {
        MainThreadPace pace([&main](std::function<void()> task) { main.post(std::move(task)); }, 1);
        pace.wait();
    }
    main.doOne();
}

} // namespace
} // namespace orv::apps
