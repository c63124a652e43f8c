#include "annotations/EllipseAnnotation.h"

namespace orv {

std::vector<std::string> EllipseAnnotation::archiveClassNames() const
{
    return {"EllipseAnnotation", "ShapeAnnotation", "Annotation"};
}

void EllipseAnnotation::draw(platform::GraphicsContext &context)
{
    platform::Path outline;
    outline.addEllipse(shapeBoundingBox());
    drawOutline(context, outline);
}

} // namespace orv
