#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/raster/DamagedPixels.h"
#include "platform/raster/DrawingRecord.h"
#include "platform/raster/InkLayer.h"
#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orv::platform {

/// Paints a surface frame by frame, and of each frame only what differs from the one before.
///
/// The whole surface is drawn each time, into a record first; the pixels that the two records may
/// leave different are then painted anew. What is seen is, bit for bit, what a `RasterContext` over
/// the whole surface shows.
///
/// Memory   the pictures of `mostLayers` lists, so that a mode that is left and entered again, or a
///          wipe that is undone, paints nothing anew; see `InkLayer`. `forget` gives it back.
/// Thread   one.
class FramePainter {
public:
    static constexpr std::size_t mostLayers = 3;

    /// Shows what `draw` draws in `picture`, which holds the frame before, or anything after
    /// `forget`. Answers rectangles that hold every pixel which is another one now.
    std::vector<PixelRect> paint(Image &picture, const PixelGrid &grid,
                                 const std::function<void(GraphicsContext &context)> &draw);
    /// Does beforehand what the next frame would have to wait for. Best after this one is shown.
    void prepare();
    void forget();

private:
    InkLayer &layerFor(const DrawnList &list, const PixelGrid &grid, const DrawingRecord &prelude,
                       const drawing::State &state);
    void paintArea(Image &picture, const PixelRect &area, const InkLayer *ink) const;

    std::optional<PixelGrid> grid_;
    /// The frame before.
    DrawingRecord frame_;
    /// Memory for the next.
    DrawingRecord spare_;
    const InkLayer *shownLayer_ = nullptr;
    /// The one used last at the end.
    std::vector<std::unique_ptr<InkLayer>> layers_;
};

} // namespace orv::platform
