#include "platform/foundation/NotificationCenter.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orv::platform {

NotificationCenter &NotificationCenter::local()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::addObserver(const void *observer, const std::string &name,
                                     Receiver receiver)
{
    const std::lock_guard lock(mutex_);
    auto &entries = observers_[name];
    auto shared = std::make_shared<Receiver>(std::move(receiver));
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [observer](const Entry &e) { return e.observer == observer; });
    if (found != entries.end()) {
        found->receiver = std::move(shared);
    } else {
        entries.push_back({observer, std::move(shared)});
    }
}

void NotificationCenter::removeObserver(const void *observer, const std::string &name)
{
    const std::lock_guard lock(mutex_);
    const auto found = observers_.find(name);
    if (found == observers_.end()) {
        return;
    }
    std::erase_if(found->second, [observer](const Entry &e) { return e.observer == observer; });
    if (found->second.empty()) {
        observers_.erase(found);
    }
}

void NotificationCenter::removeObserver(const void *observer)
{
    const std::lock_guard lock(mutex_);
    for (auto item = observers_.begin(); item != observers_.end();) {
        std::erase_if(item->second, [observer](const Entry &e) { return e.observer == observer; });
        item = item->second.empty() ? observers_.erase(item) : std::next(item);
    }
}

void NotificationCenter::post(const std::string &name, const UserInfo &userInfo)
{
    std::vector<const void *> due;
    {
        const std::lock_guard lock(mutex_);
        if (const auto found = observers_.find(name); found != observers_.end()) {
            for (const Entry &entry : found->second) {
                due.push_back(entry.observer);
            }
        }
    }
    for (const void *observer : due) {
        if (const auto receiver = receiverOf(observer, name)) {
            (*receiver)(name, userInfo);
        }
    }
}

std::shared_ptr<NotificationCenter::Receiver>
NotificationCenter::receiverOf(const void *observer, const std::string &name)
{
    const std::lock_guard lock(mutex_);
    if (const auto found = observers_.find(name); found != observers_.end()) {
        for (const Entry &entry : found->second) {
            if (entry.observer == observer) {
                return entry.receiver;
            }
        }
    }
    return nullptr;
}

} // namespace orv::platform
