#pragma once

#include "platform/values/Image.h"

#include <string>

namespace orv::platform {

/// Picture files of the kinds that the desktop can read. Thread: any.

/// Null when the file is missing, is no picture, or is larger than 16384 pixels a side.
[[nodiscard]] ImagePtr readPicture(const std::string &path);

/// Writes a PNG whole or not at all: beside the old file, then renamed. False when the folder
/// cannot be written to or the picture has no pixels.
bool writePng(const std::string &path, const Image &image);

} // namespace orv::platform
