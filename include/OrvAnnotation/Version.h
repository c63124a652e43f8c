#pragma once

#include "OrvAnnotation/Export.h"

extern "C" {

/// The library's version as a number: major.minor.
ORV_EXPORT extern const double OrvAnnotationVersionNumber;
/// The library's version as text, ends with a zero byte.
ORV_EXPORT extern const unsigned char OrvAnnotationVersionString[];
}
