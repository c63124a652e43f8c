#include "platform/values/Path.h"

#include <array>
#include <cmath>

namespace orv::platform {

namespace {

// The length of the control arms with which four cubic curves come closest to a circle.
constexpr double kCircleArm = 0.5522847498307936;

} // namespace

void Path::Piece::include(Point p)
{
    low = {std::min(low.x, p.x), std::min(low.y, p.y)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    canBeSkipped = canBeSkipped && std::isfinite(p.x) && std::isfinite(p.y);
}

void Path::addToPieces(Store &store, PathElementType type, const Point *points)
{
    if (store.types.size() % elementsOfAPiece == 0) {
        const bool hasStart = !store.points.empty();
        const Point start = hasStart ? store.points.back() : points[0];
        store.pieces.push_back({store.points.size(), start, start, hasStart});
        store.pieces.back().include(start);
    }
    Piece &piece = store.pieces.back();
    const int count = platform::pointCount(type);
    for (int i = 0; i < count; ++i) {
        piece.include(points[i]);
    }
    const bool goesOn =
        type != PathElementType::moveToPoint && type != PathElementType::closeSubpath;
    piece.canBeSkipped = piece.canBeSkipped && goesOn;
}

void Path::append(PathElementType type, const Point *points)
{
    // Another copy may have grown past this one: then the shared elements are no longer ours to
    // grow, and this path continues on a store of its own.
    if (!store_) {
        store_ = std::make_shared<Store>();
    } else if (store_->types.size() != elementCount_) {
        auto own = std::make_shared<Store>();
        own->types.assign(store_->types.begin(),
                          store_->types.begin() + static_cast<std::ptrdiff_t>(elementCount_));
        own->points.assign(store_->points.begin(),
                           store_->points.begin() + static_cast<std::ptrdiff_t>(pointCount_));
        const auto pieces = (elementCount_ + elementsOfAPiece - 1) / elementsOfAPiece;
        own->pieces.assign(store_->pieces.begin(),
                           store_->pieces.begin() + static_cast<std::ptrdiff_t>(pieces));
        store_ = std::move(own);
    }
    addToPieces(*store_, type, points);
    const auto count = static_cast<std::size_t>(platform::pointCount(type));
    store_->types.push_back(type);
    store_->points.insert(store_->points.end(), points, points + count);
    ++elementCount_;
    pointCount_ += count;
}

void Path::moveTo(Point p)
{
    append(PathElementType::moveToPoint, &p);
    subpathStart_ = p;
}

void Path::lineTo(Point p)
{
    if (!isEmpty()) {
        append(PathElementType::addLineToPoint, &p);
    }
}

void Path::quadCurveTo(Point control, Point p)
{
    if (!isEmpty()) {
        const std::array<Point, 2> points{control, p};
        append(PathElementType::addQuadCurveToPoint, points.data());
    }
}

void Path::curveTo(Point control1, Point control2, Point p)
{
    if (!isEmpty()) {
        const std::array<Point, 3> points{control1, control2, p};
        append(PathElementType::addCurveToPoint, points.data());
    }
}

void Path::close()
{
    if (!isEmpty()) {
        append(PathElementType::closeSubpath, nullptr);
    }
}

void Path::addRect(const Rect &rect)
{
    moveTo(rect.origin);
    lineTo({rect.maxX(), rect.minY()});
    lineTo({rect.maxX(), rect.maxY()});
    lineTo({rect.minX(), rect.maxY()});
    close();
}

void Path::addEllipse(const Rect &rect)
{
    addRoundedRect(rect, rect.size.width / 2.0, rect.size.height / 2.0);
}

void Path::addRoundedRect(const Rect &rect, double radiusX, double radiusY)
{
    const double rx = std::clamp(radiusX, 0.0, rect.size.width / 2.0);
    const double ry = std::clamp(radiusY, 0.0, rect.size.height / 2.0);
    const double armX = rx * (1.0 - kCircleArm);
    const double armY = ry * (1.0 - kCircleArm);
    const double x0 = rect.minX();
    const double x1 = rect.maxX();
    const double y0 = rect.minY();
    const double y1 = rect.maxY();
    moveTo({x1, y0 + ry});
    lineTo({x1, y1 - ry});
    curveTo({x1, y1 - armY}, {x1 - armX, y1}, {x1 - rx, y1});
    lineTo({x0 + rx, y1});
    curveTo({x0 + armX, y1}, {x0, y1 - armY}, {x0, y1 - ry});
    lineTo({x0, y0 + ry});
    curveTo({x0, y0 + armY}, {x0 + armX, y0}, {x0 + rx, y0});
    lineTo({x1 - rx, y0});
    curveTo({x1 - armX, y0}, {x1, y0 + armY}, {x1, y0 + ry});
    close();
}

Point Path::currentPoint() const
{
    if (isEmpty()) {
        return {};
    }
    if (store_->types[elementCount_ - 1] == PathElementType::closeSubpath) {
        return subpathStart_;
    }
    return store_->points[pointCount_ - 1];
}

Rect Path::controlBox() const
{
    if (pointCount_ == 0) {
        return {};
    }
    Point low = store_->points.front();
    Point high = low;
    for (std::size_t i = 1; i < pointCount_; ++i) {
        const Point p = store_->points[i];
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    return {low, {high.x - low.x, high.y - low.y}};
}

bool Path::extends(const Path &other) const
{
    return other.isEmpty() || (store_ == other.store_ && elementCount_ >= other.elementCount_);
}

bool operator==(const Path &a, const Path &b)
{
    if (a.elementCount_ != b.elementCount_ || a.pointCount_ != b.pointCount_) {
        return false;
    }
    if (a.store_ == b.store_) {
        return true;
    }
    return std::equal(a.store_->types.begin(),
                      a.store_->types.begin() + static_cast<std::ptrdiff_t>(a.elementCount_),
                      b.store_->types.begin()) &&
           std::equal(a.store_->points.begin(),
                      a.store_->points.begin() + static_cast<std::ptrdiff_t>(a.pointCount_),
                      b.store_->points.begin());
}

} // namespace orv::platform
