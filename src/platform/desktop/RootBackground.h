#pragma once

#include "platform/desktop/LayerPixels.h"
#include "platform/desktop/PixelReader.h"
#include "platform/desktop/XConnection.h"

#include <QRegion>

namespace orv::platform {

/// Paints what lies behind all windows, in a region inside the picture: the picture that a
/// wallpaper program has left, without one the root window's own background, which a compositor
/// replaces by grey. Its subwindows are redirected. False when the X server gives no pixels.
[[nodiscard]] bool paintRootBackground(const XConnection &x, PixelReader &reader, bool isBlended,
                                       const ScreenPicture &picture, const QRegion &where);

} // namespace orv::platform
