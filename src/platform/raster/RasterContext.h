#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace orv::platform {

/// Pixels that somebody else owns: premultiplied 0xAARRGGBB, rows from the top down.
struct PixelBuffer {
    std::uint32_t *pixels = nullptr;
    int width = 0;
    int height = 0;
    /// From one row to the next.
    std::ptrdiff_t bytesPerRow = 0;
};

class RasterCanvas;

/// The rasteriser: paints what the logic draws into pixels in memory, with smooth edges.
///
/// What a pixel becomes depends on nothing but what is drawn over it: painting under a clip, into
/// tiles or whole gives the same bits. No display is needed.
///
/// Owner    borrows the pixels, which outlive it. They are up to date when it is destroyed.
/// Units    those of the interface; the scale factor comes in through the constructor alone.
/// Fails    numbers that are not finite paint nothing; a layer that was not ended comes down when
///          the context goes.
class RasterContext final : public GraphicsContext {
public:
    /// The surface is `grid.size` points big, its top left corner lies at that of the pixels. Only
    /// pixels in `clip` are touched, if there is one. Nothing is cleared.
    RasterContext(const PixelBuffer &target, const PixelGrid &grid,
                  std::optional<PixelRect> clip = std::nullopt);
    RasterContext(Image &target, const PixelGrid &grid,
                  std::optional<PixelRect> clip = std::nullopt);
    ~RasterContext() override;
    RasterContext(const RasterContext &) = delete;
    RasterContext &operator=(const RasterContext &) = delete;

    void saveState() override;
    void restoreState() override;
    void concatenate(const AffineTransform &transform) override;
    /// Edges that are not turned come to the nearest pixel border.
    void clipToRect(const Rect &rect) override;
    void setBlendMode(BlendMode mode) override;
    /// Nothing is stroked with a width of 0 or less.
    void setLineWidth(double width) override;
    void setLineCap(LineCap cap) override;
    void setLineJoin(LineJoin join) override;
    /// A list without a positive length is a solid line. Phase and lengths count along the path.
    void setLineDash(double phase, const std::vector<double> &lengths) override;
    void setStrokeColor(const Color &color) override;
    void setFillColor(const Color &color) override;
    /// A part of the path without length is a dot under a round cap, a square under a square one.
    void strokePath(const Path &path) override;
    void fillPath(const Path &path) override;
    void fillRect(const Rect &rect, CompositingOperation operation) override;
    /// Pixel by pixel where it is neither scaled nor turned, else smoothed. The finer one where a
    /// pixel would cover more than one of the device.
    void drawImage(const ImagePtr &image, const Rect &rect, CompositingOperation operation,
                   double fraction) override;
    /// As `drawImage` where copies come to whole pixels, else without seams between them. A pattern
    /// that is reduced until 64 million of its pixels are in sight paints nothing.
    void fillPattern(const Rect &rect, const ImagePtr &image,
                     CompositingOperation operation) override;
    void drawText(std::u16string_view text, const Rect &rect, const Font &font,
                  TextAlignment alignment) override;
    [[nodiscard]] Size measureText(std::u16string_view text, const Font &font) override;
    void setTextPosition(Point position) override;
    [[nodiscard]] Point textPosition() const override;
    /// A layer begins with blend mode normal; it comes down over what is there.
    void beginLayer(double alpha) override;
    void endLayer() override;

private:
    std::unique_ptr<RasterCanvas> canvas_;
    /// In device pixels.
    Point textPosition_;
};

} // namespace orv::platform
