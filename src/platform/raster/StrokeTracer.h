#pragma once

#include "platform/raster/PainterPaths.h"
#include "platform/raster/StrokeMask.h"
#include "platform/values/Geometry.h"
#include "platform/values/Path.h"

namespace orv::platform {

/// Whether a stroke is a union of round-ended pieces that a `StrokeMask` can hold: round caps and
/// joins, and a transform that keeps circles round.
[[nodiscard]] bool isTraceable(const StrokeStyle &style, const AffineTransform &toDevice);

/// Adds a traceable stroke of `path`, dashes included, to the mask; `toDevice` takes the path's
/// coordinates to the mask's pixels. What can't reach into the mask's area is passed over.
///
/// A subpath without length is a dot, a move alone is nothing. Elements with coordinates that are
/// no numbers are left out.
void traceStroke(const Path &path, const StrokeStyle &style, const AffineTransform &toDevice,
                 StrokeMask &mask);

} // namespace orv::platform
