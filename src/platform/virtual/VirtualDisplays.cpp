#include "platform/virtual/VirtualDisplays.h"

#include "platform/foundation/NotificationCenter.h"
#include "platform/ports/MainThread.h"

#include <utility>

namespace orv::platform {

VirtualDisplays::VirtualDisplays(MainThread &mainThread, std::vector<Screen> displays)
    : mainThread_(mainThread), displays_(std::move(displays))
{
}

std::vector<Screen> VirtualDisplays::screens() const
{
    const std::lock_guard lock(mutex_);
    return displays_;
}

DisplayID VirtualDisplays::mainDisplayID() const
{
    const std::lock_guard lock(mutex_);
    return displays_.empty() ? 0 : displays_.front().displayID;
}

Rect VirtualDisplays::bounds(DisplayID display) const
{
    const std::lock_guard lock(mutex_);
    for (const Screen &candidate : displays_) {
        if (candidate.displayID == display) {
            const Rect &main = displays_.front().frame;
            const Rect &frame = candidate.frame;
            return Rect::make(frame.minX() - main.minX(), main.maxY() - frame.maxY(),
                              frame.size.width, frame.size.height);
        }
    }
    return {};
}

Point VirtualDisplays::mouseLocation() const
{
    const std::lock_guard lock(mutex_);
    return mouseLocation_;
}

void VirtualDisplays::setDisplays(std::vector<Screen> displays)
{
    {
        const std::lock_guard lock(mutex_);
        displays_ = std::move(displays);
    }
    mainThread_.postAndWait([] {
        NotificationCenter::local().post(NSApplicationDidChangeScreenParametersNotification);
    });
}

void VirtualDisplays::setMouseLocation(Point location)
{
    const std::lock_guard lock(mutex_);
    mouseLocation_ = location;
}

} // namespace orv::platform
