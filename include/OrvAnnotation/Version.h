#pragma once

extern "C" {

/// The library's version as a number: major.minor.
extern const double OrvAnnotationVersionNumber;
/// The library's version as text, ends with a zero byte.
extern const unsigned char OrvAnnotationVersionString[];
}
