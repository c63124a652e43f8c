#pragma once

#include "platform/desktop/WindowShape.h"
#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <vector>

namespace orv::platform {

/// Keeps a window's shape to the ink of its picture.
///
/// Few changes cost little: what is new is added and what went is taken away. Above the limit of
/// runs the shape is made anew of bands of rows, which show black beside the ink.
class InkShape {
public:
    InkShape(const XConnection &x, xcb_window_t window) : shape_(x, window) {}

    /// `visibleFrom`: the alpha, 1 to 256, from which a pixel is ink.
    void reset(const Image &image, int visibleFrom);
    /// `rects` hold all that changed from `before` to `after`, rects and pictures as in
    /// `changedRects`. True: the shape covers more than the ink, so that the whole picture is to
    /// be put again.
    [[nodiscard]] bool update(const Image &before, const Image &after,
                              const std::vector<PixelRect> &rects);

private:
    void count(const Image &image, int first, int end);
    void setAll(const Image &image);

    WindowShape shape_;
    int visibleFrom_ = 1;
    std::vector<int> runsOfRow_;
    int runs_ = 0;
    bool coarse_ = false;
};

} // namespace orv::platform
