#include "platform/ports/Displays.h"

#include <fmt/format.h>

namespace orv::platform {

std::string Screen::description() const
{
    return fmt::format("<Screen {} {{{{{}, {}}}, {{{}, {}}}}}>", displayID, frame.origin.x,
                       frame.origin.y, frame.size.width, frame.size.height);
}

std::optional<Screen> Displays::screen(DisplayID display) const
{
    for (const Screen &candidate : screens()) {
        if (candidate.displayID == display) {
            return candidate;
        }
    }
    return std::nullopt;
}

std::optional<Screen> Displays::testHitScreen(Point p) const
{
    for (const Screen &candidate : screens()) {
        if (candidate.frame.containsMouse(p)) {
            return candidate;
        }
    }
    return std::nullopt;
}

} // namespace orv::platform
