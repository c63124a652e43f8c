#pragma once

#include <algorithm>
#include <utility>

namespace orv::apps {

/// An area of the X screen in pixels from its top left corner.
struct ScreenArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const ScreenArea &) const = default;
};

/// What of an area lies on a screen of that size; nothing has no width and no height.
inline ScreenArea onScreen(const ScreenArea &area, int screenWidth, int screenHeight)
{
    const auto clipped = [](int start, int length, int end) {
        const long long from = std::clamp<long long>(start, 0, end);
        const long long to = std::clamp<long long>(0LL + start + length, from, end);
        return std::pair(static_cast<int>(from), static_cast<int>(to - from));
    };
    const auto [x, width] = clipped(area.x, area.width, screenWidth);
    const auto [y, height] = clipped(area.y, area.height, screenHeight);
    return width > 0 && height > 0 ? ScreenArea{x, y, width, height} : ScreenArea{};
}

} // namespace orv::apps
