#pragma once

#include "platform/values/Geometry.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace orv::platform {

/// The kinds of path elements, with the numbers that archives carry.
enum class PathElementType : std::uint8_t {
    moveToPoint = 0,
    addLineToPoint = 1,
    addQuadCurveToPoint = 2,
    addCurveToPoint = 3,
    closeSubpath = 4,
};

/// How many points an element of this kind has: 1, 1, 2, 3 and 0.
[[nodiscard]] constexpr int pointCount(PathElementType type)
{
    switch (type) {
    case PathElementType::moveToPoint:
    case PathElementType::addLineToPoint:
        return 1;
    case PathElementType::addQuadCurveToPoint:
        return 2;
    case PathElementType::addCurveToPoint:
        return 3;
    case PathElementType::closeSubpath:
        break;
    }
    return 0;
}

/// A growing outline of moves, lines, curves and closes: what strokes are made of.
///
/// Copying is cheap whatever the length: copies share the elements, and a path that grows leaves
/// its older copies as they were. So whoever draws may keep a copy and later ask whether another
/// path is that copy with more at its end (`extends`), which is what a stroke in progress does at
/// each drag.
///
/// Thread   a path and its copies belong to one thread, unless none of them grows any more.
class Path {
public:
    struct Element {
        PathElementType type;
        const Point *points; ///< as many as `pointCount` tells; null for a close
    };

    void moveTo(Point p);
    /// Does nothing on a path without a current point.
    void lineTo(Point p);
    void quadCurveTo(Point control, Point p);
    void curveTo(Point control1, Point control2, Point p);
    void close();
    void addRect(const Rect &rect);
    void addEllipse(const Rect &rect);
    void addRoundedRect(const Rect &rect, double radiusX, double radiusY);

    [[nodiscard]] bool isEmpty() const { return elementCount_ == 0; }
    [[nodiscard]] std::size_t elementCount() const { return elementCount_; }
    [[nodiscard]] std::size_t pointTotal() const { return pointCount_; }
    /// The end of the last element, after a close the start of its subpath; (0, 0) when empty.
    [[nodiscard]] Point currentPoint() const;
    /// The box round all points, control points included; empty for an empty path.
    [[nodiscard]] Rect controlBox() const;

    /// Calls `visit(Element)` for each element in order.
    template <class Visitor> void forEach(Visitor &&visit) const { forEachFrom(0, 0, visit); }
    /// The same from an element on, whose first point has the index `firstPoint`.
    template <class Visitor>
    void forEachFrom(std::size_t firstElement, std::size_t firstPoint, Visitor &&visit) const
    {
        if (store_) {
            visitElements(firstElement, elementCount_, firstPoint, visit);
        }
    }

    /// Calls `visit(Element)` for each element in order, but may pass over some that stay out of
    /// `area` with all their points: for those it calls `skipped(Point)` with where they end. What
    /// is passed over are lines and curves, never moves or closes.
    template <class Visitor, class Skipped>
    void forEachNear(const Rect &area, Visitor &&visit, Skipped &&skipped) const
    {
        for (std::size_t first = 0; first < elementCount_; first += elementsOfAPiece) {
            const Piece &piece = store_->pieces[first / elementsOfAPiece];
            const std::size_t end = std::min(elementCount_, first + elementsOfAPiece);
            if (piece.canBeSkipped && !piece.meets(area)) {
                const std::size_t next = end / elementsOfAPiece;
                const bool isLast = end == elementCount_;
                skipped(
                    store_->points[(isLast ? pointCount_ : store_->pieces[next].firstPoint) - 1]);
            } else {
                visitElements(first, end, piece.firstPoint, visit);
            }
        }
    }

    /// True when this path shares the other's elements and has at least as many: it is the other
    /// path itself or has grown out of it.
    [[nodiscard]] bool extends(const Path &other) const;

    friend bool operator==(const Path &a, const Path &b);

private:
    /// Many enough to cost little memory, few enough for a box to lie close round them.
    static constexpr std::size_t elementsOfAPiece = 64;

    /// So many elements on end, with a box round all that they reach.
    struct Piece {
        std::size_t firstPoint = 0;
        Point low;
        Point high;
        /// Lines and curves alone, and from a point that is a number to others.
        bool canBeSkipped = false;

        [[nodiscard]] bool meets(const Rect &area) const
        {
            return low.x <= area.maxX() && high.x >= area.minX() && low.y <= area.maxY() &&
                   high.y >= area.minY();
        }
        void include(Point p);
    };
    struct Store {
        std::vector<PathElementType> types;
        std::vector<Point> points;
        std::vector<Piece> pieces;
    };

    template <class Visitor>
    void visitElements(std::size_t first, std::size_t end, std::size_t firstPoint,
                       Visitor &visit) const
    {
        const Point *next = store_->points.data() + firstPoint;
        for (std::size_t i = first; i < end; ++i) {
            const PathElementType type = store_->types[i];
            const int count = pointCount(type);
            visit(Element{type, count == 0 ? nullptr : next});
            next += count;
        }
    }
    static void addToPieces(Store &store, PathElementType type, const Point *points);
    void append(PathElementType type, const Point *points);

    std::shared_ptr<Store> store_;
    std::size_t elementCount_ = 0;
    std::size_t pointCount_ = 0;
    Point subpathStart_;
};

} // namespace orv::platform
