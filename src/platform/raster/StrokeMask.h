#pragma once

#include "platform/raster/PixelRect.h"
#include "platform/values/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace orv::platform {

/// How much of each pixel a stroke with round ends and joins covers, from 0 to 255.
///
/// The stroke is the union of round-ended straight pieces, and a pixel is covered as much as by the
/// piece that covers it most. So the order of the pieces does not matter, nor does it whether those
/// that stay away from a pixel are there at all: a part of the mask is what the whole mask shows
/// there.
///
/// Units    device pixels of the surface, origin top left, y down.
class StrokeMask {
public:
    /// One row of what is covered; the pixels before and after are not.
    struct Row {
        int y;
        int x;
        const std::uint8_t *coverage;
        std::size_t count;
    };

    /// Holds the pixels of `area`; nothing is covered at first.
    explicit StrokeMask(const PixelRect &area);

    [[nodiscard]] const PixelRect &area() const { return area_; }
    /// Adds all that lies within `radius` of the straight line between two points. The radius is
    /// above 0.
    void add(Point from, Point to, double radius);
    /// Calls `visit(Row)` for each row that has something covered, from the top down, and uncovers
    /// it.
    template <class Visitor> void takeRows(Visitor &&visit)
    {
        for (int y = touchedTop_; y < touchedEnd_; ++y) {
            Touched &touched = touched_[static_cast<std::size_t>(y - area_.y)];
            if (touched.first < touched.end) {
                visit(Row{y, touched.first, pixel(touched.first, y),
                          static_cast<std::size_t>(touched.end - touched.first)});
                uncover(y);
            }
        }
        touchedTop_ = std::numeric_limits<int>::max();
        touchedEnd_ = std::numeric_limits<int>::min();
    }

private:
    /// Where a row may have something covered.
    struct Touched {
        int first = std::numeric_limits<int>::max();
        int end = std::numeric_limits<int>::min();
    };

    [[nodiscard]] std::uint8_t *pixel(int x, int y);
    void touch(int y, int first, int end);
    void uncover(int y);

    PixelRect area_;
    /// With room for a whole last step.
    std::size_t rowLength_;
    std::vector<std::uint8_t> coverage_;
    std::vector<Touched> touched_;
    int touchedTop_ = std::numeric_limits<int>::max();
    int touchedEnd_ = std::numeric_limits<int>::min();
};

} // namespace orv::platform
