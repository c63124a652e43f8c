#include "annotations/ShapeAnnotation.h"

#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <algorithm>
#include <cmath>

namespace orv {

namespace {

using platform::Point;

constexpr double kShapeAlpha = 1.0;
constexpr double kSmallestSide = 1.0;
constexpr double kPlainGrey = 0.5;
constexpr double kPlainWidth = 1.0;

} // namespace

ShapeAnnotation::ShapeAnnotation()
{
    setAlphaComponent(kShapeAlpha);
}

ShapeAnnotation::ShapeAnnotation(platform::KeyedUnarchiver &coder)
    : Annotation(coder), shapeBoundingBox_{
                             {coder.decodeFloat("originX"), coder.decodeFloat("originY")},
                             {std::max(0.0F, coder.decodeFloat("boxWidth")),
                              std::max(0.0F, coder.decodeFloat("boxHeight"))}}
{
}

std::vector<std::string> ShapeAnnotation::archiveClassNames() const
{
    return {"ShapeAnnotation", "Annotation"};
}

void ShapeAnnotation::encodeWithCoder(platform::KeyedArchiver &coder) const
{
    Annotation::encodeWithCoder(coder);
    coder.encodeFloat("originX", static_cast<float>(shapeBoundingBox_.origin.x));
    coder.encodeFloat("originY", static_cast<float>(shapeBoundingBox_.origin.y));
    coder.encodeFloat("boxWidth", static_cast<float>(shapeBoundingBox_.size.width));
    coder.encodeFloat("boxHeight", static_cast<float>(shapeBoundingBox_.size.height));
}

void ShapeAnnotation::draw(platform::GraphicsContext &context)
{
    platform::Path box;
    box.addRect(shapeBoundingBox_);
    context.saveState();
    context.setBlendMode(blendMode());
    updateLineDash(context, dashMode());
    context.setStrokeColor({kPlainGrey, kPlainGrey, kPlainGrey, alphaComponent()});
    setPlainCapAndJoin(context);
    context.setLineWidth(kPlainWidth);
    context.strokePath(box);
    context.restoreState();
}

void ShapeAnnotation::drawOutline(platform::GraphicsContext &context,
                                  const platform::Path &outline) const
{
    context.saveState();
    context.setBlendMode(blendMode());
    context.setStrokeColor(color());
    updateLineDash(context, dashMode());
    setPlainCapAndJoin(context);
    context.setLineWidth(annotationSize());
    context.strokePath(outline);
    context.restoreState();
}

void ShapeAnnotation::setPlainCapAndJoin(platform::GraphicsContext &context)
{
    context.setLineCap(platform::LineCap::butt);
    context.setLineJoin(platform::LineJoin::miter);
}

void ShapeAnnotation::restoreDrag(Point origin, double deltaX, double deltaY)
{
    dragOrigin_ = origin;
    dragDeltaX_ = deltaX;
    dragDeltaY_ = deltaY;
}

void ShapeAnnotation::mouseDownEventAtPoint(Point point)
{
    dragOrigin_ = point;
    setIsActive(true);
}

void ShapeAnnotation::mouseDraggedEventAtPoint(Point point)
{
    dragDeltaX_ = point.x - dragOrigin_.x;
    dragDeltaY_ = point.y - dragOrigin_.y;
    updateShapeBoundingBox();
}

void ShapeAnnotation::mouseUpEventAtPoint(Point point)
{
    setIsActive(false);
    mouseDraggedEventAtPoint(point);
}

bool ShapeAnnotation::shouldRedrawWithFlagsChangedEvent(const platform::Event &event)
{
    const bool shift = (event.modifierFlags & platform::modifier::shift) != 0;
    if (!isActive() || shift == constrainDimensions_) {
        return false;
    }
    constrainDimensions_ = shift;
    updateShapeBoundingBox();
    return true;
}

bool ShapeAnnotation::shouldFinalize()
{
    return shapeBoundingBox_.size.width >= kSmallestSide &&
           shapeBoundingBox_.size.height >= kSmallestSide;
}

void ShapeAnnotation::updateShapeBoundingBox()
{
    double width = std::abs(dragDeltaX_);
    double height = std::abs(dragDeltaY_);
    if (constrainDimensions_) {
        width = height = std::max(width, height);
    }
    shapeBoundingBox_ =
        platform::Rect::make(dragOrigin_.x - (dragDeltaX_ < 0.0 ? width : 0.0),
                             dragOrigin_.y - (dragDeltaY_ < 0.0 ? height : 0.0), width, height);
}

} // namespace orv
