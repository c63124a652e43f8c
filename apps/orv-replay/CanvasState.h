#pragma once

#include "orv-replay/OutputLines.h"
#include "session/AnnotationManager.h"

#include <string>

namespace orv::apps {

/// One object a display, by rising ID; displays that are gone included. Paths are relative to
/// `home` where below it.
[[nodiscard]] OutputJson canvasesState(const AnnotationManager &manager, const std::string &home);

} // namespace orv::apps
