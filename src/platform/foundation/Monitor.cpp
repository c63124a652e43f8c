#include "platform/foundation/Monitor.h"

#include <utility>

namespace orv::platform {

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
    if (depth == 0) {
        return;
    }
    std::unique_lock lock(mutex_);
    const auto self = std::this_thread::get_id();
    freed_.wait(lock, [&] { return depth_ == 0 || owner_ == self; });
    owner_ = self;
    depth_ += depth;
}

void Monitor::leave()
{
    const std::lock_guard lock(mutex_);
    if (--depth_ == 0) {
        owner_ = {};
        freed_.notify_one();
    }
}

std::size_t Monitor::leaveAll()
{
    const std::lock_guard lock(mutex_);
    if (depth_ == 0 || owner_ != std::this_thread::get_id()) {
        return 0;
    }
    const std::size_t depth = std::exchange(depth_, 0);
    owner_ = {};
    freed_.notify_one();
    return depth;
}

} // namespace orv::platform
