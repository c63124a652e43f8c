#pragma once

#include <string>

namespace orv::platform {

/// A typeface by family name and a size in points.
struct Font {
    std::string family = "Helvetica";
    double size = 12.0;
    bool bold = false;

    friend bool operator==(const Font &, const Font &) = default;
};

/// Horizontal placement of lines, with the numbers of paragraph styles.
enum class TextAlignment { left = 0, right = 1, center = 2, justified = 3, natural = 4 };

} // namespace orv::platform
