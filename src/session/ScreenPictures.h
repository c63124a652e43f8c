#pragma once

#include "platform/ports/Displays.h"
#include "platform/values/Image.h"

#include <cstddef>
#include <optional>
#include <string>

namespace orv {

/// Where a display lies for a capture: points from the top left of the main display, y down. The
/// main display's own rectangle is the same either way.
[[nodiscard]] platform::Rect SnapshotWithScrnRect(const std::optional<platform::Screen> &screen);

/// The number of one of the annotation windows, the highest first: 0 is a window at which the
/// annotated picture is complete, 1 one below which the screen is clean. The first one for an index
/// past the end. Throws `platform::Exception` when none is on the screen.
[[nodiscard]] int getWindowID(std::size_t index);

/// Takes what lies below the window, or it too, and writes it in the kind of the path's extension.
/// Null when it can't be taken or written.
[[nodiscard]] platform::ImagePtr saveImage(const std::string &path,
                                           const std::optional<platform::Screen> &screen,
                                           int windowID, bool includingWindow);

} // namespace orv
