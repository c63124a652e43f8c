#pragma once

#include <array>

namespace orv::apps {

/// How a box of the picture is coded.
struct PictureLevel {
    /// As JPEG counts it, to 100.
    int quality;
    /// Colour as fine as brightness: keeps coloured ink and small text clear.
    bool fineColour;
    /// How many pixels of the screen in a row make one of the frame.
    int shrunkBy;
};

/// From the best to the one with the fewest bytes; each needs about two thirds of the one before.
inline constexpr std::array<PictureLevel, 6> kPictureLevels{{
    {92, true, 1},
    {82, false, 1},
    {65, false, 1},
    {45, false, 1},
    {60, false, 2},
    {35, false, 2},
}};
inline constexpr int kBestLevel = 0;
inline constexpr int kLastLevel = static_cast<int>(kPictureLevels.size()) - 1;

} // namespace orv::apps
