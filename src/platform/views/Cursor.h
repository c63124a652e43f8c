#pragma once

#include "platform/values/Geometry.h"
#include "platform/views/PictureResource.h"

namespace orv::platform {

/// A pointer's look: its picture and the point of it that points, from the picture's top left
/// corner. Without a picture it is the desktop's arrow.
struct Cursor {
    PictureResourcePtr picture;
    Point hotSpot;

    friend bool operator==(const Cursor &, const Cursor &) = default;
};

} // namespace orv::platform
