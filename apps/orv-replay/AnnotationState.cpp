#include "orv-replay/AnnotationState.h"

#include "annotations/EraserAnnotation.h"
#include "annotations/ShapeAnnotation.h"
#include "annotations/StampAnnotation.h"
#include "annotations/TextAnnotation.h"
#include "orv-replay/SessionState.h"
#include "platform/foundation/TextConversion.h"

namespace orv::apps {

namespace {

OutputJson pointState(platform::Point point)
{
    return OutputJson::array({point.x, point.y});
}

OutputJson pathState(const platform::Path &path)
{
    OutputJson elements = OutputJson::array();
    path.forEach([&elements](const platform::Path::Element &element) {
        OutputJson item = OutputJson::array({static_cast<int>(element.type)});
        for (int i = 0; i < platform::pointCount(element.type); ++i) {
            item.push_back(element.points[i].x);
            item.push_back(element.points[i].y);
        }
        elements.push_back(std::move(item));
    });
    return elements;
}

void addStroke(OutputJson &state, const PathAnnotation &stroke)
{
    state["path"] = pathState(stroke.path());
    if (const auto *eraser = dynamic_cast<const EraserAnnotation *>(&stroke)) {
        state["dragOrigin"] = pointState(eraser->dragOrigin());
    }
}

void addShape(OutputJson &state, const ShapeAnnotation &shape)
{
    const platform::Rect &box = shape.shapeBoundingBox();
    state["shapeBoundingBox"] =
        OutputJson::array({box.origin.x, box.origin.y, box.size.width, box.size.height});
    state["dragOrigin"] = pointState(shape.dragOrigin());
    state["dragDelta"] = pointState({shape.dragDeltaX(), shape.dragDeltaY()});
}

void addText(OutputJson &state, const TextAnnotation &text)
{
    OutputJson lines = OutputJson::array();
    for (const std::u16string &line : text.lines()) {
        lines.push_back(platform::utf8FromUtf16(line));
    }
    state["lines"] = std::move(lines);
    state["dragOrigin"] = pointState(text.dragOrigin());
    state["textOrigin"] = pointState(text.textOrigin());
    state["textAngle"] = static_cast<double>(text.textAngle());
    state["lineHeight"] = static_cast<double>(text.lineHeight());
    state["caretVisible"] = text.caretVisible();
}

void addStamp(OutputJson &state, const StampAnnotation &stamp)
{
    state["dragOrigin"] = pointState(stamp.dragOrigin());
    state["stampType"] = stamp.stampType();
    state["sizeIndex"] = stamp.sizeIndex();
    state["stampAlign"] = stamp.stampAlign();
}

} // namespace

OutputJson annotationState(const Annotation &annotation)
{
    OutputJson state{{"annotationType", annotation.annotationType()},
                     {"class", annotation.className()},
                     {"annotationSize", annotation.annotationSize()},
                     {"annotationStyle", annotation.annotationStyle()},
                     {"blendMode", static_cast<std::int32_t>(annotation.blendMode())},
                     {"color", colorState(annotation.color())},
                     {"dashMode", annotation.dashMode()},
                     {"isActive", annotation.isActive()}};
    if (const auto *stroke = dynamic_cast<const PathAnnotation *>(&annotation)) {
        addStroke(state, *stroke);
    } else if (const auto *shape = dynamic_cast<const ShapeAnnotation *>(&annotation)) {
        addShape(state, *shape);
    } else if (const auto *text = dynamic_cast<const TextAnnotation *>(&annotation)) {
        addText(state, *text);
    } else if (const auto *stamp = dynamic_cast<const StampAnnotation *>(&annotation)) {
        addStamp(state, *stamp);
    }
    return state;
}

} // namespace orv::apps
