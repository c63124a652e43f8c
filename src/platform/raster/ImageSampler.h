#pragma once

#include "platform/raster/PixelRect.h"
#include "platform/values/Geometry.h"
#include "platform/values/Image.h"

namespace orv::platform {

/// The pixels of `area` as a picture shows there that `toDevice` puts onto the device from its own
/// pixels (origin top left, y down). Outside the picture its nearest edge goes on.
///
/// A pixel depends on its own place alone and not on `area`: pieces fit together without a seam.
/// Smoothed between the picture's pixels where it grows, averaged where it shrinks.
[[nodiscard]] Image sampled(const Image &picture, const AffineTransform &toDevice,
                            const PixelRect &area);

} // namespace orv::platform
