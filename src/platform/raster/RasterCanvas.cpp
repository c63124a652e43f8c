#include "platform/raster/RasterCanvas.h"

#include "platform/raster/ImageConversion.h"
#include "platform/raster/ImageSampler.h"
#include "platform/raster/PainterModes.h"
#include "platform/raster/PixelMath.h"

#include <QBrush>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orv::platform {

namespace {

/// Far below what the rasteriser tells apart (1/64), far above what rounding leaves.
constexpr double kPixelSlack = 1e-6;
/// Coordinates beyond this stand for "everywhere": they must fit into an int.
constexpr double kFar = 1e8;
/// Drawing seldom saves its state deeper.
constexpr std::size_t kUsualDepth = 4;
constexpr QImage::Format kPixels = QImage::Format_ARGB32_Premultiplied;

bool isUpright(const AffineTransform &transform)
{
    return (transform.b == 0.0 && transform.c == 0.0) || (transform.a == 0.0 && transform.d == 0.0);
}

Rect mapped(const Rect &rect, const AffineTransform &transform)
{
    const std::array<Point, 4> corners{
        transform.apply({rect.minX(), rect.minY()}), transform.apply({rect.maxX(), rect.minY()}),
        transform.apply({rect.maxX(), rect.maxY()}), transform.apply({rect.minX(), rect.maxY()})};
    double x0 = kFar;
    double y0 = kFar;
    double x1 = -kFar;
    double y1 = -kFar;
    for (const Point corner : corners) {
        x0 = std::max(-kFar, std::min(x0, corner.x));
        y0 = std::max(-kFar, std::min(y0, corner.y));
        x1 = std::min(kFar, std::max(x1, corner.x));
        y1 = std::min(kFar, std::max(y1, corner.y));
    }
    return x1 > x0 && y1 > y0 ? Rect::make(x0, y0, x1 - x0, y1 - y0) : Rect{};
}

PixelRect nearestPixels(const Rect &rect)
{
    const auto nearest = [](double edge) { return static_cast<int>(std::floor(edge + 0.5)); };
    const int x = nearest(rect.minX());
    const int y = nearest(rect.minY());
    return {x, y, nearest(rect.maxX()) - x, nearest(rect.maxY()) - y};
}

PixelRect touchedPixels(const Rect &rect)
{
    const int x = static_cast<int>(std::floor(rect.minX()));
    const int y = static_cast<int>(std::floor(rect.minY()));
    return {x, y, static_cast<int>(std::ceil(rect.maxX())) - x,
            static_cast<int>(std::ceil(rect.maxY())) - y};
}

bool isWhole(double edge)
{
    return std::abs(edge - std::round(edge)) < kPixelSlack;
}

bool isFinite(const Rect &rect)
{
    return std::isfinite(rect.minX()) && std::isfinite(rect.minY()) && std::isfinite(rect.maxX()) &&
           std::isfinite(rect.maxY());
}

QRect toolkitRect(const PixelRect &rect)
{
    return {rect.x, rect.y, rect.width, rect.height};
}

AffineTransform shifted(const AffineTransform &transform, const PixelRect &area)
{
    return transform.then(AffineTransform::translation(-area.x, -area.y));
}

void fadeRows(QImage &image, std::uint32_t alpha)
{
    for (int y = 0; alpha < 255 && y < image.height(); ++y) {
        fade(reinterpret_cast<std::uint32_t *>(image.scanLine(y)),
             static_cast<std::size_t>(image.width()), alpha);
    }
}

} // namespace

void RasterCanvas::Layer::beginPainter()
{
    if (image.isNull() && area.isEmpty()) {
        image = QImage(1, 1, kPixels);
    } else if (image.isNull()) {
        image = QImage(reinterpret_cast<uchar *>(pixels), area.width, area.height,
                       rowLength * static_cast<std::ptrdiff_t>(sizeof(std::uint32_t)), kPixels);
    }
    painter.emplace(&image);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setRenderHint(QPainter::TextAntialiasing);
}

RasterCanvas::RasterCanvas(const PixelBuffer &target, const PixelGrid &grid,
                           std::optional<PixelRect> clip)
{
    const PixelRect whole{0, 0, target.width, target.height};
    state_.transform = grid.toDevice();
    state_.clip = clip ? clip->intersection(whole) : whole;
    saved_.reserve(kUsualDepth);

    surface_.area = whole;
    surface_.pixels = target.pixels;
    surface_.rowLength = target.bytesPerRow / static_cast<std::ptrdiff_t>(sizeof(std::uint32_t));
}

RasterCanvas::~RasterCanvas()
{
    while (!layers_.empty()) {
        endLayer();
    }
    unwind();
}

void RasterCanvas::save()
{
    saved_.push_back(state_);
}

void RasterCanvas::restore()
{
    if (saved_.size() > layer().depth) {
        state_ = std::move(saved_.back());
        saved_.pop_back();
    }
}

void RasterCanvas::unwind()
{
    while (saved_.size() > layer().depth) {
        restore();
    }
}

void RasterCanvas::clip(const Rect &rect)
{
    RasterState &now = state();
    if (rect.isEmpty() || !isFinite(rect)) {
        now.clip = {};
    } else if (isUpright(now.transform)) {
        now.clip = now.clip.intersection(nearestPixels(mapped(rect, now.transform)));
    } else {
        now.clip = now.clip.intersection(touchedPixels(mapped(rect, now.transform)));
        QPainterPath path;
        path.addRect({rect.minX(), rect.minY(), rect.size.width, rect.size.height});
        now.turnedClips.push_back(
            std::make_shared<const QPainterPath>(painterTransform(now.transform).map(path)));
    }
}

void RasterCanvas::fitClip()
{
    Layer &target = layer();
    const RasterState &now = state();
    if (target.painter && target.paintersClip == now.clip &&
        target.paintersTurnedClips == now.turnedClips) {
        return;
    }
    if (!target.painter) {
        target.beginPainter();
    }
    QPainter &painter = *target.painter;
    painter.resetTransform();
    painter.setClipRect(toolkitRect(now.clip).translated(-target.area.x, -target.area.y));
    for (const auto &turned : now.turnedClips) {
        painter.setClipPath(turned->translated(-target.area.x, -target.area.y), Qt::IntersectClip);
    }
    target.paintersClip = now.clip;
    target.paintersTurnedClips = now.turnedClips;
}

QPainter &RasterCanvas::painter(QPainter::CompositionMode mode, const AffineTransform &toDevice)
{
    fitClip();
    QPainter &painter = *layer().painter;
    painter.setTransform(painterTransform(shifted(toDevice, layer().area)));
    painter.setCompositionMode(mode);
    return painter;
}

Rect RasterCanvas::visiblePoints()
{
    const PixelRect &clip = state().clip;
    return mapped(Rect::make(clip.x, clip.y, clip.width, clip.height),
                  state().transform.inverted());
}

std::optional<PixelRect> RasterCanvas::wholePixels(const Rect &rect)
{
    if (!isUpright(state().transform) || !isFinite(rect)) {
        return std::nullopt;
    }
    const Rect device = mapped(rect, state().transform);
    if (isWhole(device.minX()) && isWhole(device.minY()) && isWhole(device.maxX()) &&
        isWhole(device.maxY())) {
        return nearestPixels(device);
    }
    return std::nullopt;
}

std::uint32_t *RasterCanvas::pixels(int x, int y)
{
    const Layer &now = layer();
    return now.pixels + (y - now.area.y) * now.rowLength + (x - now.area.x);
}

void RasterCanvas::putBehind(const PixelRect &rect, std::uint32_t color)
{
    const PixelRect part = rect.intersection(state().clip).intersection(layer().area);
    for (int y = part.y; y < part.y + part.height; ++y) {
        fillBehind(pixels(part.x, y), static_cast<std::size_t>(part.width), color);
    }
}

StrokeMask &RasterCanvas::mask()
{
    const PixelRect visible = state().clip.intersection(layer().area);
    if (!mask_ || !(mask_->area() == visible)) {
        mask_.emplace(visible);
    }
    return *mask_;
}

void RasterCanvas::paintMask(std::uint32_t color)
{
    mask_->takeRows([&](const StrokeMask::Row &row) {
        paintCovered(pixels(row.x, row.y), row.coverage, row.count, color);
    });
}

void RasterCanvas::clearMask()
{
    mask_->takeRows([&](const StrokeMask::Row &row) {
        clearCovered(pixels(row.x, row.y), row.coverage, row.count);
    });
}

void RasterCanvas::drawPicture(const Image &picture, const AffineTransform &toDevice,
                               const QPainterPath &outline, QPainter::CompositionMode mode,
                               std::uint32_t alpha)
{
    const double det = toDevice.a * toDevice.d - toDevice.b * toDevice.c;
    if (!std::isfinite(det) || det == 0.0) {
        return;
    }
    const bool unscaled = std::abs(toDevice.a - 1.0) < kPixelSlack && toDevice.b == 0.0 &&
                          toDevice.c == 0.0 && std::abs(toDevice.d - 1.0) < kPixelSlack;
    if (!unscaled) {
        drawSampled(picture, toDevice, outline, mode, alpha);
        return;
    }
    const PixelRect place =
        nearestPixels(Rect::make(toDevice.tx, toDevice.ty, picture.width(), picture.height()));
    const PixelRect shown = place.intersection(state().clip).intersection(layer().area);
    if (shown.isEmpty()) {
        return;
    }
    const QRect part(shown.x - place.x, shown.y - place.y, shown.width, shown.height);
    QPainter &target = painter(mode, AffineTransform{});
    if (alpha == 255) {
        target.drawImage(QPoint(shown.x, shown.y), viewOf(picture), part);
    } else {
        QImage faded = viewOf(picture).copy(part);
        fadeRows(faded, alpha);
        target.drawImage(QPoint(shown.x, shown.y), faded);
    }
}

void RasterCanvas::drawSampled(const Image &picture, const AffineTransform &toDevice,
                               const QPainterPath &outline, QPainter::CompositionMode mode,
                               std::uint32_t alpha)
{
    const Rect box = mapped({{0.0, 0.0}, picture.size()}, toDevice);
    const PixelRect shown =
        touchedPixels(box).intersection(state().clip).intersection(layer().area);
    if (shown.isEmpty()) {
        return;
    }
    Image pixels = sampled(picture, toDevice, shown);
    if (alpha < 255) {
        fade(pixels.data(),
             static_cast<std::size_t>(shown.width) * static_cast<std::size_t>(shown.height), alpha);
    }
    QBrush brush(viewOf(pixels));
    brush.setTransform(QTransform::fromTranslate(shown.x, shown.y));
    painter(mode, AffineTransform{}).fillPath(outline, brush);
}

void RasterCanvas::beginLayer(std::uint32_t alpha)
{
    auto started = std::make_unique<Layer>();
    started->area = state().clip;
    started->alpha = alpha;
    save();
    started->depth = saved_.size();
    started->image =
        QImage(std::max(1, started->area.width), std::max(1, started->area.height), kPixels);
    started->image.fill(Qt::transparent);
    started->pixels = reinterpret_cast<std::uint32_t *>(started->image.bits());
    started->rowLength =
        started->image.bytesPerLine() / static_cast<std::ptrdiff_t>(sizeof(std::uint32_t));

    state().turnedClips.clear();
    state().blendMode = BlendMode::normal;
    layers_.push_back(std::move(started));
}

void RasterCanvas::endLayer()
{
    if (layers_.empty()) {
        return;
    }
    unwind();
    const std::unique_ptr<Layer> ended = std::move(layers_.back());
    layers_.pop_back();
    restore();
    ended->painter.reset();
    fadeRows(ended->image, ended->alpha);
    painter(QPainter::CompositionMode_SourceOver, AffineTransform{})
        .drawImage(QPoint(ended->area.x, ended->area.y), ended->image);
}

} // namespace orv::platform
