#pragma once

#include "platform/raster/PainterPaths.h"
#include "platform/raster/PixelRect.h"
#include "platform/raster/RasterContext.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace orv::platform {

/// What is set on a context, and stays set until it is restored.
struct RasterState {
    /// Present coordinates to device pixels of the whole surface.
    AffineTransform transform;
    /// Device pixels that may be painted; the box of the clip where that is turned.
    PixelRect clip;
    bool clipIsRect = true;
    BlendMode blendMode = BlendMode::normal;
    StrokeStyle stroke;
    Color strokeColor = Color::black();
    Color fillColor = Color::black();
};

/// What lies under a `RasterContext`: the stack of states, the stack of layers and their pixels.
///
/// Units    device pixels of the whole surface, origin top left, y down, where nothing else is
///          said. A layer has pixels only for what its clip lets through.
class RasterCanvas {
public:
    RasterCanvas(const PixelBuffer &target, const PixelGrid &grid, std::optional<PixelRect> clip);
    ~RasterCanvas();
    RasterCanvas(const RasterCanvas &) = delete;
    RasterCanvas &operator=(const RasterCanvas &) = delete;

    [[nodiscard]] RasterState &state() { return states_.back(); }
    void save();
    /// Never goes below the state in which the present layer began.
    void restore();
    /// Narrows the clip to a rectangle in present coordinates.
    void clip(const Rect &rect);

    /// The painter of the present layer, ready for coordinates that `toDevice` maps.
    QPainter &painter(QPainter::CompositionMode mode, const AffineTransform &toDevice);
    /// A box in present coordinates that holds all that may be painted.
    [[nodiscard]] Rect visiblePoints();
    /// The pixels of a rectangle in present coordinates, if its edges lie on pixel borders.
    [[nodiscard]] std::optional<PixelRect> wholePixels(const Rect &rect);

    /// Puts a premultiplied colour in behind what is there; for a clip that is a rectangle.
    void putBehind(const PixelRect &rect, std::uint32_t color);
    /// `outline` is the picture's area; `alpha` 0 to 255.
    void drawPicture(const Image &picture, const AffineTransform &toDevice,
                     const QPainterPath &outline, QPainter::CompositionMode mode,
                     std::uint32_t alpha);

    void beginLayer(std::uint32_t alpha);
    /// Does nothing when no layer was begun.
    void endLayer();

private:
    struct Layer {
        QImage image;
        /// What the image holds.
        PixelRect area;
        std::uint32_t alpha = 255;
        /// How many states there were below it.
        std::size_t depth = 0;
        QPainter painter;
    };

    Layer &layer() { return *layers_.back(); }
    /// Back to the state in which the present layer began.
    void unwind();
    void startPainting(std::unique_ptr<Layer> started);
    void drawSampled(const Image &picture, const AffineTransform &toDevice,
                     const QPainterPath &outline, QPainter::CompositionMode mode,
                     std::uint32_t alpha);

    std::vector<std::unique_ptr<Layer>> layers_;
    std::vector<RasterState> states_;
};

} // namespace orv::platform
