#include "platform/virtual/VirtualMainThread.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/Monitor.h"

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <iostream>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace orv::platform {

namespace {

constexpr double kShortestPeriod = 0.0001;

/// What a thread waits on that posted and waits.
struct Ticket {
    bool done = false;
};

struct Queued {
    Task task;
    bool outsideMonitor = false;
    std::shared_ptr<Ticket> ticket;
};

struct Timer {
    std::shared_ptr<const Task> task;
    double start = 0.0;
    /// 0 for one that fires once.
    double period = 0.0;
};

/// By due time, then by the order of the calls.
using TimerKey = std::pair<double, std::uint64_t>;

double nextDue(const Timer &timer, double now)
{
    const double passed = std::floor((now - timer.start) / timer.period + 1e-9);
    return timer.start + (std::max(passed, 0.0) + 1.0) * timer.period;
}

} // namespace

/// Shared with handles and waiting threads, which may outlive the loop.
struct VirtualMainThread::State {
    std::mutex mutex;
    std::condition_variable arrived;
    std::condition_variable finished;
    std::deque<Queued> queue;
    std::map<TimerKey, Timer> timers;
    std::uint64_t lastCall = 0;
    double now = 0.0;
    bool ended = false;

    /// False after the end of the loop. What could not be queued is destroyed by the caller.
    bool enqueue(Queued &&queued)
    {
        const std::lock_guard lock(mutex);
        if (ended) {
            return false;
        }
        queue.push_back(std::move(queued));
        arrived.notify_all();
        return true;
    }

    void cancel(std::uint64_t call)
    {
        Timer cancelled;
        const std::lock_guard lock(mutex);
        const auto found = std::find_if(timers.begin(), timers.end(), [call](const auto &item) {
            return item.first.second == call;
        });
        if (found != timers.end()) {
            std::swap(cancelled, found->second);
            timers.erase(found);
        }
    }
};

VirtualMainThread::VirtualMainThread(std::chrono::system_clock::time_point wallClock)
    : state_(std::make_shared<State>()), start_(wallClock), thread_(std::this_thread::get_id()),
      errorSink_([](const std::string &text) { std::cerr << text << '\n'; })
{
}

VirtualMainThread::~VirtualMainThread()
{
    shutdown();
}

bool VirtualMainThread::isCurrent() const
{
    return std::this_thread::get_id() == thread_;
}

void VirtualMainThread::post(Task task)
{
    state_->enqueue({std::move(task), false, nullptr});
}

void VirtualMainThread::background(Task task)
{
    state_->enqueue({std::move(task), true, nullptr});
}

void VirtualMainThread::postAndWait(Task task)
{
    if (isCurrent()) {
        run(task);
        return;
    }
    const std::shared_ptr<State> state = state_;
    auto ticket = std::make_shared<Ticket>();
    if (!state->enqueue({std::move(task), false, ticket})) {
        return;
    }
    const Monitor::Release release;
    std::unique_lock lock(state->mutex);
    state->finished.wait(lock, [&ticket] { return ticket->done; });
}

TaskHandle VirtualMainThread::after(double seconds, Task task)
{
    return schedule(std::max(seconds, 0.0), 0.0, std::move(task));
}

TaskHandle VirtualMainThread::every(double seconds, Task task)
{
    const double period = std::max(seconds, kShortestPeriod);
    return schedule(period, period, std::move(task));
}

TaskHandle VirtualMainThread::schedule(double delay, double period, Task task)
{
    auto shared = std::make_shared<const Task>(std::move(task));
    const std::lock_guard lock(state_->mutex);
    if (state_->ended) {
        return {};
    }
    const std::uint64_t call = ++state_->lastCall;
    state_->timers.emplace(TimerKey{state_->now + delay, call},
                           Timer{std::move(shared), state_->now, period});
    return TaskHandle([weak = std::weak_ptr<State>(state_), call] {
        if (const auto state = weak.lock()) {
            state->cancel(call);
        }
    });
}

void VirtualMainThread::block(double seconds)
{
    const Monitor::Release release;
    const std::lock_guard lock(state_->mutex);
    state_->now += std::max(seconds, 0.0);
}

double VirtualMainThread::now() const
{
    const std::lock_guard lock(state_->mutex);
    return state_->now;
}

std::chrono::system_clock::time_point VirtualMainThread::wallClock() const
{
    return start_ + std::chrono::round<std::chrono::system_clock::duration>(
                        std::chrono::duration<double>(now()));
}

void VirtualMainThread::run(const Task &task)
{
    const Monitor::Hold hold;
    runOutsideMonitor(task);
}

void VirtualMainThread::runOutsideMonitor(const Task &task)
{
    guarded(task, [this](const std::string &text) {
        if (errorSink_) {
            errorSink_(text);
        }
    });
}

bool VirtualMainThread::runNext()
{
    const std::shared_ptr<State> state = state_;
    Queued next;
    {
        const std::lock_guard lock(state->mutex);
        if (state->queue.empty()) {
            return false;
        }
        next = std::move(state->queue.front());
        state->queue.pop_front();
    }
    if (next.outsideMonitor) {
        const Monitor::Release release;
        runOutsideMonitor(next.task);
    } else {
        run(next.task);
    }
    next.task = nullptr;
    if (next.ticket) {
        const std::lock_guard lock(state->mutex);
        next.ticket->done = true;
        state->finished.notify_all();
    }
    return true;
}

bool VirtualMainThread::fireNext(double until)
{
    std::shared_ptr<const Task> task;
    {
        const std::lock_guard lock(state_->mutex);
        const auto first = state_->timers.begin();
        if (first == state_->timers.end() || first->first.first > until) {
            return false;
        }
        state_->now = std::max(state_->now, first->first.first);
        auto node = state_->timers.extract(first);
        task = node.mapped().task;
        if (node.mapped().period > 0.0) {
            node.key().first = nextDue(node.mapped(), state_->now);
            state_->timers.insert(std::move(node));
        }
    }
    run(*task);
    return true;
}

void VirtualMainThread::drain()
{
    while (runNext() || fireNext(now())) {
    }
}

void VirtualMainThread::advance(double seconds)
{
    const double until = now() + std::max(seconds, 0.0);
    drain();
    while (fireNext(until)) {
        drain();
    }
    {
        const std::lock_guard lock(state_->mutex);
        state_->now = std::max(state_->now, until);
    }
    drain();
}

bool VirtualMainThread::waitAndDrain(std::chrono::milliseconds limit)
{
    bool came = false;
    {
        const Monitor::Release release;
        std::unique_lock lock(state_->mutex);
        came = state_->arrived.wait_for(lock, limit, [this] { return !state_->queue.empty(); });
    }
    drain();
    return came;
}

void VirtualMainThread::shutdown()
{
    // What the dropped tasks own may call back into the loop when it goes: not under the lock.
    std::deque<Queued> queue;
    std::map<TimerKey, Timer> timers;
    const std::lock_guard lock(state_->mutex);
    state_->ended = true;
    queue.swap(state_->queue);
    timers.swap(state_->timers);
    for (Queued &queued : queue) {
        if (queued.ticket) {
            queued.ticket->done = true;
        }
    }
    state_->finished.notify_all();
}

void VirtualMainThread::setErrorSink(ErrorSink sink)
{
    errorSink_ = std::move(sink);
}

} // namespace orv::platform
