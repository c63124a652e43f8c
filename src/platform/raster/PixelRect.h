#pragma once

#include "platform/values/Geometry.h"

namespace orv::platform {

/// An upright rectangle of whole device pixels; origin at the top left of the surface, y down.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] bool isEmpty() const { return width <= 0 || height <= 0; }
    /// All zero when the two do not overlap.
    [[nodiscard]] PixelRect intersection(const PixelRect &other) const;

    friend bool operator==(const PixelRect &, const PixelRect &) = default;
};

/// How a surface in points lies in its device pixels: the one place where y turns over.
///
/// The top left corners meet, so that a size that is no whole number of pixels leaves the last row
/// and column partly used.
struct PixelGrid {
    /// Of the surface, in points.
    Size size;
    /// Device pixels a point, above 0.
    double scale = 1.0;

    /// Device pixels that hold the surface, rounded up; at least 1 each way.
    [[nodiscard]] int pixelWidth() const;
    [[nodiscard]] int pixelHeight() const;
    /// Points with y up to device pixels with y down.
    [[nodiscard]] AffineTransform toDevice() const;
    /// The pixels that `rect` touches, within the surface.
    [[nodiscard]] PixelRect pixelsTouching(const Rect &rect) const;
    /// The points that these pixels cover.
    [[nodiscard]] Rect points(const PixelRect &pixels) const;
};

} // namespace orv::platform
