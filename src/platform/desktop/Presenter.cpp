#include "platform/desktop/Presenter.h"

#include "platform/desktop/InkRuns.h"
#include "platform/desktop/PixelDifference.h"
#include "platform/desktop/WindowShape.h"
#include "platform/desktop/WindowTraits.h"
#include "platform/raster/ImageConversion.h"

#include <QPainter>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace orv::platform {

namespace {

constexpr int kNeverVisible = 256;

int visibleAt(double alpha)
{
    const double from = window_traits::visibleFrom / std::max(alpha, 1e-6);
    return from > kNeverVisible ? kNeverVisible : static_cast<int>(std::ceil(from));
}

QRect qRect(const PixelRect &rect)
{
    return {rect.x, rect.y, rect.width, rect.height};
}

Image opaqueCopy(const Image &image, const PixelRect &rect)
{
    Image copy(rect.width, rect.height);
    for (int y = 0; y < rect.height; ++y) {
        const std::uint32_t *from = image.row(rect.y + y) + rect.x;
        std::transform(from, from + rect.width, copy.row(y), &opaqueColor);
    }
    return copy;
}

} // namespace

Presenter::Presenter(QWindow &window, const XConnection &x)
    : window_(window), x_(x), store_(&window)
{
}

void Presenter::setShaped(bool shaped, double alpha)
{
    const auto window = static_cast<xcb_window_t>(window_.winId());
    if (shaped) {
        if (!shape_) {
            shape_.emplace(x_, window);
        }
        visibleFrom_ = visibleAt(alpha);
        shape_->reset(shown_, visibleFrom_);
    } else if (shape_) {
        shape_.reset();
        WindowShape(x_, window).clear();
    }
    put({bounds()});
}

void Presenter::present(const Image &model, const PixelRect &within)
{
    PixelRect area = within;
    bool all = false;
    if (model.width() != shown_.width() || model.height() != shown_.height()) {
        shown_ = Image(model.width(), model.height());
        if (shape_) {
            shape_->reset(shown_, visibleFrom_);
        }
        area = bounds();
        all = true;
    }
    std::vector<PixelRect> changed = changedRects(shown_, model, area.intersection(bounds()));
    if (shape_ && !changed.empty()) {
        all = shape_->update(shown_, model, changed) || all;
    }
    for (const PixelRect &rect : changed) {
        copyPixels(model, shown_, rect);
    }
    if (all) {
        changed = {bounds()};
    }
    put(changed);
}

void Presenter::put(const std::vector<PixelRect> &rects)
{
    QRegion region;
    for (const PixelRect &rect : rects) {
        region += qRect(rect);
    }
    if (region.isEmpty()) {
        return;
    }
    store_.resize(QSize(shown_.width(), shown_.height()));
    store_.beginPaint(region);
    QPainter painter(store_.paintDevice());
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const PixelRect &rect : rects) {
        if (shape_) {
            const Image opaque = opaqueCopy(shown_, rect);
            painter.drawImage(QPoint(rect.x, rect.y), viewOf(opaque));
        } else {
            painter.drawImage(QPoint(rect.x, rect.y), viewOf(shown_), qRect(rect));
        }
    }
    painter.end();
    store_.endPaint();
    send(region);
}

void Presenter::expose(const QRegion &region)
{
    if (store_.size() == QSize(shown_.width(), shown_.height())) {
        send(region & qRect(bounds()));
    }
}

void Presenter::send(const QRegion &region)
{
    if (!window_.isVisible()) {
        return;
    }
    for (const QRect &rect : region) {
        pixelsSent_ +=
            static_cast<std::uint64_t>(rect.width()) * static_cast<std::uint64_t>(rect.height());
    }
    store_.flush(region, &window_);
}

} // namespace orv::platform
