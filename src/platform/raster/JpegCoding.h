#pragma once

#include "platform/foundation/UserInfo.h"
#include "platform/values/Image.h"

namespace orv::platform {

/// The bytes of a JPEG file with its colours at half the resolution (4:2:0); `quality` from 0 to
/// 100. What is transparent comes out over white. Empty when it can't be encoded: a picture
/// without pixels, or of more than 65500 a side. Thread: any.
[[nodiscard]] Data jpegOf(const Image &image, int quality);

} // namespace orv::platform
