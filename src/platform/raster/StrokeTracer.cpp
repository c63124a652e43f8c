#include "platform/raster/StrokeTracer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace orv::platform {

namespace {

/// How far a curve may lie from the straight pieces that stand for it, in device pixels.
constexpr double kFlatness = 0.05;
constexpr int kMostPiecesOfACurve = 512;
/// By how much the two axes may be stretched differently, as a part of either.
constexpr double kRoundEnough = 1e-9;
/// Dashes that repeat within less than this many device pixels can't be told from a line.
constexpr double kShortestRound = 1.0 / 16.0;
/// No surface reaches so far; beyond it distances would lose their last digits.
constexpr double kFar = 1e7;

double lengthOf(Point way)
{
    return std::sqrt(way.x * way.x + way.y * way.y);
}

bool isFinite(const Path::Element &element)
{
    return std::all_of(element.points, element.points + pointCount(element.type),
                       [](Point p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

Point between(Point a, Point b, double part)
{
    return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

/// Lengths on and off along a line, in its own coordinates, and how far it has come.
///
/// How far it has come never depends on what of the line is in sight.
class Dashes {
public:
    Dashes(const StrokeStyle &style, double scale)
    {
        if (!hasDashes(style)) {
            return;
        }
        // An odd list goes on turned over.
        const int rounds = style.dashLengths.size() % 2 == 0 ? 1 : 2;
        for (int i = 0; i < rounds; ++i) {
            for (const double length : style.dashLengths) {
                lengths_.push_back(length);
            }
        }
        round_ = std::accumulate(lengths_.begin(), lengths_.end(), 0.0);
        const double phase = std::fmod(style.dashPhase, round_);
        if (std::isfinite(phase)) {
            phase_ = phase < 0.0 ? phase + round_ : phase;
        }
        isSolid_ = !(round_ * scale >= kShortestRound);
    }

    [[nodiscard]] bool areSolid() const { return isSolid_; }
    void begin() { position_ = phase_; }
    void skip(double length) { position_ = std::fmod(position_ + length, round_); }
    /// Calls `visit(from, to)` for each dash that meets the stretch from `first` to `last` of the
    /// next `length`, and perhaps for some beside it; all are distances from the beginning.
    template <class Visitor>
    void walk(double length, double first, double last, Visitor &&visit) const
    {
        double round = std::max(0.0, std::floor((first + position_) / round_) - 1.0);
        for (; round * round_ - position_ <= last; round += 1.0) {
            double start = round * round_ - position_;
            for (std::size_t i = 0; i < lengths_.size(); ++i) {
                const double end = start + lengths_[i];
                const bool begins = start < length || length == 0.0;
                if (i % 2 == 0 && end >= 0.0 && begins) {
                    visit(std::max(start, 0.0), std::min(end, length));
                }
                start = end;
            }
        }
    }

private:
    std::vector<double> lengths_;
    double round_ = 0.0;
    double phase_ = 0.0;
    double position_ = 0.0;
    bool isSolid_ = true;
};

/// Takes a path's elements and adds the pieces that may be seen. It thinks in the path's
/// coordinates.
class Tracer {
public:
    Tracer(const StrokeStyle &style, const AffineTransform &toDevice, StrokeMask &mask)
        : toDevice_(toDevice), mask_(mask), scale_(lengthOf({toDevice.a, toDevice.b})),
          radius_(style.width / 2.0 * scale_), dashes_(style, scale_),
          seen_(areaInSight(mask.area(), radius_ + 1.0, toDevice.inverted()))
    {
        dashes_.begin();
    }

    void trace(const Path &path)
    {
        const auto visit = [this](const Path::Element &element) { add(element); };
        if (!dashes_.areSolid()) {
            path.forEach(visit);
            return;
        }
        path.forEachNear(seen_, visit, [this](Point end) {
            current_ = end;
            hasPieces_ = true;
        });
    }

private:
    /// A box that holds the pixels and `reach` pixels more each way.
    static Rect areaInSight(const PixelRect &area, double reach, const AffineTransform &back)
    {
        const double left = area.x - reach;
        const double top = area.y - reach;
        const double right = area.x + area.width + reach;
        const double bottom = area.y + area.height + reach;
        const std::array<Point, 4> corners{back.apply({left, top}), back.apply({right, top}),
                                           back.apply({right, bottom}), back.apply({left, bottom})};
        Point low = corners[0];
        Point high = corners[0];
        for (const Point corner : corners) {
            low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
            high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
        }
        return {low, {high.x - low.x, high.y - low.y}};
    }

    void add(const Path::Element &element)
    {
        const bool starts = element.type == PathElementType::moveToPoint;
        if (!isFinite(element) || !(starts || isStarted_)) {
            return;
        }
        isStarted_ = true;
        const Point *points = element.points;
        switch (element.type) {
        case PathElementType::moveToPoint:
            current_ = start_ = points[0];
            begin();
            break;
        case PathElementType::addLineToPoint:
            addLine(points[0]);
            break;
        case PathElementType::addQuadCurveToPoint:
            addCurve(between(current_, points[0], 2.0 / 3.0),
                     between(points[1], points[0], 2.0 / 3.0), points[1]);
            break;
        case PathElementType::addCurveToPoint:
            addCurve(points[0], points[1], points[2]);
            break;
        case PathElementType::closeSubpath:
            if (hasPieces_) {
                addLine(start_);
            }
            begin();
            break;
        }
    }
    void begin()
    {
        hasPieces_ = false;
        dashes_.begin();
    }

    [[nodiscard]] bool isInSight(Point a, Point b) const
    {
        return std::min(a.x, b.x) <= seen_.maxX() && std::max(a.x, b.x) >= seen_.minX() &&
               std::min(a.y, b.y) <= seen_.maxY() && std::max(a.y, b.y) >= seen_.minY();
    }
    void addLine(Point to)
    {
        const Point from = std::exchange(current_, to);
        hasPieces_ = true;
        const bool seen = isInSight(from, to);
        if (dashes_.areSolid()) {
            if (seen) {
                addPiece(from, to);
            }
            return;
        }
        const double length = lengthOf(to - from);
        if (seen) {
            addDashes(from, to, length);
        }
        dashes_.skip(length);
    }
    void addPiece(Point from, Point to) { mask_.add(placed(from), placed(to), radius_); }
    [[nodiscard]] Point placed(Point p) const
    {
        const Point device = toDevice_.apply(p);
        return {std::clamp(device.x, -kFar, kFar), std::clamp(device.y, -kFar, kFar)};
    }

    void addDashes(Point from, Point to, double length)
    {
        const double inverse = length > 0.0 ? 1.0 / length : 0.0;
        const auto [first, last] = seenPart(from, to);
        dashes_.walk(length, first * length, last * length, [&](double begin, double end) {
            const Point a = between(from, to, begin * inverse);
            const Point b = between(from, to, end * inverse);
            if (isInSight(a, b)) {
                addPiece(a, b);
            }
        });
    }
    /// The parts of the way, 0 to 1, between which a line may be seen.
    [[nodiscard]] std::pair<double, double> seenPart(Point from, Point to) const
    {
        double first = 0.0;
        double last = 1.0;
        const auto limit = [&](double begin, double end, double low, double high) {
            const double way = end - begin;
            if (way != 0.0) {
                first = std::max(first, std::min((low - begin) / way, (high - begin) / way));
                last = std::min(last, std::max((low - begin) / way, (high - begin) / way));
            }
        };
        limit(from.x, to.x, seen_.minX(), seen_.maxX());
        limit(from.y, to.y, seen_.minY(), seen_.maxY());
        return {first, last};
    }

    void addCurve(Point control1, Point control2, Point to)
    {
        const Point from = current_;
        // What bends the curve away from its chords is its second difference.
        const double bend = std::max(
            lengthOf(
                {from.x - 2.0 * control1.x + control2.x, from.y - 2.0 * control1.y + control2.y}),
            lengthOf({control1.x - 2.0 * control2.x + to.x, control1.y - 2.0 * control2.y + to.y}));
        const double wanted = std::ceil(std::sqrt(0.75 * bend * scale_ / kFlatness));
        const int pieces =
            static_cast<int>(std::clamp(wanted, 1.0, static_cast<double>(kMostPiecesOfACurve)));
        for (int i = 1; i < pieces; ++i) {
            const double t = static_cast<double>(i) / pieces;
            const Point a = between(from, control1, t);
            const Point b = between(control1, control2, t);
            const Point c = between(control2, to, t);
            addLine(between(between(a, b, t), between(b, c, t), t));
        }
        addLine(to);
    }

    const AffineTransform &toDevice_;
    StrokeMask &mask_;
    /// Device pixels to one of the path's units.
    double scale_;
    /// In device pixels.
    double radius_;
    Dashes dashes_;
    /// What lies wholly outside can't be seen.
    Rect seen_;
    bool isStarted_ = false;
    bool hasPieces_ = false;
    Point start_;
    Point current_;
};

} // namespace

bool isTraceable(const StrokeStyle &style, const AffineTransform &toDevice)
{
    const double stretch = lengthOf({toDevice.a, toDevice.b});
    const double slack = stretch * kRoundEnough;
    const bool keepsCircles =
        std::abs(lengthOf({toDevice.c, toDevice.d}) - stretch) <= slack &&
        std::abs(toDevice.a * toDevice.c + toDevice.b * toDevice.d) <= slack * stretch;
    return style.cap == LineCap::round && style.join == LineJoin::round && keepsCircles;
}

void traceStroke(const Path &path, const StrokeStyle &style, const AffineTransform &toDevice,
                 StrokeMask &mask)
{
    Tracer(style, toDevice, mask).trace(path);
}

} // namespace orv::platform
