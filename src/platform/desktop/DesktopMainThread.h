#pragma once

#include "platform/desktop/TimerQueue.h"
#include "platform/desktop/WorkerPool.h"
#include "platform/ports/MainThread.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace orv::platform {

/// The event loop of the GUI application, as the logic sees it.
///
/// What happens in the loop (posted tasks, timers, input, drawing) goes through `call`: under the
/// monitor, and with a report instead of an exception.
///
/// Thread   made and destroyed on the main thread, after and before the GUI application.
/// Invariant nobody waits in `postAndWait` for a loop that has ended.
class DesktopMainThread final : public MainThread {
public:
    /// `sink` takes the description of each exception that a callback let go; any thread.
    explicit DesktopMainThread(ErrorSink sink);
    ~DesktopMainThread() override;
    DesktopMainThread(const DesktopMainThread &) = delete;
    DesktopMainThread &operator=(const DesktopMainThread &) = delete;

    void setErrorSink(ErrorSink sink) override;
    /// Called on the main thread before it blocks, so that what was drawn is seen meanwhile.
    void setBeforeBlock(Task present) { present_ = std::move(present); }

    /// Runs the loop until `quit`; answers the exit code given there.
    int run();
    /// From any thread. Before `run` it makes that return at once.
    void quit(int exitCode);

    /// Runs `body` under the monitor. An exception goes to the error sink.
    void call(const std::function<void()> &body) noexcept;
    /// Runs `task` on the main thread ahead of what was posted. Main thread.
    void callSoon(Task task);

    [[nodiscard]] bool isCurrent() const override;
    void post(Task task) override;
    void postAndWait(Task task) override;
    [[nodiscard]] TaskHandle after(double seconds, Task task) override;
    [[nodiscard]] TaskHandle every(double seconds, Task task) override;
    void background(Task task) override;
    void block(double seconds) override;
    [[nodiscard]] double now() const override;
    [[nodiscard]] std::chrono::system_clock::time_point wallClock() const override;

private:
    class LoopObject;
    struct Waiting;

    void wake();
    void runPosted();
    void armTimer();
    void runTimers();
    void report(const std::string &error) const;
    void setEnded(bool ended);
    TaskHandle addTimer(double seconds, TimerQueue::Clock::duration interval, Task task);

    std::thread::id thread_ = std::this_thread::get_id();
    Task present_;

    mutable std::mutex sinkMutex_;
    std::shared_ptr<const ErrorSink> sink_;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Task> posted_;
    bool ended_ = false;

    std::atomic<bool> wakePending_ = false;
    std::shared_ptr<TimerQueue> timers_ = std::make_shared<TimerQueue>();
    std::optional<TimerQueue::Clock::time_point> armedFor_;
    std::unique_ptr<LoopObject> loop_;
    std::unique_ptr<WorkerPool> workers_;
};

} // namespace orv::platform
