#include "platform/raster/DrawingExtent.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <concepts>
#include <cstddef>

namespace orv::platform {

namespace {

using drawing::Mark;

/// Device pixels beyond an outline that its smooth edge, or a clip at the nearest pixel, may touch.
constexpr double kSmoothing = 2.0;
/// No surface reaches so far.
constexpr double kFar = 1 << 20;
/// Short enough for a box to lie close round a bent line, long enough to keep boxes few.
constexpr int kSegmentsOfABox = 16;
/// The same of one straight line, in device pixels.
constexpr double kLengthOfABox = 96.0;
constexpr double kMostBoxesOfALine = 15.0;

/// A box that grows by points.
class PointBox {
public:
    void add(Point p)
    {
        x0_ = std::min(x0_, p.x);
        y0_ = std::min(y0_, p.y);
        x1_ = std::max(x1_, p.x);
        y1_ = std::max(y1_, p.y);
    }
    [[nodiscard]] bool isEmpty() const { return !(x0_ <= x1_ && y0_ <= y1_); }
    [[nodiscard]] PixelRect pixels(double reach) const
    {
        if (isEmpty()) {
            return {};
        }
        const auto low = [&](double edge) {
            return static_cast<int>(std::floor(far(edge - reach)));
        };
        const auto high = [&](double edge) {
            return static_cast<int>(std::ceil(far(edge + reach)));
        };
        const int x = low(x0_);
        const int y = low(y0_);
        return {x, y, high(x1_) - x, high(y1_) - y};
    }

private:
    static double far(double edge) { return std::clamp(edge, -kFar, kFar); }

    double x0_ = kFar;
    double y0_ = kFar;
    double x1_ = -kFar;
    double y1_ = -kFar;
};

double largestStretch(const AffineTransform &transform)
{
    return std::max(std::hypot(transform.a, transform.b), std::hypot(transform.c, transform.d));
}

/// Boxes round the pieces of a path that begins anew at an element of it.
class PathBoxes {
public:
    PathBoxes(const drawing::State &state, double reach)
        : state_(state), reach_(reach * largestStretch(state.toDevice) + kSmoothing)
    {
    }

    void add(const Path::Element &element)
    {
        if (element.type == PathElementType::closeSubpath) {
            // The way back is one straight piece of its own.
            addWayTo(start_);
            box_.add(start_);
            finish();
            last_ = start_;
            return;
        }
        const int count = pointCount(element.type);
        if (element.type == PathElementType::moveToPoint) {
            finish();
            start_ = mapped(element.points[0]);
        } else if (element.type == PathElementType::addLineToPoint) {
            addWayTo(mapped(element.points[0]));
        } else {
            box_.add(last_);
        }
        for (int i = 0; i < count; ++i) {
            last_ = mapped(element.points[i]);
            box_.add(last_);
        }
        if (++segments_ == kSegmentsOfABox) {
            finish();
        }
    }
    void beginAt(Point start, Point last)
    {
        start_ = mapped(start);
        last_ = mapped(last);
    }
    std::vector<PixelRect> take()
    {
        finish();
        return std::move(boxes_);
    }

private:
    [[nodiscard]] Point mapped(Point p) const { return state_.toDevice.apply(p); }
    /// All of a straight line but its end; a long one in several boxes, or most of the one would be
    /// far from it.
    void addWayTo(Point end)
    {
        const Point way = end - last_;
        const double boxes = std::floor(std::hypot(way.x, way.y) / kLengthOfABox);
        box_.add(last_);
        if (!(boxes >= 1.0)) {
            return;
        }
        const int count = static_cast<int>(std::min(boxes, kMostBoxesOfALine));
        for (int i = 1; i <= count; ++i) {
            const double part = static_cast<double>(i) / (count + 1);
            const Point stop{last_.x + way.x * part, last_.y + way.y * part};
            box_.add(stop);
            finish();
            box_.add(stop);
        }
    }
    void finish()
    {
        const PixelRect box = box_.pixels(reach_).intersection(state_.visible);
        if (!box.isEmpty()) {
            boxes_.push_back(box);
        }
        box_ = {};
        segments_ = 0;
    }

    const drawing::State &state_;
    double reach_;
    PointBox box_;
    int segments_ = 0;
    Point start_;
    Point last_;
    std::vector<PixelRect> boxes_;
};

std::vector<PixelRect> boxesOf(const Path &path, const drawing::State &state, double reach)
{
    PathBoxes boxes(state, reach);
    path.forEach([&boxes](const Path::Element &element) { boxes.add(element); });
    return boxes.take();
}

/// Where the last subpath begins.
Point lastStart(const Path &path)
{
    Point start;
    path.forEach([&start](const Path::Element &element) {
        if (element.type == PathElementType::moveToPoint) {
            start = element.points[0];
        }
    });
    return start;
}

/// What `newer` has more than `older`, which it extends.
std::vector<PixelRect> growthOf(const Path &older, const Path &newer, const drawing::State &state)
{
    bool closes = false;
    newer.forEachFrom(older.elementCount(), older.pointTotal(),
                      [&closes](const Path::Element &element) {
                          closes = closes || element.type == PathElementType::closeSubpath;
                      });
    PathBoxes boxes(state, strokeReach(state.stroke));
    boxes.beginAt(closes ? lastStart(older) : Point{}, older.currentPoint());
    newer.forEachFrom(older.elementCount(), older.pointTotal(),
                      [&boxes](const Path::Element &element) { boxes.add(element); });
    return boxes.take();
}

std::vector<PixelRect> boxOf(const Rect &rect, const drawing::State &state)
{
    const PixelRect box = pixelsRound(rect, state.toDevice).intersection(state.visible);
    return box.isEmpty() ? std::vector<PixelRect>{} : std::vector<PixelRect>{box};
}

/// Answers the boxes of a call that met this state.
struct Extent {
    const drawing::State &state;

    std::vector<PixelRect> operator()(const drawing::StrokePath &call) const
    {
        return boxesOf(call.path, state, strokeReach(state.stroke));
    }
    std::vector<PixelRect> operator()(const drawing::FillPath &call) const
    {
        return boxOf(call.path.controlBox(), state);
    }
    std::vector<PixelRect> operator()(const drawing::FillRect &call) const
    {
        return boxOf(call.rect, state);
    }
    std::vector<PixelRect> operator()(const drawing::DrawImage &call) const
    {
        return boxOf(call.rect, state);
    }
    std::vector<PixelRect> operator()(const drawing::FillPattern &call) const
    {
        return boxOf(call.rect, state);
    }
    std::vector<PixelRect> operator()(const drawing::DrawText &call) const
    {
        return boxOf(call.rect, state);
    }
    /// A layer, a list: what lies within may be anywhere.
    template <class Other> std::vector<PixelRect> operator()(const Other & /*call*/) const
    {
        return {state.visible};
    }
};

bool isSame(const DrawingRecord &a, const Mark &markOfA, const DrawingRecord &b,
            const Mark &markOfB)
{
    const drawing::Call &callOfA = a.at(markOfA);
    const drawing::Call &callOfB = b.at(markOfB);
    if (callOfA.index() != callOfB.index() || !(markOfA.state == markOfB.state)) {
        return false;
    }
    return std::visit(
        [&callOfB]<class Call>(const Call &call) {
            if constexpr (std::equality_comparable<Call>) {
                return call == std::get<Call>(callOfB);
            } else {
                return true;
            }
        },
        callOfA);
}

/// The path of a stroke that has grown out of another one; null when it has not.
const Path *grownPath(const DrawingRecord &older, const Mark &before, const DrawingRecord &newer,
                      const Mark &now)
{
    const auto *from = std::get_if<drawing::StrokePath>(&older.at(before));
    const auto *to = std::get_if<drawing::StrokePath>(&newer.at(now));
    const bool grows = from != nullptr && to != nullptr && before.state == now.state &&
                       !from->path.isEmpty() && to->path.extends(from->path);
    return grows ? &from->path : nullptr;
}

void append(std::vector<PixelRect> &to, std::vector<PixelRect> more)
{
    to.insert(to.end(), more.begin(), more.end());
}

} // namespace

PixelRect pixelsRound(const Rect &rect, const AffineTransform &toDevice)
{
    if (rect.isEmpty()) {
        return {};
    }
    PointBox box;
    for (const Point corner :
         std::array<Point, 4>{Point{rect.minX(), rect.minY()}, Point{rect.maxX(), rect.minY()},
                              Point{rect.maxX(), rect.maxY()}, Point{rect.minX(), rect.maxY()}}) {
        box.add(toDevice.apply(corner));
    }
    return box.pixels(kSmoothing);
}

std::vector<PixelRect> extentOf(const DrawingRecord &record, const Mark &mark)
{
    return std::visit(Extent{mark.state}, record.at(mark));
}

std::vector<PixelRect> extentOf(const DrawingRecord &record)
{
    std::vector<PixelRect> boxes;
    for (const Mark &mark : record.marks) {
        append(boxes, extentOf(record, mark));
    }
    return boxes;
}

std::vector<PixelRect> differenceOf(const DrawingRecord &older, const DrawingRecord &newer)
{
    const std::size_t least = std::min(older.marks.size(), newer.marks.size());
    std::size_t before = 0;
    while (before < least && isSame(older, older.marks[before], newer, newer.marks[before])) {
        ++before;
    }
    std::size_t after = 0;
    while (after < least - before && isSame(older, older.marks[older.marks.size() - 1 - after],
                                            newer, newer.marks[newer.marks.size() - 1 - after])) {
        ++after;
    }
    const std::size_t oldEnd = older.marks.size() - after;
    const std::size_t newEnd = newer.marks.size() - after;
    if (oldEnd == before + 1 && newEnd == before + 1) {
        if (const Path *path = grownPath(older, older.marks[before], newer, newer.marks[before])) {
            const Mark &mark = newer.marks[before];
            return growthOf(*path, std::get<drawing::StrokePath>(newer.at(mark)).path, mark.state);
        }
    }
    std::vector<PixelRect> boxes;
    for (std::size_t i = before; i < oldEnd; ++i) {
        append(boxes, extentOf(older, older.marks[i]));
    }
    for (std::size_t i = before; i < newEnd; ++i) {
        append(boxes, extentOf(newer, newer.marks[i]));
    }
    return boxes;
}

} // namespace orv::platform
