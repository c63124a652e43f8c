#pragma once

#include "platform/values/Geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orv::platform {

using DisplayID = std::uint32_t;

/// Posted on the local notification center, on the main thread, when the set of displays changed.
inline constexpr const char *NSApplicationDidChangeScreenParametersNotification =
    "NSApplicationDidChangeScreenParametersNotification";

/// One display as it stood when it was asked for.
///
/// Units    points in the global system: origin at the bottom left of the main display, y up.
struct Screen {
    DisplayID displayID = 0;
    Rect frame;
    /// Device pixels a point.
    double scale = 1.0;

    /// The same x, and the frame's height less y: a top-left origin becomes a bottom-left one.
    [[nodiscard]] Point flipPoint(Point p) const { return {p.x, frame.size.height - p.y}; }
    /// x: |frame x - |x||; y: y less the frame's y; both narrowed to 32-bit floats.
    [[nodiscard]] Point convertPointToScreenCoordinates(Point p) const
    {
        return {static_cast<float>(std::abs(std::abs(frame.origin.x) - std::abs(p.x))),
                static_cast<float>(p.y - frame.origin.y)};
    }
    /// As a log line and the debug text show it.
    [[nodiscard]] std::string description() const;

    friend bool operator==(const Screen &, const Screen &) = default;
};

/// The displays of this machine.
class Displays {
public:
    virtual ~Displays() = default;

    /// The main display first; empty when there is none. Main thread or under the monitor.
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;
    /// 0 when there is no display.
    [[nodiscard]] virtual DisplayID mainDisplayID() const = 0;
    /// Bounds in the system with its origin at the top left of the main display, y down; empty for
    /// an unknown display.
    [[nodiscard]] virtual Rect bounds(DisplayID display) const = 0;
    /// Where the pointer is, in global coordinates with y up.
    [[nodiscard]] virtual Point mouseLocation() const = 0;

    [[nodiscard]] std::optional<Screen> screen(DisplayID display) const;
    /// The first screen whose frame holds the point by the mouse rule.
    [[nodiscard]] std::optional<Screen> testHitScreen(Point p) const;
    [[nodiscard]] std::optional<Screen> currentScreenForMouseLocation() const
    {
        return testHitScreen(mouseLocation());
    }
};

} // namespace orv::platform
