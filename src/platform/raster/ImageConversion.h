#pragma once

#include "platform/values/Image.h"

#include <QImage>

namespace orv::platform {

/// The same pixels, not copied: `image` outlives the result, which is not to be written to.
[[nodiscard]] QImage viewOf(const Image &image);
/// A copy of its own.
[[nodiscard]] QImage qImageOf(const Image &image);
/// A copy of its own, in premultiplied pixels; a null picture becomes one without pixels.
[[nodiscard]] Image imageOf(const QImage &picture);

} // namespace orv::platform
