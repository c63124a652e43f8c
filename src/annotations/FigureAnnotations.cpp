#include "annotations/FigureAnnotations.h"

#include "annotations/EllipseAnnotation.h"
#include "annotations/EraserAnnotation.h"
#include "annotations/LineAnnotation.h"
#include "annotations/RectangleAnnotation.h"
#include "annotations/StampAnnotation.h"
#include "annotations/TextAnnotation.h"

namespace orv {

void registerFigureAnnotations(AnnotationRegistry &registry)
{
    registry.add<EraserAnnotation>(annotation_type::eraser, "EraserAnnotation");
    registry.add<EllipseAnnotation>(annotation_type::ellipse, "EllipseAnnotation");
    registry.add<RectangleAnnotation>(annotation_type::rectangle, "RectangleAnnotation");
    registry.add<TextAnnotation>(annotation_type::text, "TextAnnotation");
    registry.add<LineAnnotation>(annotation_type::line, "LineAnnotation");
    registry.add<StampAnnotation>(annotation_type::stamp, "StampAnnotation");
}

} // namespace orv
