#include "platform/raster/PixelRect.h"

#include <algorithm>
#include <cmath>

namespace orv::platform {

namespace {

constexpr double kRoundingSlack = 1e-6;

} // namespace

PixelRect PixelRect::intersection(const PixelRect &other) const
{
    const int x0 = std::max(x, other.x);
    const int y0 = std::max(y, other.y);
    const int x1 = std::min(x + width, other.x + other.width);
    const int y1 = std::min(y + height, other.y + other.height);
    return x1 > x0 && y1 > y0 ? PixelRect{x0, y0, x1 - x0, y1 - y0} : PixelRect{};
}

int PixelGrid::pixelWidth() const
{
    return std::max(1, static_cast<int>(std::ceil(size.width * scale - kRoundingSlack)));
}

int PixelGrid::pixelHeight() const
{
    return std::max(1, static_cast<int>(std::ceil(size.height * scale - kRoundingSlack)));
}

AffineTransform PixelGrid::toDevice() const
{
    return {scale, 0.0, 0.0, -scale, 0.0, size.height * scale};
}

PixelRect PixelGrid::pixelsTouching(const Rect &rect) const
{
    const Rect inside = rect.intersection({{0.0, 0.0}, size});
    if (inside.isEmpty()) {
        return {};
    }
    const Point topLeft = toDevice().apply({inside.minX(), inside.maxY()});
    const Point bottomRight = toDevice().apply({inside.maxX(), inside.minY()});
    const int x0 = static_cast<int>(std::floor(topLeft.x + kRoundingSlack));
    const int y0 = static_cast<int>(std::floor(topLeft.y + kRoundingSlack));
    const int x1 = static_cast<int>(std::ceil(bottomRight.x - kRoundingSlack));
    const int y1 = static_cast<int>(std::ceil(bottomRight.y - kRoundingSlack));
    return PixelRect{x0, y0, x1 - x0, y1 - y0}.intersection({0, 0, pixelWidth(), pixelHeight()});
}

Rect PixelGrid::points(const PixelRect &pixels) const
{
    const double bottom = pixels.y + pixels.height;
    return Rect::make(pixels.x / scale, size.height - bottom / scale, pixels.width / scale,
                      pixels.height / scale);
}

} // namespace orv::platform
