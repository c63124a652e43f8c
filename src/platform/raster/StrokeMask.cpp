#include "platform/raster/StrokeMask.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <experimental/simd>
#include <utility>

namespace orv::platform {

namespace {

constexpr float kHalfPixel = 0.5F;
constexpr float kWholeByte = 255.0F;
constexpr int kPixelsOfAStep = 8;

/// A straight piece, with its first point as the origin.
///
/// Where it lies among the pixels is kept as a whole pixel and a rest, so that what a pixel gets
/// is the same whichever pixels are asked for with it.
struct Piece {
    int column;
    int row;
    float restX;
    float restY;
    float wayX;
    float wayY;
    float inverse;
    float radius;

    Piece(Point from, Point to, double radiusOfAll)
        : column(static_cast<int>(std::floor(from.x))), row(static_cast<int>(std::floor(from.y))),
          restX(static_cast<float>(column - from.x) + kHalfPixel),
          restY(static_cast<float>(row - from.y) + kHalfPixel),
          wayX(static_cast<float>(to.x - from.x)), wayY(static_cast<float>(to.y - from.y)),
          radius(static_cast<float>(radiusOfAll))
    {
        const float square = wayX * wayX + wayY * wayY;
        inverse = square > 0.0F ? 1.0F / square : 0.0F;
    }
};

using Floats = std::experimental::fixed_size_simd<float, kPixelsOfAStep>;
using Ints = std::experimental::fixed_size_simd<int, kPixelsOfAStep>;

/// Covers one step of a row from `x` on.
void coverStep(std::uint8_t *pixels, int x, int y, const Piece &piece)
{
    const float qy = static_cast<float>(y - piece.row) + piece.restY;
    const Floats steps([](int i) { return static_cast<float>(i); });
    const Floats qx = steps + static_cast<float>(x - piece.column) + piece.restX;
    const Floats along =
        clamp((qx * piece.wayX + qy * piece.wayY) * piece.inverse, Floats(0.0F), Floats(1.0F));
    const Floats ex = qx - along * piece.wayX;
    const Floats ey = qy - along * piece.wayY;
    const Floats distance = sqrt(ex * ex + ey * ey);
    // What a band that reaches as far to both sides covers of a pixel in this distance.
    const Floats part = min(distance + kHalfPixel, Floats(piece.radius)) -
                        max(distance - kHalfPixel, Floats(-piece.radius));
    const Ints covered = std::experimental::static_simd_cast<Ints>(
        max(part, Floats(0.0F)) * kWholeByte + kHalfPixel);
    const Ints before(pixels, std::experimental::element_aligned);
    max(covered, before).copy_to(pixels, std::experimental::element_aligned);
}

bool isAllCovered(const std::uint8_t *pixels)
{
    std::uint64_t all = 0;
    static_assert(sizeof all == kPixelsOfAStep);
    std::memcpy(&all, pixels, sizeof all);
    return all == ~std::uint64_t{0};
}

int roundedUp(int count)
{
    return (count + kPixelsOfAStep - 1) / kPixelsOfAStep * kPixelsOfAStep;
}

/// The whole number next to `edge`, within the limits.
int limited(double edge, int low, int high)
{
    return edge <= low ? low : edge >= high ? high : static_cast<int>(edge);
}

/// What a row can have of a piece that reaches `reach` to both sides of its line.
class RowLimits {
public:
    RowLimits(Point from, Point to, double reach, const PixelRect &area)
        : from_(from), end_(area.x + area.width), low_(std::min(from.x, to.x) - reach),
          high_(std::max(from.x, to.x) + reach), first_(area.x)
    {
        const Point way = to - from;
        const double rise = std::abs(way.y);
        if (rise > 0.0) {
            slope_ = way.x / way.y;
            half_ = reach * std::sqrt(way.x * way.x + way.y * way.y) / rise;
        }
    }

    /// The columns from the first on up to the one behind the last.
    [[nodiscard]] std::pair<int, int> at(int y) const
    {
        const double middle = from_.x + (y + 0.5 - from_.y) * slope_;
        const double low = std::max(low_, middle - half_);
        const double high = std::min(high_, middle + half_);
        return {limited(low - 0.5, first_, end_), limited(high + 1.0, first_, end_)};
    }

private:
    Point from_;
    int end_;
    double low_;
    double high_;
    int first_;
    double slope_ = 0.0;
    double half_ = std::numeric_limits<double>::infinity();
};

} // namespace

StrokeMask::StrokeMask(const PixelRect &area)
    : area_(area), rowLength_(static_cast<std::size_t>(roundedUp(area.width))),
      coverage_(rowLength_ * static_cast<std::size_t>(area.height)),
      touched_(static_cast<std::size_t>(area.height))
{
}

std::uint8_t *StrokeMask::pixel(int x, int y)
{
    return coverage_.data() + static_cast<std::size_t>(y - area_.y) * rowLength_ +
           static_cast<std::size_t>(x - area_.x);
}

void StrokeMask::uncover(int y)
{
    Touched &touched = touched_[static_cast<std::size_t>(y - area_.y)];
    const int length = roundedUp(touched.end - touched.first);
    std::fill_n(pixel(touched.first, y), length, std::uint8_t{0});
    touched = {};
}

void StrokeMask::touch(int y, int first, int end)
{
    Touched &touched = touched_[static_cast<std::size_t>(y - area_.y)];
    touched.first = std::min(touched.first, first);
    touched.end = std::max(touched.end, end);
    touchedTop_ = std::min(touchedTop_, y);
    touchedEnd_ = std::max(touchedEnd_, y + 1);
}

void StrokeMask::add(Point from, Point to, double radius)
{
    const double reach = radius + kHalfPixel;
    const Piece piece(from, to, radius);
    const RowLimits limits(from, to, reach, area_);
    const int bottom = area_.y + area_.height;
    const int end = limited(std::max(from.y, to.y) + reach + 1.0, area_.y, bottom);
    for (int y = limited(std::min(from.y, to.y) - reach - 1.0, area_.y, bottom); y < end; ++y) {
        const auto [first, last] = limits.at(y);
        if (first >= last) {
            continue;
        }
        const int begin = first - (first - area_.x) % kPixelsOfAStep;
        std::uint8_t *pixels = pixel(begin, y);
        for (int x = begin; x < last; x += kPixelsOfAStep, pixels += kPixelsOfAStep) {
            if (!isAllCovered(pixels)) {
                coverStep(pixels, x, y, piece);
            }
        }
        touch(y, begin, last);
    }
}

} // namespace orv::platform
