#include "platform/desktop/PointerLooks.h"

#include "platform/raster/ImageConversion.h"
#include "platform/raster/RasterContext.h"

#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace orv::platform {

namespace {

/// The X server refuses a cursor that points outside its picture.
int pixelInside(double points, double scale, int count)
{
    const double pixel = std::floor(points * scale);
    return static_cast<int>(std::clamp(pixel, 0.0, static_cast<double>(count - 1)));
}

QCursor cursorOf(const CursorRect &rect, double scale)
{
    const Image pixels = cursorPixels(rect.image, scale);
    if (pixels.width() <= 0 || pixels.height() <= 0) {
        return {Qt::ArrowCursor};
    }
    return QCursor(QPixmap::fromImage(qImageOf(pixels)),
                   pixelInside(rect.hotSpot.x, scale, pixels.width()),
                   pixelInside(rect.hotSpot.y, scale, pixels.height()));
}

} // namespace

Image cursorPixels(const ImagePtr &picture, double scale)
{
    if (!picture || picture->width() <= 0 || picture->height() <= 0) {
        return {0, 0};
    }
    const PixelGrid grid{picture->size(), scale};
    Image pixels(grid.pixelWidth(), grid.pixelHeight());
    RasterContext(pixels, grid)
        .drawImage(picture, {{}, picture->size()}, CompositingOperation::copy, 1.0);
    return pixels;
}

void PointerLooks::setRects(const std::vector<CursorRect> &rects)
{
    if (rects != rects_) {
        rects_ = rects;
        prepare();
    }
}

void PointerLooks::setScale(double scale)
{
    if (scale != scale_) {
        scale_ = scale;
        prepare();
    }
}

void PointerLooks::prepare()
{
    cursors_.clear();
    for (const CursorRect &rect : rects_) {
        cursors_.push_back(cursorOf(rect, scale_));
    }
}

const QCursor &PointerLooks::at(Point place) const
{
    const auto held = std::find_if(rects_.rbegin(), rects_.rend(), [place](const CursorRect &rect) {
        return rect.rect.containsMouse(place);
    });
    return held == rects_.rend()
               ? arrow_
               : cursors_[static_cast<std::size_t>(std::distance(held, rects_.rend())) - 1];
}

} // namespace orv::platform
