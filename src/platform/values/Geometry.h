#pragma once

#include <algorithm>
#include <cmath>

namespace orv::platform {

/// A position in double points. Which way y grows is said where a point is used.
struct Point {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const Point &, const Point &) = default;
    friend Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
    friend Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
};

/// A width and a height in double points.
struct Size {
    double width = 0.0;
    double height = 0.0;

    friend bool operator==(const Size &, const Size &) = default;
};

/// An upright rectangle; the origin is the corner with the smallest x and y.
struct Rect {
    Point origin;
    Size size;

    [[nodiscard]] static Rect make(double x, double y, double width, double height)
    {
        return {{x, y}, {width, height}};
    }

    [[nodiscard]] double minX() const { return origin.x; }
    [[nodiscard]] double minY() const { return origin.y; }
    [[nodiscard]] double maxX() const { return origin.x + size.width; }
    [[nodiscard]] double maxY() const { return origin.y + size.height; }
    [[nodiscard]] Point center() const
    {
        return {origin.x + size.width / 2.0, origin.y + size.height / 2.0};
    }
    [[nodiscard]] bool isEmpty() const { return !(size.width > 0.0 && size.height > 0.0); }

    /// Half-open on the far edges: the smallest x and y are inside, the largest are not.
    [[nodiscard]] bool contains(Point p) const
    {
        return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
    }

    /// The rule for a mouse in a system whose y grows upward: a pointer is a pixel that hangs below
    /// its point, so the top edge is inside and the bottom edge is not.
    [[nodiscard]] bool containsMouse(Point p) const
    {
        return p.x >= minX() && p.x < maxX() && p.y > minY() && p.y <= maxY();
    }

    [[nodiscard]] Rect insetBy(double dx, double dy) const
    {
        return make(origin.x + dx, origin.y + dy, size.width - 2.0 * dx, size.height - 2.0 * dy);
    }
    [[nodiscard]] Rect offsetBy(double dx, double dy) const
    {
        return make(origin.x + dx, origin.y + dy, size.width, size.height);
    }
    /// Empty (all zero) when the two do not overlap.
    [[nodiscard]] Rect intersection(const Rect &other) const
    {
        const double x0 = std::max(minX(), other.minX());
        const double y0 = std::max(minY(), other.minY());
        const double x1 = std::min(maxX(), other.maxX());
        const double y1 = std::min(maxY(), other.maxY());
        return x1 > x0 && y1 > y0 ? make(x0, y0, x1 - x0, y1 - y0) : Rect{};
    }
    /// The smallest rectangle round both; an empty one does not count.
    [[nodiscard]] Rect united(const Rect &other) const
    {
        if (isEmpty()) {
            return other;
        }
        if (other.isEmpty()) {
            return *this;
        }
        const double x0 = std::min(minX(), other.minX());
        const double y0 = std::min(minY(), other.minY());
        return make(x0, y0, std::max(maxX(), other.maxX()) - x0,
                    std::max(maxY(), other.maxY()) - y0);
    }

    friend bool operator==(const Rect &, const Rect &) = default;
};

/// x' = a x + c y + tx, y' = b x + d y + ty.
struct AffineTransform {
    double a = 1.0, b = 0.0, c = 0.0, d = 1.0, tx = 0.0, ty = 0.0;

    [[nodiscard]] static AffineTransform translation(double x, double y)
    {
        return {1.0, 0.0, 0.0, 1.0, x, y};
    }
    [[nodiscard]] static AffineTransform scale(double x, double y)
    {
        return {x, 0.0, 0.0, y, 0.0, 0.0};
    }
    /// Counter-clockwise where y grows upward.
    [[nodiscard]] static AffineTransform rotation(double radians)
    {
        const double c = std::cos(radians);
        const double s = std::sin(radians);
        return {c, s, -s, c, 0.0, 0.0};
    }

    [[nodiscard]] Point apply(Point p) const
    {
        return {a * p.x + c * p.y + tx, b * p.x + d * p.y + ty};
    }
    /// The transform that applies this one first and `next` after it.
    [[nodiscard]] AffineTransform then(const AffineTransform &next) const
    {
        return {a * next.a + b * next.c,
                a * next.b + b * next.d,
                c * next.a + d * next.c,
                c * next.b + d * next.d,
                tx * next.a + ty * next.c + next.tx,
                tx * next.b + ty * next.d + next.ty};
    }
    /// The way back; the identity when there is none.
    [[nodiscard]] AffineTransform inverted() const
    {
        const double det = a * d - b * c;
        if (det == 0.0) {
            return {};
        }
        return {
            d / det, -b / det, -c / det, a / det, (c * ty - d * tx) / det, (b * tx - a * ty) / det};
    }

    friend bool operator==(const AffineTransform &, const AffineTransform &) = default;
};

} // namespace orv::platform
