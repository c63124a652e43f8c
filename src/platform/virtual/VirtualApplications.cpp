#include "platform/virtual/VirtualApplications.h"

#include <algorithm>
#include <utility>

namespace orv::platform {

VirtualApplications::VirtualApplications(const VirtualSettings &settings, const VirtualHooks &hooks)
    : hooks_(hooks), mainBundle_(settings.bundleIdentifier), running_(settings.running),
      accessibility_(settings.accessibility)
{
    setFront(settings.front);
}

std::int32_t VirtualApplications::frontProcess() const
{
    const std::lock_guard lock(mutex_);
    return front_;
}

void VirtualApplications::setFrontProcess(std::int32_t pid)
{
    {
        const std::lock_guard lock(mutex_);
        if (!known_.contains(pid)) {
            return;
        }
        front_ = pid;
    }
    if (hooks_.activate) {
        hooks_.activate(pid);
    }
}

std::string VirtualApplications::bundleIdentifier(std::int32_t pid) const
{
    const std::lock_guard lock(mutex_);
    const auto found = known_.find(pid);
    return found != known_.end() ? found->second : std::string();
}

bool VirtualApplications::isRunning(const std::string &bundleIdentifier) const
{
    const std::lock_guard lock(mutex_);
    const auto front = known_.find(front_);
    return (front != known_.end() && front->second == bundleIdentifier) ||
           std::find(running_.begin(), running_.end(), bundleIdentifier) != running_.end();
}

std::string VirtualApplications::mainBundleIdentifier() const
{
    return mainBundle_;
}

bool VirtualApplications::isAccessibilityEnabled() const
{
    const std::lock_guard lock(mutex_);
    return accessibility_;
}

void VirtualApplications::setPresentationOptions(std::uint32_t options)
{
    if (hooks_.presentation) {
        hooks_.presentation(options);
    }
}

void VirtualApplications::setFront(const VirtualApplication &application)
{
    const std::lock_guard lock(mutex_);
    front_ = application.pid;
    if (application.pid != 0) {
        known_[application.pid] = application.bundle;
    }
}

void VirtualApplications::setRunning(std::vector<std::string> bundleIdentifiers)
{
    const std::lock_guard lock(mutex_);
    running_ = std::move(bundleIdentifiers);
}

void VirtualApplications::setAccessibility(bool enabled)
{
    const std::lock_guard lock(mutex_);
    accessibility_ = enabled;
}

} // namespace orv::platform
