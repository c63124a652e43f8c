#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/values/Image.h"

#include <cstdint>
#include <functional>
#include <string>

namespace orv::platform {

/// Kinds of picture files, with the numbers that the window system gives them.
enum class PictureKind : std::int32_t { bmp = 1, jpeg = 3, png = 4 };

/// The picture files that the logic shows and writes. Paths are absolute UTF-8 texts.
///
/// Thread   any.
class Pictures {
public:
    virtual ~Pictures() = default;

    /// The file as it is now, with "NAME@2x.EXT" beside it as the finer one. A file that has not
    /// changed since the last call is not read again: the call then costs a look at its date.
    /// Null when it is missing or no picture.
    [[nodiscard]] virtual ImagePtr picture(const std::string &path) = 0;
    /// A new picture, transparent at first: `body` draws in points of one pixel each, origin bottom
    /// left. Null without pixels, and for more than 16384 a side.
    [[nodiscard]] virtual ImagePtr paint(int width, int height,
                                         const std::function<void(GraphicsContext &)> &body) = 0;
    /// Encodes the picture and writes it over the file in place. `quality` from 0.0 to 1.0 counts
    /// for JPEG alone. Only PNG has an alpha: elsewhere what is transparent comes out over white.
    /// False when the file can't be written; it may then be cut short.
    virtual bool save(const std::string &path, const Image &image, PictureKind kind,
                      float quality) = 0;
};

/// Where the library's own picture of this name lies, whether or not it is there. A name without an
/// extension means a PNG.
[[nodiscard]] std::string pathForImageResource(const std::string &name);

} // namespace orv::platform
