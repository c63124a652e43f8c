#pragma once

#include "canvas/Annotation.h"
#include "orv-replay/OutputLines.h"

namespace orv::apps {

/// What every annotation has, and what its kind adds.
[[nodiscard]] OutputJson annotationState(const Annotation &annotation);

} // namespace orv::apps
