#include "platform/virtual/VirtualScreenCapture.h"

#include "platform/virtual/VirtualDesktop.h"
#include "platform/virtual/VirtualWindowServer.h"

#include <algorithm>
#include <set>

namespace orv::platform {

VirtualScreenCapture::VirtualScreenCapture(Displays &displays, const VirtualWindowServer &windows,
                                           const VirtualDesktop &desktop)
    : displays_(displays), windows_(windows), desktop_(desktop)
{
}

ImagePtr VirtualScreenCapture::capture(const Rect &rect, int windowNumber, bool includingWindow)
{
    const std::vector<int> ordered = windows_.orderedWindows();
    auto first = std::find(ordered.begin(), ordered.end(), windowNumber);
    const auto main = displays_.screen(displays_.mainDisplayID());
    if (fails_ || rect.isEmpty() || first == ordered.end() || !main) {
        return nullptr;
    }
    if (!includingWindow) {
        ++first;
    }
    const std::set<int> below(first, ordered.end());
    for (const int number : below) {
        windows_.surface(number)->displayIfNeeded();
    }
    const Point origin{rect.origin.x, main->frame.size.height - rect.maxY()};
    const auto screen = displays_.testHitScreen(Rect{origin, rect.size}.center());
    return desktop_.compose({origin, rect.size}, screen ? screen->scale : 1.0,
                            [&below](const VirtualWindowSurface &surface) {
                                return below.contains(surface.windowNumber());
                            });
}

} // namespace orv::platform
