#pragma once

#include "platform/values/Geometry.h"

#include <QPointF>
#include <QRect>

#include <cmath>

namespace orv::platform {

/// How the desktop's points lie in the X screen's pixels: the one place where a global y turns over
/// and where the scale factor comes in.
///
/// Units    points: origin bottom left of the main display, y up. Pixels: origin top left of the
///          X screen, y down.
struct DeviceSpace {
    /// Device pixels a point, above 0.
    double scale = 1.0;
    /// The bottom left corner of the main display, in pixels.
    int originX = 0;
    int originY = 0;

    [[nodiscard]] Point toPoints(const QPointF &pixel) const
    {
        return {(pixel.x() - originX) / scale, (originY - pixel.y()) / scale};
    }
    [[nodiscard]] Rect toPoints(const QRect &pixels) const
    {
        return Rect::make((pixels.x() - originX) / scale,
                          (originY - pixels.y() - pixels.height()) / scale, pixels.width() / scale,
                          pixels.height() / scale);
    }
    /// The pixel nearest to the top left corner; the size as a pixel grid of that size has it.
    [[nodiscard]] QPoint topLeft(const Rect &points) const
    {
        return {originX + static_cast<int>(std::lround(points.minX() * scale)),
                originY - static_cast<int>(std::lround(points.maxY() * scale))};
    }

    friend bool operator==(const DeviceSpace &, const DeviceSpace &) = default;
};

} // namespace orv::platform
