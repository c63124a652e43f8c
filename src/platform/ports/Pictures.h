#pragma once

#include "platform/values/Image.h"

#include <string>

namespace orv::platform {

/// The picture files that the logic shows. Paths are absolute UTF-8 texts.
///
/// Thread   any.
class Pictures {
public:
    virtual ~Pictures() = default;

    /// The file as it is now, with "NAME@2x.EXT" beside it as the finer one. A file that has not
    /// changed since the last call is not read again: the call then costs a look at its date.
    /// Null when it is missing or no picture.
    [[nodiscard]] virtual ImagePtr picture(const std::string &path) = 0;
};

/// Where the library's own picture of this name lies, whether or not it is there. A name without an
/// extension means a PNG.
[[nodiscard]] std::string pathForImageResource(const std::string &name);

} // namespace orv::platform
