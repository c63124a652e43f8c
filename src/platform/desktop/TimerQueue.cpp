#include "platform/desktop/TimerQueue.h"

#include <utility>

namespace orv::platform {

TimerQueue::Added TimerQueue::add(Clock::time_point due, Clock::duration interval, Task task)
{
    const std::lock_guard lock(mutex_);
    const Id id = ++lastId_;
    const Key key{due, id};
    const auto place =
        entries_.emplace(key, Entry{interval, std::make_shared<const Task>(std::move(task))}).first;
    keys_.emplace(id, key);
    return {place == entries_.begin(), id};
}

void TimerQueue::cancel(Id id)
{
    // What the task holds may cancel other tasks as it goes, so it goes after the lock.
    std::shared_ptr<const Task> cancelled;
    const std::lock_guard lock(mutex_);
    const auto key = keys_.find(id);
    if (key == keys_.end()) {
        return;
    }
    const auto entry = entries_.find(key->second);
    cancelled = std::move(entry->second.task);
    entries_.erase(entry);
    keys_.erase(key);
}

std::optional<TimerQueue::Clock::time_point> TimerQueue::earliest() const
{
    const std::lock_guard lock(mutex_);
    return entries_.empty() ? std::nullopt : std::optional(entries_.begin()->first.first);
}

std::shared_ptr<const Task> TimerQueue::takeDue(Clock::time_point now)
{
    const std::lock_guard lock(mutex_);
    if (entries_.empty() || entries_.begin()->first.first > now) {
        return nullptr;
    }
    auto node = entries_.extract(entries_.begin());
    auto &[due, id] = node.key();
    std::shared_ptr<const Task> task = node.mapped().task;
    if (node.mapped().interval == Clock::duration::zero()) {
        keys_.erase(id);
        return task;
    }
    due += node.mapped().interval;
    if (due <= now) {
        due = now + node.mapped().interval;
    }
    keys_[id] = node.key();
    entries_.insert(std::move(node));
    return task;
}

void TimerQueue::runDue(Clock::time_point now, const std::function<void(const Task &)> &run)
{
    while (const std::shared_ptr<const Task> task = takeDue(now)) {
        run(*task);
    }
}

} // namespace orv::platform
