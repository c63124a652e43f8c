#include "platform/raster/RasterContext.h"

#include "platform/raster/ImageConversion.h"
#include "platform/raster/ImageSampler.h"
#include "platform/raster/PainterModes.h"
#include "platform/raster/PainterPaths.h"
#include "platform/raster/PixelMath.h"
#include "platform/raster/RasterCanvas.h"
#include "platform/raster/StrokeTracer.h"
#include "platform/raster/TextLayout.h"

#include <QBrush>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace orv::platform {

namespace {

/// Pixels beyond a stroke's own reach that smoothing may touch.
constexpr double kSmoothingReach = 2.0;
/// A picture that fits its place but for this much is not stretched.
constexpr double kWholePixelSlack = 1e-6;
constexpr std::uint32_t kOpaque = 255;
/// A pattern that has more pixels than these in sight is reduced beyond recognition.
constexpr double kMaxPatternPixels = 64.0 * 1024.0 * 1024.0;

std::uint32_t alphaByte(double alpha)
{
    return alpha > 0.0 ? static_cast<std::uint32_t>(std::lround(std::min(alpha, 1.0) * 255.0)) : 0;
}

/// The smaller and the larger factor by which a transform stretches the two axes.
std::pair<double, double> stretch(const AffineTransform &transform)
{
    return std::minmax(std::hypot(transform.a, transform.b), std::hypot(transform.c, transform.d));
}

bool hasPixels(const Image *picture)
{
    return picture != nullptr && picture->width() > 0 && picture->height() > 0;
}

/// Puts a picture's pixels, with y down, into `rect`.
AffineTransform pixelsInto(const Rect &rect, const Image &picture)
{
    return {rect.size.width / picture.width(),    0.0,         0.0,
            -rect.size.height / picture.height(), rect.minX(), rect.maxY()};
}

/// A picture in the resolution that its place asks for.
struct PlacedPicture {
    const Image *picture;
    /// From the picture's pixels, with y down, to those of the device.
    AffineTransform toDevice;

    PlacedPicture(const Image &coarsest, const Rect &rect, const AffineTransform &transform)
        : picture(&coarsest), toDevice(pixelsInto(rect, coarsest).then(transform))
    {
        while (stretch(toDevice).second > 1.0 + kWholePixelSlack &&
               hasPixels(picture->finer().get())) {
            picture = picture->finer().get();
            toDevice = pixelsInto(rect, *picture).then(transform);
        }
    }
};

bool isUnstretched(const AffineTransform &transform)
{
    return transform.b == 0.0 && transform.c == 0.0 &&
           std::abs(transform.a - 1.0) < kWholePixelSlack &&
           std::abs(transform.d - 1.0) < kWholePixelSlack;
}

/// A pattern's pixels from (x, y) on, with y down, where (0, 0) is the first one of a copy.
Image patternPiece(const Image &tile, std::int64_t x, std::int64_t y, int width, int height)
{
    const auto within = [](std::int64_t place, std::int64_t length) {
        return static_cast<int>(((place % length) + length) % length);
    };
    Image piece(width, height);
    for (int row = 0; row < height; ++row) {
        const std::uint32_t *from = tile.row(within(y + row, tile.height()));
        std::uint32_t *to = piece.row(row);
        for (int done = 0; done < width;) {
            const int start = within(x + done, tile.width());
            const int count = std::min(tile.width() - start, width - done);
            std::copy_n(from + start, count, to + done);
            done += count;
        }
    }
    return piece;
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

/// The pattern pixel for pixel, its copies beginning at the nearest whole pixel.
void fillWithCopies(RasterCanvas &canvas, const Rect &rect, const PlacedPicture &tile,
                    QPainter::CompositionMode mode)
{
    const auto offset = [](double place, int length) {
        return std::fmod(std::floor(place + 0.5), static_cast<double>(length));
    };
    QBrush brush(viewOf(*tile.picture));
    brush.setTransform(QTransform::fromTranslate(offset(tile.toDevice.tx, tile.picture->width()),
                                                 offset(tile.toDevice.ty, tile.picture->height())));
    const std::optional<PixelRect> pixels = canvas.wholePixels(rect);
    QPainter &painter = canvas.painter(mode, AffineTransform{});
    if (pixels) {
        // Smoothed, a row at the edge of some clips comes out one step short of whole.
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.fillRect(pixels->x, pixels->y, pixels->width, pixels->height, brush);
        painter.setRenderHint(QPainter::Antialiasing, true);
    } else {
        painter.fillPath(fillOutline(rectPath(rect, canvas.state().transform)), brush);
    }
}

/// What is in sight of the pattern as one picture, so that no seams show where its copies meet
/// between device pixels. `size` is that of a copy, in points.
void fillWithOnePiece(RasterCanvas &canvas, const Rect &rect, const PlacedPicture &tile, Size size,
                      QPainter::CompositionMode mode)
{
    const Rect area = rect.intersection(canvas.visiblePoints());
    const AffineTransform toPixels = pixelsInto({{0.0, 0.0}, size}, *tile.picture).inverted();
    const Point topLeft = toPixels.apply({area.minX(), area.maxY()});
    const Point bottomRight = toPixels.apply({area.maxX(), area.minY()});
    // One pixel more each way, for what lies half a pixel from the edge is smoothed with it.
    const double x = std::floor(topLeft.x) - 1.0;
    const double y = std::floor(topLeft.y) - 1.0;
    const double width = std::ceil(bottomRight.x) + 1.0 - x;
    const double height = std::ceil(bottomRight.y) + 1.0 - y;
    if (area.isEmpty() || !(width * height <= kMaxPatternPixels)) {
        return;
    }
    const Image piece =
        patternPiece(*tile.picture, static_cast<std::int64_t>(x), static_cast<std::int64_t>(y),
                     static_cast<int>(width), static_cast<int>(height));
    canvas.drawPicture(piece, AffineTransform::translation(x, y).then(tile.toDevice),
                       fillOutline(rectPath(rect, canvas.state().transform)), mode, kOpaque);
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
    const bool clears = state.blendMode == BlendMode::clear;
    if ((clears || state.blendMode == BlendMode::normal) && state.turnedClips.empty() &&
        isTraceable(state.stroke, state.transform)) {
        traceStroke(path, state.stroke, state.transform, canvas_->mask());
        clears ? canvas_->clearMask() : canvas_->paintMask(pixelOf(state.strokeColor));
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
    if (pixels && operation == CompositingOperation::destinationOver && state.turnedClips.empty()) {
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
    if (!hasPixels(image.get()) || rect.isEmpty()) {
        return;
    }
    const AffineTransform &transform = canvas_->state().transform;
    const PlacedPicture placed(*image, rect, transform);
    canvas_->drawPicture(*placed.picture, placed.toDevice, fillOutline(rectPath(rect, transform)),
                         painterMode(operation), alphaByte(fraction));
}

void RasterContext::fillPattern(const Rect &rect, const ImagePtr &image,
                                CompositingOperation operation)
{
    if (!hasPixels(image.get()) || rect.isEmpty()) {
        return;
    }
    const AffineTransform &transform = canvas_->state().transform;
    const PlacedPicture tile(*image, {{0.0, 0.0}, image->size()}, transform);
    if (isUnstretched(tile.toDevice)) {
        fillWithCopies(*canvas_, rect, tile, painterMode(operation));
    } else {
        fillWithOnePiece(*canvas_, rect, tile, image->size(), painterMode(operation));
    }
}

void RasterContext::drawText(std::u16string_view text, const Rect &rect, const Font &font,
                             TextAlignment alignment)
{
    if (text.empty()) {
        return;
    }
    const TextLayout layout(text, font, alignment, rect.size.width);
    if (layout.size().height <= 0.0) {
        return;
    }
    const AffineTransform topDown =
        AffineTransform{1.0, 0.0, 0.0, -1.0, rect.minX(), rect.maxY()}.then(
            canvas_->state().transform);
    // Characters without width need a place too, though their rectangle shows nothing.
    textPosition_ = topDown.apply(layout.end());
    if (rect.isEmpty()) {
        return;
    }
    canvas_->save();
    canvas_->clip(rect);
    const RasterState &state = canvas_->state();
    QPainter &painter = canvas_->painter(painterMode(state.blendMode), topDown);
    painter.setPen(painterColor(state.fillColor));
    layout.paint(painter);
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
