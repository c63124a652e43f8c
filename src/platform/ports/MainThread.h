#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>

namespace orv::platform {

using Task = std::function<void()>;

/// A delayed or repeating task that has not run out; destroying the handle cancels it.
class TaskHandle {
public:
    TaskHandle() = default;
    /// `cancel` is called at most once, on the thread that destroys or resets the handle.
    explicit TaskHandle(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    TaskHandle(TaskHandle &&other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    TaskHandle &operator=(TaskHandle &&other) noexcept
    {
        if (this != &other) {
            reset();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    ~TaskHandle() { reset(); }

    /// Cancels now. Harmless after the task has run.
    void reset()
    {
        if (auto cancel = std::exchange(cancel_, nullptr)) {
            cancel();
        }
    }
    /// Lets the task run on its own: nobody can cancel it any more.
    void detach() { cancel_ = nullptr; }
    [[nodiscard]] explicit operator bool() const { return cancel_ != nullptr; }

private:
    std::function<void()> cancel_;
};

/// The event loop of the one thread that draws and owns the windows, and the clock of the system.
///
/// Every task runs on the main thread, under the monitor, and an exception that leaves it is
/// logged there and goes no further.
class MainThread {
public:
    using ErrorSink = std::function<void(const std::string &)>;

    virtual ~MainThread() = default;

    /// Where exceptions that leave a task are told: the description of each, on the thread that ran
    /// the task. Stands until the next one is set.
    virtual void setErrorSink(ErrorSink sink) = 0;
    [[nodiscard]] virtual bool isCurrent() const = 0;
    /// From any thread. Tasks run in the order of their posts.
    virtual void post(Task task) = 0;
    /// From any thread; returns when the task is done. Inline on the main thread; elsewhere the
    /// caller's holds on the monitor are let go while it waits. After the loop has ended the task
    /// is dropped.
    virtual void postAndWait(Task task) = 0;
    /// From any thread. Once, `seconds` from now, tasks of one moment in the order of their calls.
    [[nodiscard]] virtual TaskHandle after(double seconds, Task task) = 0;
    /// Every `seconds`, the first time that long from now, until the handle goes.
    [[nodiscard]] virtual TaskHandle every(double seconds, Task task) = 0;
    /// On a worker thread, outside the monitor. The virtual platform runs it at the next drain.
    virtual void background(Task task) = 0;
    /// Lets time pass while the caller waits, as a blocking animation does; the monitor is let go.
    virtual void block(double seconds) = 0;

    /// Monotonic seconds.
    [[nodiscard]] virtual double now() const = 0;
    [[nodiscard]] virtual std::chrono::system_clock::time_point wallClock() const = 0;
};

} // namespace orv::platform
