#pragma once

#include "platform/values/Geometry.h"

#include <string>

namespace orv::platform {

/// A pointer's look: the resource name of its picture and the point of it that points, from the
/// picture's top left corner. Without a picture it is the desktop's arrow.
struct Cursor {
    std::string imageName;
    Point hotSpot;

    friend bool operator==(const Cursor &, const Cursor &) = default;
};

} // namespace orv::platform
