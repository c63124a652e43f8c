#include "platform/foundation/Monitor.h"

#include <algorithm>
#include <utility>

namespace orv::platform {

namespace {

// The monitors that a thread holds, in the order in which it took them.
std::vector<Monitor *> &heldByThisThread()
{
    thread_local std::vector<Monitor *> held;
    return held;
}

} // namespace

Monitor &Monitor::shared()
{
    static Monitor monitor;
    return monitor;
}

void Monitor::enter()
{
    enterTimes(1);
}

void Monitor::enterTimes(std::size_t depth)
{
    std::unique_lock lock(mutex_);
    const auto self = std::this_thread::get_id();
    freed_.wait(lock, [&] { return depth_ == 0 || owner_ == self; });
    if (depth_ == 0) {
        heldByThisThread().push_back(this);
    }
    owner_ = self;
    depth_ += depth;
}

void Monitor::leave()
{
    const std::lock_guard lock(mutex_);
    if (--depth_ == 0) {
        owner_ = {};
        std::erase(heldByThisThread(), this);
        freed_.notify_one();
    }
}

std::size_t Monitor::leaveAll()
{
    const std::lock_guard lock(mutex_);
    const std::size_t depth = std::exchange(depth_, 0);
    owner_ = {};
    freed_.notify_one();
    return depth;
}

Monitor::Release::Release()
{
    for (Monitor *monitor : std::exchange(heldByThisThread(), {})) {
        released_.emplace_back(monitor, monitor->leaveAll());
    }
}

Monitor::Release::~Release()
{
    for (const auto &[monitor, depth] : released_) {
        monitor->enterTimes(depth);
    }
}

} // namespace orv::platform
