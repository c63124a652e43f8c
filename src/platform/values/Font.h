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

/// Height of a flat capital above the baseline, in points, as Helvetica itself tells it: its table
/// of heights, of 2048 units a size, says 1469.
[[nodiscard]] inline double capHeight(const Font &font)
{
    return font.size * 1469.0 / 2048.0;
}

/// How far Helvetica reaches below the baseline, in points, negative: -471 of its 2048 units.
[[nodiscard]] inline double descender(const Font &font)
{
    return font.size * -471.0 / 2048.0;
}

/// Horizontal placement of lines, with the numbers of paragraph styles.
enum class TextAlignment { left = 0, right = 1, center = 2, justified = 3, natural = 4 };

} // namespace orv::platform
