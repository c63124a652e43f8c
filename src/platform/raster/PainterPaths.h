#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/values/Path.h"

#include <QPainterPath>
#include <QPen>

#include <vector>

namespace orv::platform {

/// How a line is drawn, in points.
struct StrokeStyle {
    double width = 1.0;
    LineCap cap = LineCap::butt;
    LineJoin join = LineJoin::miter;
    double dashPhase = 0.0;
    std::vector<double> dashLengths;
    friend bool operator==(const StrokeStyle &, const StrokeStyle &) = default;
};

/// How far a stroke reaches from its line, joins and caps included, in points.
[[nodiscard]] double strokeReach(const StrokeStyle &style);

/// A list without a positive length, or with one that is negative or no number, is no pattern.
[[nodiscard]] bool hasDashes(const StrokeStyle &style);

/// The whole path for filling, by the winding rule.
[[nodiscard]] QPainterPath fillOutline(const Path &path);

/// Those parts of a path whose stroke may reach into `visible`, in the path's coordinates.
///
/// A part that is left out ends far enough from `visible` for its cap or join to lie outside, so
/// that one stroke of what remains leaves the same pixels there as one of the whole. A subpath
/// that is closed, or drawn with dashes, stays whole.
[[nodiscard]] QPainterPath visibleLine(const Path &path, const StrokeStyle &style,
                                       const Rect &visible);

/// A pen without dashes.
[[nodiscard]] QPen solidPen(const StrokeStyle &style);

/// The area of the stroke, dashes included, to be filled; `scale` is device pixels a point.
[[nodiscard]] QPainterPath strokeOutline(const QPainterPath &line, const StrokeStyle &style,
                                         double scale);

} // namespace orv::platform
