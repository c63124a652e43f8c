#include "platform/raster/RasterContext.h"

#include "platform/raster/ImageConversion.h"
#include "platform/raster/ImageSampler.h"
#include "platform/raster/PainterModes.h"
#include "platform/raster/PainterPaths.h"
#include "platform/raster/PixelMath.h"
#include "platform/raster/RasterCanvas.h"
#include "platform/raster/TextLayout.h"

#include <algorithm>
#include <cmath>

namespace orv::platform {

namespace {

/// Pixels beyond a stroke's own reach that smoothing may touch.
constexpr double kSmoothingReach = 2.0;
std::uint32_t alphaByte(double alpha)
{
    return alpha > 0.0 ? static_cast<std::uint32_t>(std::lround(std::min(alpha, 1.0) * 255.0)) : 0;
}

/// The smaller and the larger factor by which a transform stretches the two axes.
std::pair<double, double> stretch(const AffineTransform &transform)
{
    return std::minmax(std::hypot(transform.a, transform.b), std::hypot(transform.c, transform.d));
}

Path rectPath(const Rect &rect, const AffineTransform &transform)
{
    Path path;
    path.moveTo(transform.apply({rect.minX(), rect.minY()}));
    path.lineTo(transform.apply({rect.maxX(), rect.minY()}));
    path.lineTo(transform.apply({rect.maxX(), rect.maxY()}));
    path.lineTo(transform.apply({rect.minX(), rect.maxY()}));
    path.close();
    return path;
}

} // namespace

RasterContext::RasterContext(const PixelBuffer &target, const PixelGrid &grid,
                             std::optional<PixelRect> clip)
    : canvas_(std::make_unique<RasterCanvas>(target, grid, clip))
{
}

RasterContext::RasterContext(Image &target, const PixelGrid &grid, std::optional<PixelRect> clip)
    : RasterContext(PixelBuffer{target.data(), target.width(), target.height(),
                                static_cast<std::ptrdiff_t>(target.width()) * 4},
                    grid, clip)
{
}

RasterContext::~RasterContext() = default;

void RasterContext::saveState()
{
    canvas_->save();
}

void RasterContext::restoreState()
{
    canvas_->restore();
}

void RasterContext::concatenate(const AffineTransform &transform)
{
    RasterState &state = canvas_->state();
    state.transform = transform.then(state.transform);
}

void RasterContext::clipToRect(const Rect &rect)
{
    canvas_->clip(rect);
}

void RasterContext::setBlendMode(BlendMode mode)
{
    canvas_->state().blendMode = mode;
}

void RasterContext::setLineWidth(double width)
{
    canvas_->state().stroke.width = width;
}

void RasterContext::setLineCap(LineCap cap)
{
    canvas_->state().stroke.cap = cap;
}

void RasterContext::setLineJoin(LineJoin join)
{
    canvas_->state().stroke.join = join;
}

void RasterContext::setLineDash(double phase, const std::vector<double> &lengths)
{
    canvas_->state().stroke.dashPhase = phase;
    canvas_->state().stroke.dashLengths = lengths;
}

void RasterContext::setStrokeColor(const Color &color)
{
    canvas_->state().strokeColor = color;
}

void RasterContext::setFillColor(const Color &color)
{
    canvas_->state().fillColor = color;
}

void RasterContext::strokePath(const Path &path)
{
    const RasterState &state = canvas_->state();
    const auto [narrow, wide] = stretch(state.transform);
    if (!(state.stroke.width > 0.0) || !std::isfinite(state.stroke.width) || !(narrow > 0.0)) {
        return;
    }
    const double reach = kSmoothingReach / narrow;
    const Rect visible = canvas_->visiblePoints().insetBy(-reach, -reach);
    const QPainterPath line = visibleLine(path, state.stroke, visible);
    if (line.isEmpty()) {
        return;
    }
    QPainter &painter = canvas_->painter(painterMode(state.blendMode), state.transform);
    painter.fillPath(strokeOutline(line, state.stroke, wide), painterColor(state.strokeColor));
}

void RasterContext::fillPath(const Path &path)
{
    const RasterState &state = canvas_->state();
    canvas_->painter(painterMode(state.blendMode), state.transform)
        .fillPath(fillOutline(path), painterColor(state.fillColor));
}

void RasterContext::fillRect(const Rect &rect, CompositingOperation operation)
{
    if (rect.isEmpty()) {
        return;
    }
    const RasterState &state = canvas_->state();
    const std::optional<PixelRect> pixels = canvas_->wholePixels(rect);
    if (pixels && operation == CompositingOperation::destinationOver && state.clipIsRect) {
        canvas_->putBehind(*pixels, pixelOf(state.fillColor));
        return;
    }
    const QColor color = painterColor(state.fillColor);
    QPainter &painter = canvas_->painter(painterMode(operation), AffineTransform{});
    if (pixels) {
        painter.fillRect(pixels->x, pixels->y, pixels->width, pixels->height, color);
    } else {
        painter.fillPath(fillOutline(rectPath(rect, state.transform)), color);
    }
}

void RasterContext::drawImage(const ImagePtr &image, const Rect &rect,
                              CompositingOperation operation, double fraction)
{
    if (!image || image->width() <= 0 || image->height() <= 0 || rect.isEmpty()) {
        return;
    }
    const double stepX = rect.size.width / image->width();
    const double stepY = rect.size.height / image->height();
    const AffineTransform toDevice =
        AffineTransform{stepX, 0.0, 0.0, -stepY, rect.minX(), rect.maxY()}.then(
            canvas_->state().transform);
    canvas_->drawPicture(*image, toDevice, fillOutline(rectPath(rect, canvas_->state().transform)),
                         painterMode(operation), alphaByte(fraction));
}

void RasterContext::drawText(std::u16string_view text, const Rect &rect, const Font &font,
                             TextAlignment alignment)
{
    if (text.empty() || rect.isEmpty()) {
        return;
    }
    const TextLayout layout(text, font, alignment, rect.size.width);
    canvas_->save();
    canvas_->clip(rect);
    const RasterState &state = canvas_->state();
    const AffineTransform topDown =
        AffineTransform{1.0, 0.0, 0.0, -1.0, rect.minX(), rect.maxY()}.then(state.transform);
    QPainter &painter = canvas_->painter(painterMode(state.blendMode), topDown);
    painter.setPen(painterColor(state.fillColor));
    layout.paint(painter);
    textPosition_ = topDown.apply(layout.end());
    canvas_->restore();
}

Size RasterContext::measureText(std::u16string_view text, const Font &font)
{
    return TextLayout(text, font).size();
}

void RasterContext::setTextPosition(Point position)
{
    textPosition_ = canvas_->state().transform.apply(position);
}

Point RasterContext::textPosition() const
{
    return canvas_->state().transform.inverted().apply(textPosition_);
}

void RasterContext::beginLayer(double alpha)
{
    canvas_->beginLayer(alphaByte(alpha));
}

void RasterContext::endLayer()
{
    canvas_->endLayer();
}

} // namespace orv::platform
