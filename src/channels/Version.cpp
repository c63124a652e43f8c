#include "OrvAnnotation/Version.h"

const double OrvAnnotationVersionNumber = ORV_VERSION_NUMBER;
const unsigned char OrvAnnotationVersionString[] = ORV_VERSION_STRING;
