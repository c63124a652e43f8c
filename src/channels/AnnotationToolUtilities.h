#pragma once

#include <cstdint>
#include <string>

namespace orv {

/// Kinds of picture files, by number.
class AnnotationToolUtilities {
public:
    /// By the extension in lower case: "jpg" and "jpge" give 0, "png" 1, "bmp" 2, all others 0.
    [[nodiscard]] static std::int32_t getImageSaveType(const std::string &path);
};

} // namespace orv
