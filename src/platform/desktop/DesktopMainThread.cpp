#include "platform/desktop/DesktopMainThread.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/Monitor.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QTimerEvent>

#include <algorithm>
#include <chrono>
#include <utility>

namespace orv::platform {

namespace {

constexpr int kWorkers = 2;
constexpr auto kShortestInterval = std::chrono::milliseconds(1);

TimerQueue::Clock::duration durationOf(double seconds)
{
    constexpr double kLongest = 1e9;
    return std::chrono::duration_cast<TimerQueue::Clock::duration>(
        std::chrono::duration<double>(std::clamp(seconds, 0.0, kLongest)));
}

/// Carries a task to its place among the loop's events.
class TaskEvent final : public QEvent {
public:
    explicit TaskEvent(Task task) : QEvent(User), task_(std::move(task)) {}
    void run() const { task_(); }

private:
    Task task_;
};

} // namespace

/// The end of the loop that lies in Qt: wake-ups, tasks with priority, and one timer.
class DesktopMainThread::LoopObject final : public QObject {
public:
    explicit LoopObject(DesktopMainThread &owner) : owner_(owner) {}

    static constexpr auto wakeEvent = static_cast<QEvent::Type>(QEvent::User + 1);

    void arm(int milliseconds) { timer_.start(milliseconds, Qt::PreciseTimer, this); }
    void disarm() { timer_.stop(); }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == wakeEvent) {
            owner_.runPosted();
            return true;
        }
        if (event->type() == QEvent::User) {
            owner_.call([event] { static_cast<TaskEvent *>(event)->run(); });
            return true;
        }
        return QObject::event(event);
    }
    void timerEvent(QTimerEvent * /*event*/) override { owner_.runTimers(); }

private:
    DesktopMainThread &owner_;
    QBasicTimer timer_;
};

struct DesktopMainThread::Waiting {
    bool started = false;
    bool done = false;
    bool dropped = false;
};

DesktopMainThread::DesktopMainThread(ErrorSink sink)
    : sink_(std::make_shared<const ErrorSink>(std::move(sink))),
      loop_(std::make_unique<LoopObject>(*this)), workers_(std::make_unique<WorkerPool>(kWorkers))
{
}

DesktopMainThread::~DesktopMainThread()
{
    setEnded(true);
    workers_.reset();
}

void DesktopMainThread::setErrorSink(ErrorSink sink)
{
    const std::lock_guard lock(sinkMutex_);
    sink_ = std::make_shared<const ErrorSink>(std::move(sink));
}

void DesktopMainThread::report(const std::string &error) const
{
    std::shared_ptr<const ErrorSink> sink;
    {
        const std::lock_guard lock(sinkMutex_);
        sink = sink_;
    }
    if (*sink) {
        (*sink)(error);
    }
}

int DesktopMainThread::run()
{
    setEnded(false);
    const int exitCode = QCoreApplication::exec();
    setEnded(true);
    return exitCode;
}

void DesktopMainThread::quit(int exitCode)
{
    post([exitCode] { QCoreApplication::exit(exitCode); });
}

void DesktopMainThread::setEnded(bool ended)
{
    {
        const std::lock_guard lock(mutex_);
        ended_ = ended;
    }
    changed_.notify_all();
}

void DesktopMainThread::call(const std::function<void()> &body) noexcept
{
    const Monitor::Hold hold;
    guarded(body, [this](const std::string &error) { report(error); });
}

void DesktopMainThread::callSoon(Task task)
{
    QCoreApplication::postEvent(loop_.get(), new TaskEvent(std::move(task)), Qt::HighEventPriority);
}

bool DesktopMainThread::isCurrent() const
{
    return std::this_thread::get_id() == thread_;
}

void DesktopMainThread::wake()
{
    if (!wakePending_.exchange(true)) {
        QCoreApplication::postEvent(loop_.get(), new QEvent(LoopObject::wakeEvent));
    }
}

void DesktopMainThread::post(Task task)
{
    {
        const std::lock_guard lock(mutex_);
        posted_.push_back(std::move(task));
    }
    wake();
}

void DesktopMainThread::runPosted()
{
    wakePending_.store(false);
    std::vector<Task> batch;
    {
        const std::lock_guard lock(mutex_);
        batch.swap(posted_);
    }
    for (Task &task : batch) {
        call(task);
        task = nullptr;
    }
    armTimer();
}

void DesktopMainThread::postAndWait(Task task)
{
    if (isCurrent()) {
        call(task);
        return;
    }
    const auto waiting = std::make_shared<Waiting>();
    post([this, waiting, &task] {
        {
            const std::lock_guard lock(mutex_);
            if (waiting->dropped) {
                return;
            }
            waiting->started = true;
        }
        call(task);
        const std::lock_guard lock(mutex_);
        waiting->done = true;
        changed_.notify_all();
    });
    const Monitor::Release release;
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return waiting->done || (ended_ && !waiting->started); });
    waiting->dropped = !waiting->done;
}

TaskHandle DesktopMainThread::addTimer(double seconds, TimerQueue::Clock::duration interval,
                                       Task task)
{
    const auto due = TimerQueue::Clock::now() + durationOf(seconds);
    const auto added = timers_->add(due, interval, std::move(task));
    if (added.first) {
        wake();
    }
    return TaskHandle([timers = std::weak_ptr(timers_), id = added.id] {
        if (const auto queue = timers.lock()) {
            queue->cancel(id);
        }
    });
}

TaskHandle DesktopMainThread::after(double seconds, Task task)
{
    return addTimer(seconds, TimerQueue::Clock::duration::zero(), std::move(task));
}

TaskHandle DesktopMainThread::every(double seconds, Task task)
{
    const auto interval =
        std::max<TimerQueue::Clock::duration>(durationOf(seconds), kShortestInterval);
    return addTimer(seconds, interval, std::move(task));
}

void DesktopMainThread::armTimer()
{
    const auto earliest = timers_->earliest();
    if (earliest == armedFor_) {
        return;
    }
    armedFor_ = earliest;
    if (!earliest) {
        loop_->disarm();
        return;
    }
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(*earliest - TimerQueue::Clock::now());
    constexpr std::chrono::milliseconds::rep kLongest = 3'600'000;
    loop_->arm(
        static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, kLongest)));
}

void DesktopMainThread::runTimers()
{
    loop_->disarm();
    armedFor_.reset();
    timers_->runDue(TimerQueue::Clock::now(), [this](const Task &task) { call(task); });
    armTimer();
}

void DesktopMainThread::background(Task task)
{
    workers_->add([this, task = std::move(task)] {
        guarded(task, [this](const std::string &error) { report(error); });
    });
}

void DesktopMainThread::block(double seconds)
{
    const auto end = TimerQueue::Clock::now() + durationOf(seconds);
    if (isCurrent() && present_) {
        present_();
    }
    const Monitor::Release release;
    std::this_thread::sleep_until(end);
}

double DesktopMainThread::now() const
{
    return std::chrono::duration<double>(TimerQueue::Clock::now().time_since_epoch()).count();
}

std::chrono::system_clock::time_point DesktopMainThread::wallClock() const
{
    return std::chrono::system_clock::now();
}

} // namespace orv::platform
