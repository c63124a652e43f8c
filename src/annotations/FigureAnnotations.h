#pragma once

#include "canvas/AnnotationRegistry.h"

namespace orv {

/// All kinds but the pen and the highlighter: eraser, ellipse, rectangle, text, line and stamp.
void registerFigureAnnotations(AnnotationRegistry &registry);

} // namespace orv
