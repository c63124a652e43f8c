#pragma once

#include "platform/desktop/XConnection.h"
#include "platform/values/Image.h"

#include <QRect>

#include <optional>

namespace orv::platform {

/// What the display shows in an area of the X screen (device pixels, from its top left corner),
/// overlays and other windows together, opaque. Nothing when it lies outside or the X server's
/// pixels are of another kind than 32-bit RGB.
[[nodiscard]] std::optional<Image> readScreen(const XConnection &x, const QRect &area);

} // namespace orv::platform
