#pragma once

#include "platform/values/Geometry.h"
#include "platform/values/Image.h"

namespace orv::platform {

/// Pictures of what the displays show.
///
/// Thread   main thread only.
class ScreenCapture {
public:
    virtual ~ScreenCapture() = default;

    /// What lies below the shown window of this process with the number, of all applications, and
    /// with `includingWindow` that window too; what lies above it is left out, be it on the same
    /// display or not. What was asked to be drawn before is in the picture.
    ///
    /// `rect` in global points from the top left of the main display, y down. The picture has the
    /// pixels of the display, what no display shows is black. Null for an empty rectangle, an
    /// unknown window, and when the window system gives no picture.
    [[nodiscard]] virtual ImagePtr capture(const Rect &rect, int windowNumber,
                                           bool includingWindow) = 0;
};

} // namespace orv::platform
