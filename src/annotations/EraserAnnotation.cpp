#include "annotations/EraserAnnotation.h"

namespace orv {

namespace {

using platform::Point;

constexpr double kEraserAlpha = 1.0;
constexpr double kFootprintWidth = 5.0;

} // namespace

EraserAnnotation::EraserAnnotation()
{
    setBlendMode(platform::BlendMode::clear);
    setAlphaComponent(kEraserAlpha);
}

std::vector<std::string> EraserAnnotation::archiveClassNames() const
{
    return {"EraserAnnotation", "PathAnnotation", "Annotation"};
}

void EraserAnnotation::draw(platform::GraphicsContext &context)
{
    PathAnnotation::draw(context);
    if (isActive()) {
        drawFootprint(context);
    }
}

void EraserAnnotation::drawFootprint(platform::GraphicsContext &context) const
{
    const double radius = annotationSize() / 2.0;
    platform::Path ring;
    ring.addEllipse(platform::Rect::make(dragOrigin_.x - radius, dragOrigin_.y - radius,
                                         annotationSize(), annotationSize()));
    context.saveState();
    context.setBlendMode(platform::BlendMode::normal);
    context.setStrokeColor({1.0, 1.0, 1.0, alphaComponent()});
    // A dashed line drawn before may have left its dashes behind.
    updateLineDash(context, false);
    context.setLineWidth(kFootprintWidth);
    context.strokePath(ring);
    context.restoreState();
}

void EraserAnnotation::mouseDownEventAtPoint(Point point)
{
    PathAnnotation::mouseDownEventAtPoint(point);
    dragOrigin_ = point;
}

void EraserAnnotation::mouseDraggedEventAtPoint(Point point)
{
    PathAnnotation::mouseDraggedEventAtPoint(point);
    dragOrigin_ = point;
}

void EraserAnnotation::mouseUpEventAtPoint(Point point)
{
    PathAnnotation::mouseUpEventAtPoint(point);
    dragOrigin_ = point;
}

} // namespace orv
