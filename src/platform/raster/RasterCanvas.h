#pragma once

#include "platform/raster/PainterPaths.h"
#include "platform/raster/PixelRect.h"
#include "platform/raster/RasterContext.h"
#include "platform/raster/StrokeMask.h"

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
    /// The turned clips, in device pixels, of which all hold beside that.
    std::vector<std::shared_ptr<const QPainterPath>> turnedClips;
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

    [[nodiscard]] RasterState &state() { return state_; }
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

    /// A mask of all that may be painted, with nothing covered.
    StrokeMask &mask();
    /// Paints a premultiplied colour where the mask is covered, or clears there, and uncovers it.
    /// For a clip that is a rectangle.
    void paintMask(std::uint32_t color);
    void clearMask();

    void beginLayer(std::uint32_t alpha);
    /// Does nothing when no layer was begun.
    void endLayer();

private:
    struct Layer {
        /// What it has pixels for.
        PixelRect area;
        /// The first one, and how many there are from row to row.
        std::uint32_t *pixels = nullptr;
        std::ptrdiff_t rowLength = 0;
        std::uint32_t alpha = 255;
        /// How many states were saved when it began.
        std::size_t depth = 0;
        /// The pixels as the toolkit sees them. It and the painter are made for the first thing
        /// that the toolkit paints: strokes need neither.
        QImage image;
        std::optional<QPainter> painter;
        /// The clip that the painter has.
        PixelRect paintersClip;
        std::vector<std::shared_ptr<const QPainterPath>> paintersTurnedClips;

        void beginPainter();
    };

    Layer &layer() { return layers_.empty() ? surface_ : *layers_.back(); }
    /// Back to the state in which the present layer began.
    void unwind();
    /// Gives the present layer's painter the present clip.
    void fitClip();
    void drawSampled(const Image &picture, const AffineTransform &toDevice,
                     const QPainterPath &outline, QPainter::CompositionMode mode,
                     std::uint32_t alpha);

    std::uint32_t *pixels(int x, int y);

    Layer surface_;
    /// Those that were begun on it.
    std::vector<std::unique_ptr<Layer>> layers_;
    /// Made for the first stroke, and anew where the clip has changed.
    std::optional<StrokeMask> mask_;
    RasterState state_;
    std::vector<RasterState> saved_;
};

} // namespace orv::platform
