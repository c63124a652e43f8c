#include "annotations/RectangleAnnotation.h"

namespace orv {

std::vector<std::string> RectangleAnnotation::archiveClassNames() const
{
    return {"RectangleAnnotation", "ShapeAnnotation", "Annotation"};
}

void RectangleAnnotation::draw(platform::GraphicsContext &context)
{
    platform::Path outline;
    outline.addRect(shapeBoundingBox());
    drawOutline(context, outline);
}

} // namespace orv
