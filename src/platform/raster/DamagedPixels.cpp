#include "platform/raster/DamagedPixels.h"

#include <algorithm>
#include <cstdint>

namespace orv::platform {

namespace {

/// What each rectangle costs beside its pixels, in pixels: the drawing is walked once for each.
constexpr std::int64_t kCostOfARect = 4096;
/// More than these are one, whatever that wastes.
constexpr std::size_t kMostRects = 32;

std::int64_t pixelCount(const PixelRect &rect)
{
    return static_cast<std::int64_t>(rect.width) * rect.height;
}

PixelRect united(const PixelRect &a, const PixelRect &b)
{
    const int x = std::min(a.x, b.x);
    const int y = std::min(a.y, b.y);
    return {x, y, std::max(a.x + a.width, b.x + b.width) - x,
            std::max(a.y + a.height, b.y + b.height) - y};
}

bool isCheaperAsOne(const PixelRect &a, const PixelRect &b)
{
    return pixelCount(united(a, b)) <= pixelCount(a) + pixelCount(b) + kCostOfARect;
}

} // namespace

void DamagedPixels::add(const PixelRect &rect)
{
    if (rect.isEmpty()) {
        return;
    }
    PixelRect added = rect;
    // What was taken in may reach others that the rectangle alone did not.
    for (auto near = rects_.begin(); near != rects_.end();) {
        if (rects_.size() >= kMostRects || isCheaperAsOne(added, *near)) {
            added = united(added, *near);
            rects_.erase(near);
            near = rects_.begin();
        } else {
            ++near;
        }
    }
    rects_.push_back(added);
}

} // namespace orv::platform
