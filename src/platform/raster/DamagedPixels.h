#pragma once

#include "platform/raster/PixelRect.h"

#include <vector>

namespace orv::platform {

/// The pixels of a surface that are to be painted again, as a few rectangles.
class DamagedPixels {
public:
    void add(const PixelRect &rect);
    void add(const std::vector<PixelRect> &rects)
    {
        for (const PixelRect &rect : rects) {
            add(rect);
        }
    }
    [[nodiscard]] bool isEmpty() const { return rects_.empty(); }
    /// None lies within another one, but they may overlap.
    [[nodiscard]] const std::vector<PixelRect> &rects() const { return rects_; }

private:
    std::vector<PixelRect> rects_;
};

} // namespace orv::platform
