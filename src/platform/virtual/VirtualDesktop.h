#pragma once

#include "platform/ports/Displays.h"
#include "platform/values/Color.h"
#include "platform/values/Image.h"

#include <functional>
#include <string>

namespace orv::platform {

class VirtualWindowServer;
class VirtualWindowSurface;

/// What somebody in front of a virtual display would see.
///
/// Thread   main thread only.
class VirtualDesktop {
public:
    /// Both outlive this. `desktop` as for `setDesktop`.
    VirtualDesktop(const Displays &displays, const VirtualWindowServer &windows,
                   const std::string &desktop);

    /// "#RRGGBB" or the path of a picture, which is stretched over each display. Throws
    /// `Exception` for any other text and for a picture that cannot be read; the old desktop
    /// stays then.
    void setDesktop(const std::string &desktop);

    /// The desktop, then all shown windows by level and order with their alpha, in the display's
    /// device pixels; null for an unknown display. Shows what was drawn so far.
    [[nodiscard]] ImagePtr composePicture(DisplayID display) const;
    /// The same of any rectangle, in global points with y up, and of the windows that `isShown`
    /// picks, in the pixels of `scale` a point; black where no display is.
    using WindowFilter = std::function<bool(const VirtualWindowSurface &)>;
    [[nodiscard]] ImagePtr compose(const Rect &area, double scale,
                                   const WindowFilter &isShown) const;

private:
    const Displays &displays_;
    const VirtualWindowServer &windows_;
    Color color_;
    ImagePtr picture_;
};

} // namespace orv::platform
