#include "platform/raster/PainterPaths.h"

#include <QPainterPathStroker>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace orv::platform {

namespace {

constexpr double kMiterLimit = 10.0;
/// How far a dot is drawn out, in points: too little to be seen, enough to have a direction.
constexpr double kDotLength = 1.0 / 1024.0;

/// One line or curve of a subpath, with the point it starts from.
struct Segment {
    Point from;
    Path::Element element;
    bool meets;
};

bool isFinite(const Path::Element &element)
{
    return std::all_of(element.points, element.points + pointCount(element.type),
                       [](Point p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

QPointF at(Point p)
{
    return {p.x, p.y};
}

void append(QPainterPath &out, const Path::Element &element)
{
    const Point *p = element.points;
    switch (element.type) {
    case PathElementType::moveToPoint:
        out.moveTo(at(p[0]));
        break;
    case PathElementType::addLineToPoint:
        out.lineTo(at(p[0]));
        break;
    case PathElementType::addQuadCurveToPoint:
        out.quadTo(at(p[0]), at(p[1]));
        break;
    case PathElementType::addCurveToPoint:
        out.cubicTo(at(p[0]), at(p[1]), at(p[2]));
        break;
    case PathElementType::closeSubpath:
        out.closeSubpath();
        break;
    }
}

/// The box round a segment's points, control points included; it may be flat.
struct Box {
    double x0, y0, x1, y1;

    Box(Point from, const Path::Element &element) : x0(from.x), y0(from.y), x1(from.x), y1(from.y)
    {
        const int count = pointCount(element.type);
        for (int i = 0; i < count; ++i) {
            const Point p = element.points[i];
            x0 = std::min(x0, p.x);
            y0 = std::min(y0, p.y);
            x1 = std::max(x1, p.x);
            y1 = std::max(y1, p.y);
        }
    }
    [[nodiscard]] bool meets(const Rect &rect) const
    {
        return x0 <= rect.maxX() && x1 >= rect.minX() && y0 <= rect.maxY() && y1 >= rect.minY();
    }
    [[nodiscard]] bool isPoint() const { return x0 == x1 && y0 == y1; }
};

/// Collects subpaths and hands on the runs of segments that meet the area.
class VisibleRuns {
public:
    VisibleRuns(const Rect &area, bool keepWhole, std::size_t elements)
        : area_(area), keepWhole_(keepWhole)
    {
        segments_.reserve(elements);
    }

    void add(const Path::Element &element)
    {
        const bool starts = element.type == PathElementType::moveToPoint;
        if (!isFinite(element) || !(starts || isStarted_)) {
            return;
        }
        isStarted_ = true;
        switch (element.type) {
        case PathElementType::moveToPoint:
            flush(false);
            current_ = start_ = element.points[0];
            break;
        case PathElementType::closeSubpath:
            flush(true);
            current_ = start_;
            break;
        default:
            addSegment(element);
            break;
        }
    }

    QPainterPath finish()
    {
        flush(false);
        return out_;
    }

private:
    void addSegment(const Path::Element &element)
    {
        const Box box(current_, element);
        const bool meets = box.meets(area_);
        segments_.push_back({current_, element, meets});
        anyMeets_ = anyMeets_ || meets;
        isDot_ = isDot_ && box.isPoint();
        current_ = element.points[pointCount(element.type) - 1];
    }

    void flush(bool closed)
    {
        if (!segments_.empty() && isDot_) {
            appendDot();
        } else if (!segments_.empty() && (closed || keepWhole_)) {
            // The way back of a closed subpath may cross the area where no segment does.
            appendWhole(closed);
        } else if (anyMeets_) {
            appendRuns();
        }
        segments_.clear();
        anyMeets_ = false;
        isDot_ = true;
    }

    void appendDot()
    {
        if (anyMeets_) {
            out_.moveTo(at(start_));
            out_.lineTo(start_.x + kDotLength, start_.y);
        }
    }

    void appendWhole(bool closed)
    {
        out_.moveTo(at(start_));
        for (const Segment &segment : segments_) {
            append(out_, segment.element);
        }
        if (closed) {
            out_.closeSubpath();
        }
    }

    void appendRuns()
    {
        bool running = false;
        for (const Segment &segment : segments_) {
            if (segment.meets && !running) {
                out_.moveTo(at(segment.from));
            }
            if (segment.meets) {
                append(out_, segment.element);
            }
            running = segment.meets;
        }
    }

    Rect area_;
    bool keepWhole_;
    QPainterPath out_;
    std::vector<Segment> segments_;
    bool anyMeets_ = false;
    bool isDot_ = true;
    bool isStarted_ = false;
    Point start_;
    Point current_;
};

Qt::PenCapStyle painterCap(LineCap cap)
{
    switch (cap) {
    case LineCap::butt:
        break;
    case LineCap::round:
        return Qt::RoundCap;
    case LineCap::square:
        return Qt::SquareCap;
    }
    return Qt::FlatCap;
}

Qt::PenJoinStyle painterJoin(LineJoin join)
{
    switch (join) {
    case LineJoin::miter:
        break;
    case LineJoin::round:
        return Qt::RoundJoin;
    case LineJoin::bevel:
        return Qt::BevelJoin;
    }
    return Qt::SvgMiterJoin;
}

/// In units of the pen's width, with an even count.
QList<qreal> painterDashes(const StrokeStyle &style)
{
    QList<qreal> pattern;
    const int rounds = style.dashLengths.size() % 2 == 0 ? 1 : 2;
    for (int i = 0; i < rounds; ++i) {
        for (const double length : style.dashLengths) {
            pattern.append(length / style.width);
        }
    }
    return pattern;
}

/// 0 or more and less than one round of the pattern.
double painterPhase(const StrokeStyle &style, const QList<qreal> &pattern)
{
    const double round = std::accumulate(pattern.begin(), pattern.end(), 0.0);
    const double phase = std::fmod(style.dashPhase / style.width, round);
    if (!std::isfinite(phase)) {
        return 0.0;
    }
    return phase < 0.0 ? phase + round : phase;
}

} // namespace

bool hasDashes(const StrokeStyle &style)
{
    const auto &lengths = style.dashLengths;
    const bool usable = std::all_of(lengths.begin(), lengths.end(), [](double length) {
        return length >= 0.0 && std::isfinite(length);
    });
    return usable && std::accumulate(lengths.begin(), lengths.end(), 0.0) > 0.0;
}

QPainterPath fillOutline(const Path &path)
{
    QPainterPath out;
    out.setFillRule(Qt::WindingFill);
    path.forEach([&out](const Path::Element &element) {
        if (isFinite(element)) {
            append(out, element);
        }
    });
    return out;
}

double strokeReach(const StrokeStyle &style)
{
    const bool pointed = style.join == LineJoin::miter;
    return style.width / 2.0 * (pointed ? kMiterLimit : std::sqrt(2.0));
}

QPainterPath visibleLine(const Path &path, const StrokeStyle &style, const Rect &visible)
{
    const double reach = strokeReach(style);
    VisibleRuns runs(visible.insetBy(-reach, -reach), hasDashes(style), path.elementCount());
    path.forEach([&runs](const Path::Element &element) { runs.add(element); });
    return runs.finish();
}

QPen solidPen(const StrokeStyle &style)
{
    QPen pen;
    pen.setWidthF(style.width);
    pen.setCapStyle(painterCap(style.cap));
    pen.setJoinStyle(painterJoin(style.join));
    pen.setMiterLimit(kMiterLimit);
    return pen;
}

QPainterPath strokeOutline(const QPainterPath &line, const StrokeStyle &style, double scale)
{
    QPainterPathStroker stroker(solidPen(style));
    if (hasDashes(style)) {
        const QList<qreal> pattern = painterDashes(style);
        stroker.setDashPattern(pattern);
        stroker.setDashOffset(painterPhase(style, pattern));
    }
    stroker.setCurveThreshold(0.25 / scale);
    QPainterPath outline = stroker.createStroke(line);
    outline.setFillRule(Qt::WindingFill);
    return outline;
}

} // namespace orv::platform
