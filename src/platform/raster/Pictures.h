#pragma once

#include "platform/foundation/UserInfo.h"
#include "platform/ports/Pictures.h"
#include "platform/values/Image.h"

#include <string>

namespace orv::platform {

/// Picture files of the kinds that the desktop can read. Thread: any.

/// Null when the file is missing, is no picture, or is larger than 16384 pixels a side. Of an icon
/// container it is the largest PNG in it.
[[nodiscard]] ImagePtr readPicture(const std::string &path);

/// The bytes of a PNG file; empty when the picture has no pixels.
[[nodiscard]] Data pngOf(const Image &image);

/// Writes the picture over the file in place; `quality` is for JPEG, 0.0 to 1.0. JPEG and BMP have
/// no alpha: what is transparent comes out over white. False when it can't be encoded, which
/// leaves the file as it was, or can't be written: the file may then be cut short.
bool writePicture(const std::string &path, const Image &image, PictureKind kind, float quality);

/// Writes a PNG whole or not at all: beside the old file, then renamed. False when the folder
/// cannot be written to or the picture has no pixels.
bool writePng(const std::string &path, const Image &image);

} // namespace orv::platform
