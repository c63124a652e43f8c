#include "platform/virtual/VirtualWindowServer.h"

#include "platform/ports/Displays.h"
#include "platform/ports/MainThread.h"

#include <algorithm>

namespace orv::platform {

VirtualWindowServer::VirtualWindowServer(MainThread &mainThread, Displays &displays)
    : mainThread_(mainThread), displays_(displays)
{
}

std::unique_ptr<WindowSurface> VirtualWindowServer::createSurface(WindowEvents &events)
{
    auto surface = std::make_unique<VirtualWindowSurface>(*this, events, ++lastNumber_);
    stack_.push_back(surface.get());
    return surface;
}

std::vector<int> VirtualWindowServer::orderedWindows() const
{
    std::vector<int> numbers;
    for (const VirtualWindowSurface *surface : surfaces()) {
        if (surface->isVisible()) {
            numbers.push_back(surface->windowNumber());
        }
    }
    return numbers;
}

std::vector<WindowInfo> VirtualWindowServer::windows() const
{
    std::vector<WindowInfo> found;
    for (const VirtualWindowSurface *surface : surfaces()) {
        if (surface->isVisible()) {
            found.push_back({surface->windowNumber(), surface->title(), surface->level()});
        }
    }
    return found;
}

std::vector<VirtualWindowSurface *> VirtualWindowServer::surfaces() const
{
    std::vector<VirtualWindowSurface *> ordered = stack_;
    const auto hidden = std::stable_partition(
        ordered.begin(), ordered.end(), [](const auto *surface) { return surface->isVisible(); });
    std::stable_sort(ordered.begin(), hidden,
                     [](const auto *a, const auto *b) { return a->level() > b->level(); });
    std::sort(hidden, ordered.end(),
              [](const auto *a, const auto *b) { return a->windowNumber() < b->windowNumber(); });
    return ordered;
}

VirtualWindowSurface *VirtualWindowServer::surface(int windowNumber) const
{
    const auto found = std::find_if(stack_.begin(), stack_.end(), [windowNumber](const auto *s) {
        return s->windowNumber() == windowNumber;
    });
    return found != stack_.end() ? *found : nullptr;
}

VirtualWindowSurface *VirtualWindowServer::windowAt(Point global) const
{
    for (VirtualWindowSurface *surface : surfaces()) {
        if (surface->isVisible() && !surface->ignoresMouseEvents() &&
            surface->frame().containsMouse(global)) {
            return surface;
        }
    }
    return nullptr;
}

void VirtualWindowServer::remove(const VirtualWindowSurface &surface)
{
    hidden(surface.windowNumber());
    std::erase(stack_, &surface);
}

void VirtualWindowServer::raise(const VirtualWindowSurface &surface)
{
    const auto found = std::find(stack_.begin(), stack_.end(), &surface);
    std::rotate(stack_.begin(), found, found + 1);
}

void VirtualWindowServer::hidden(int windowNumber)
{
    if (keyWindow_ == windowNumber) {
        keyWindow_ = 0;
    }
}

void VirtualWindowServer::scheduleDraw(int windowNumber)
{
    mainThread_.post([this, windowNumber] {
        if (VirtualWindowSurface *asked = surface(windowNumber)) {
            asked->displayIfNeeded();
        }
    });
}

double VirtualWindowServer::scaleOf(const Rect &frame) const
{
    double scale = 1.0;
    double largest = 0.0;
    for (const Screen &screen : displays_.screens()) {
        const Size common = screen.frame.intersection(frame).size;
        if (common.width * common.height > largest) {
            largest = common.width * common.height;
            scale = screen.scale;
        }
    }
    return scale;
}

} // namespace orv::platform
