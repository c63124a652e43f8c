#pragma once

#include "canvas/Annotation.h"
#include "orv-replay/OutputLines.h"
#include "session/AnnotationManager.h"

namespace orv::apps {

/// One object a display, by rising ID; displays that are gone included.
[[nodiscard]] OutputJson canvasesState(const AnnotationManager &manager);
[[nodiscard]] OutputJson annotationState(const Annotation &annotation);

} // namespace orv::apps
