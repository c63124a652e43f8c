#include "annotations/LineAnnotation.h"

#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <cmath>

namespace orv {

namespace {

using platform::Point;

namespace line_style {
constexpr std::int32_t singleArrow = 1;
constexpr std::int32_t doubleArrow = 2;
constexpr std::int32_t dashed = 3;
constexpr std::int32_t clientArrow = 98;
} // namespace line_style

constexpr float kSmallestArrowLen = 5.2F;
constexpr double kArrowLenInWidths = 1.3;
constexpr double kWidestLineOfSmallestArrow = 4.0;
constexpr double kHalfHeadWidthInLengths = 0.8;
constexpr double kHeadOutlineWidth = 2.0;

} // namespace

LineAnnotation::LineAnnotation(platform::KeyedUnarchiver &coder) : ShapeAnnotation(coder)
{
    restoreDrag({coder.decodeFloat("dragOriginX"), coder.decodeFloat("dragOriginY")},
                coder.decodeFloat("dragDeltaX"), coder.decodeFloat("dragDeltaY"));
    LineAnnotation::setStyle(static_cast<std::int32_t>(coder.decodeInt("lineType")));
}

std::vector<std::string> LineAnnotation::archiveClassNames() const
{
    return {"LineAnnotation", "ShapeAnnotation", "Annotation"};
}

void LineAnnotation::encodeWithCoder(platform::KeyedArchiver &coder) const
{
    ShapeAnnotation::encodeWithCoder(coder);
    coder.encodeFloat("dragOriginX", static_cast<float>(dragOrigin().x));
    coder.encodeFloat("dragOriginY", static_cast<float>(dragOrigin().y));
    coder.encodeFloat("dragDeltaX", static_cast<float>(dragDeltaX()));
    coder.encodeFloat("dragDeltaY", static_cast<float>(dragDeltaY()));
    coder.encodeInt("lineType", annotationStyle());
}

bool LineAnnotation::isSettled() const
{
    return ShapeAnnotation::isSettled() && (dashMode() || annotationStyle() != line_style::dashed);
}

void LineAnnotation::draw(platform::GraphicsContext &context)
{
    switch (annotationStyle()) {
    case line_style::singleArrow:
    case line_style::clientArrow:
        drawSingleArrow(context);
        break;
    case line_style::doubleArrow:
        drawDoubleArrow(context);
        break;
    case line_style::dashed:
        // Once it is settled another thread may be reading it.
        if (!dashMode()) {
            setDashMode(true);
        }
        drawLine(context);
        break;
    default:
        drawLine(context);
        break;
    }
}

float LineAnnotation::getArrowLen() const
{
    return annotationSize() > kWidestLineOfSmallestArrow
               ? static_cast<float>(annotationSize() * kArrowLenInWidths)
               : kSmallestArrowLen;
}

bool LineAnnotation::drawSingleArrow(platform::GraphicsContext &context) const
{
    if (!(getArrowLen() < lineLength())) {
        return false;
    }
    const ArrowHead head = arrowHead();
    const Point base = dragEnd() - head.along;
    context.saveState();
    drawShaft(context, dragOrigin(), base);
    setHeadColor(context);
    drawHead(context, dragEnd(), base, head.half);
    context.restoreState();
    return true;
}

bool LineAnnotation::drawDoubleArrow(platform::GraphicsContext &context) const
{
    if (!(2.0F * getArrowLen() < lineLength())) {
        return false;
    }
    const ArrowHead head = arrowHead();
    const Point endBase = dragEnd() - head.along;
    const Point startBase = dragOrigin() + head.along;
    context.saveState();
    drawShaft(context, startBase, endBase);
    setHeadColor(context);
    drawHead(context, dragEnd(), endBase, head.half);
    drawHead(context, dragOrigin(), startBase, {-head.half.x, -head.half.y});
    context.restoreState();
    return true;
}

void LineAnnotation::drawLine(platform::GraphicsContext &context) const
{
    platform::Path path;
    path.moveTo(dragOrigin());
    path.lineTo(dragOrigin());
    path.lineTo(dragEnd());
    context.setStrokeColor(color());
    updateLineDash(context, dashMode());
    context.setBlendMode(blendMode());
    context.setLineWidth(annotationSize());
    context.setLineCap(platform::LineCap::butt);
    context.setLineJoin(platform::LineJoin::round);
    context.setStrokeColor(color());
    context.strokePath(path);
}

Point LineAnnotation::dragEnd() const
{
    return dragOrigin() + Point{dragDeltaX(), dragDeltaY()};
}

float LineAnnotation::lineLength() const
{
    return std::hypot(static_cast<float>(dragDeltaX()), static_cast<float>(dragDeltaY()));
}

LineAnnotation::ArrowHead LineAnnotation::arrowHead() const
{
    const float ratio = getArrowLen() / lineLength();
    const double alongX = static_cast<float>(dragDeltaX() * ratio);
    const double alongY = static_cast<float>(dragDeltaY() * ratio);
    return {{alongX, alongY}, {alongX * kHalfHeadWidthInLengths, alongY * kHalfHeadWidthInLengths}};
}

void LineAnnotation::drawShaft(platform::GraphicsContext &context, Point from, Point to) const
{
    platform::Path shaft;
    shaft.moveTo(from);
    shaft.lineTo(to);
    context.setBlendMode(blendMode());
    context.setStrokeColor(color());
    updateLineDash(context, dashMode());
    setPlainCapAndJoin(context);
    context.setLineWidth(annotationSize());
    context.strokePath(shaft);
}

void LineAnnotation::setHeadColor(platform::GraphicsContext &context) const
{
    context.setStrokeColor(color());
    context.setFillColor(color());
}

void LineAnnotation::drawHead(platform::GraphicsContext &context, Point tip, Point base, Point half)
{
    platform::Path head;
    head.moveTo(tip);
    head.lineTo({base.x - half.y, base.y + half.x});
    head.lineTo({base.x + half.y, base.y - half.x});
    head.lineTo(tip);
    context.setLineWidth(kHeadOutlineWidth);
    context.fillPath(head);
    context.strokePath(head);
}

} // namespace orv
