#pragma once

#include "platform/ports/Displays.h"

#include <mutex>
#include <vector>

namespace orv::platform {

class MainThread;

/// A set of displays that a script changes.
///
/// Thread   any.
class VirtualDisplays final : public Displays {
public:
    /// `mainThread` outlives this.
    VirtualDisplays(MainThread &mainThread, std::vector<Screen> displays);

    [[nodiscard]] std::vector<Screen> screens() const override;
    [[nodiscard]] DisplayID mainDisplayID() const override;
    [[nodiscard]] Rect bounds(DisplayID display) const override;
    [[nodiscard]] Point mouseLocation() const override;

    /// The first one becomes the main display. Announces the change on the main thread before it
    /// returns.
    void setDisplays(std::vector<Screen> displays);
    /// Global coordinates, y up. No event comes of it.
    void setMouseLocation(Point location);

private:
    MainThread &mainThread_;
    mutable std::mutex mutex_;
    std::vector<Screen> displays_;
    Point mouseLocation_;
};

} // namespace orv::platform
