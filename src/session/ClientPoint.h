#pragma once

#include "platform/values/Geometry.h"

namespace orv {

/// How a point of the client's picture lies on the display that the picture shows.
///
/// The client shows the display fitted into its own screen. Bars at the left and right of it are
/// taken off; bars above and below are not, which clients rely on.
struct ClientPicture {
    /// Pixel size of the display.
    platform::Size dimension;
    /// Size of the client's screen.
    platform::Size scaled;

    /// The size of the display's picture within the client's screen.
    [[nodiscard]] platform::Size fittedSize() const;
    /// The bars: half of the spare width, rounded half away from zero; the height is always 0.
    [[nodiscard]] static platform::Size GetBlankBorderSize(platform::Size fitted,
                                                           platform::Size org);
    /// From the client's coordinates (origin top left) to those of `displayBounds` (origin at the
    /// top left of the main display). A picture and a display of no size give the point as it came.
    [[nodiscard]] platform::Point scaleMouseLocation(platform::Point location,
                                                     const platform::Rect &displayBounds) const;
};

} // namespace orv
