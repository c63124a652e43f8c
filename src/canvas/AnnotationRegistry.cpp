#include "canvas/AnnotationRegistry.h"

#include "canvas/PathAnnotation.h"

namespace orv {

AnnotationRegistry &AnnotationRegistry::shared()
{
    static AnnotationRegistry registry;
    return registry;
}

AnnotationRegistry::AnnotationRegistry()
{
    classes_.add("Annotation", [](platform::KeyedUnarchiver &coder) {
        return std::make_shared<Annotation>(coder);
    });
}

std::shared_ptr<Annotation> AnnotationRegistry::make(std::int32_t type) const
{
    const auto found = makers_.find(type);
    return found == makers_.end() ? nullptr : found->second();
}

void registerStrokeAnnotations(AnnotationRegistry &registry)
{
    registry.add<PencilAnnotation>(annotation_type::pen, "PencilAnnotation");
    registry.add<HighlighterAnnotation>(annotation_type::highlighter, "HighlighterAnnotation");
}

} // namespace orv
