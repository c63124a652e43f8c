#pragma once

#include "platform/ports/MainThread.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace orv::platform {

/// An event loop that only moves when it is told to, with a clock that only moves then, too.
///
/// Thread   the thread that makes it is the main thread; the operations below the port's are for
///          that thread alone.
/// Units    seconds since it was made.
/// Fails    an exception that leaves a task goes to the error sink, and the loop goes on.
class VirtualMainThread final : public MainThread {
public:
    /// `wallClock` is what the wall clock shows at 0 seconds.
    explicit VirtualMainThread(std::chrono::system_clock::time_point wallClock);
    /// Ends the loop as `shutdown` does.
    ~VirtualMainThread() override;
    VirtualMainThread(const VirtualMainThread &) = delete;
    VirtualMainThread &operator=(const VirtualMainThread &) = delete;

    [[nodiscard]] bool isCurrent() const override;
    void post(Task task) override;
    void postAndWait(Task task) override;
    [[nodiscard]] TaskHandle after(double seconds, Task task) override;
    /// What a late loop missed is made up for by one run. The shortest period is 0.1 ms.
    [[nodiscard]] TaskHandle every(double seconds, Task task) override;
    /// Runs in turn with the posted tasks, on the main thread, with the monitor let go.
    void background(Task task) override;
    /// Moves the clock on at once. Timers that come due meanwhile fire at the next drain.
    void block(double seconds) override;
    [[nodiscard]] double now() const override;
    [[nodiscard]] std::chrono::system_clock::time_point wallClock() const override;

    /// Runs all that is due at the present moment, and what comes of it, until nothing is left:
    /// posted and background tasks in their order, then timers in the order of their due time.
    void drain();
    /// Lets time pass: timers fire in the order of their due time (of one moment in the order of
    /// their calls), with a drain before, between and after them.
    void advance(double seconds);
    /// Waits, in real time and with the monitor let go, until another thread posts something, and
    /// drains. False when nothing came within `limit`.
    bool waitAndDrain(std::chrono::milliseconds limit);
    /// Ends the loop: drops all tasks and timers and frees who waits for one. Later calls of
    /// `post`, `postAndWait`, `after`, `every` and `background` do nothing.
    void shutdown();

    /// Where exceptions that leave a task are reported, on the main thread; without one they are
    /// dropped. At first it is standard error.
    void setErrorSink(ErrorSink sink) override;

private:
    struct State;

    void run(const Task &task);
    void runOutsideMonitor(const Task &task);
    bool runNext();
    bool fireNext(double until);
    TaskHandle schedule(double delay, double period, Task task);

    std::shared_ptr<State> state_;
    std::chrono::system_clock::time_point start_;
    std::thread::id thread_;
    ErrorSink errorSink_;
};

} // namespace orv::platform
