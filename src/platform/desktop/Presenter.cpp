#include "platform/desktop/Presenter.h"

#include "platform/desktop/InkRuns.h"
#include "platform/desktop/PixelDifference.h"
#include "platform/desktop/WindowShape.h"
#include "platform/desktop/WindowTraits.h"

#include <QWindow>

#include <algorithm>
#include <cmath>
#include <span>

namespace orv::platform {

namespace {

constexpr int kNeverVisible = 256;
/// So few are sent sooner than those among them are found that have changed.
constexpr int kFewPixels = 64 * 64;

int visibleAt(double alpha)
{
    const double from = window_traits::visibleFrom / std::max(alpha, 1e-6);
    return from > kNeverVisible ? kNeverVisible : static_cast<int>(std::ceil(from));
}

} // namespace

Presenter::Presenter(QWindow &window, const XConnection &x)
    : window_(window), x_(x), pixels_(x, static_cast<xcb_window_t>(window.winId()))
{
}

Image Presenter::presented() const
{
    if (shaped_) {
        return shaped_->picture;
    }
    Image picture(pixels_.width(), pixels_.height());
    const auto count =
        static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height());
    std::copy_n(pixels_.data(), count, picture.data());
    return picture;
}

void Presenter::setShaped(bool shaped, double alpha)
{
    const auto window = static_cast<xcb_window_t>(window_.winId());
    const Image picture = presented();
    if (shaped) {
        if (!shaped_) {
            shaped_.emplace(Shaped{InkShape(x_, window), 1, picture});
        }
        shaped_->visibleFrom = visibleAt(alpha);
        shaped_->shape.reset(picture, shaped_->visibleFrom);
    } else if (shaped_) {
        shaped_.reset();
        WindowShape(x_, window).clear();
    }
    const PixelRect whole = bounds();
    keep(picture, whole);
    put({&whole, 1});
}

bool Presenter::fit(const Image &model)
{
    if (model.width() == pixels_.width() && model.height() == pixels_.height()) {
        return false;
    }
    pixels_.resize(model.width(), model.height());
    if (shaped_) {
        shaped_->picture = Image(model.width(), model.height());
        shaped_->shape.reset(shaped_->picture, shaped_->visibleFrom);
    }
    return true;
}

void Presenter::present(const Image &model, const std::vector<PixelRect> &within)
{
    bool all = fit(model);
    const PixelRect whole = bounds();
    const std::span areas = all ? std::span(&whole, 1) : std::span(within);
    std::vector<PixelRect> sent;
    for (const PixelRect &area : areas) {
        const PixelRect part = area.intersection(bounds());
        if (!shaped_ && part.width * part.height <= kFewPixels) {
            keep(model, part);
            sent.push_back(part);
            continue;
        }
        const std::vector<PixelRect> changed =
            shaped_ ? keepShaped(model, part, all)
                    : copyChanges(rowsOf(model), pixels_.row(0), part);
        sent.insert(sent.end(), changed.begin(), changed.end());
    }
    put(all ? std::span(&whole, 1) : std::span<const PixelRect>(sent));
}

std::vector<PixelRect> Presenter::keepShaped(const Image &model, const PixelRect &within, bool &all)
{
    std::vector<PixelRect> changed = changedRects(rowsOf(shaped_->picture), rowsOf(model), within);
    if (!changed.empty()) {
        all = shaped_->shape.update(shaped_->picture, model, changed) || all;
    }
    for (const PixelRect &rect : changed) {
        keep(model, rect);
    }
    return changed;
}

void Presenter::keep(const Image &model, const PixelRect &rect)
{
    if (shaped_) {
        copyPixels(model, shaped_->picture, rect);
    }
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
        const std::uint32_t *from = model.row(y) + rect.x;
        std::uint32_t *to = pixels_.row(y) + rect.x;
        if (shaped_) {
            std::transform(from, from + rect.width, to, &opaqueColor);
        } else {
            std::copy_n(from, rect.width, to);
        }
    }
}

void Presenter::expose(const QRegion &region)
{
    std::vector<PixelRect> rects;
    for (const QRect &lost : region) {
        const PixelRect rect{lost.x(), lost.y(), lost.width(), lost.height()};
        rects.push_back(rect.intersection(bounds()));
    }
    put(rects);
}

void Presenter::put(std::span<const PixelRect> rects)
{
    // A hidden window forgets its pixels; all of them are asked for when it is shown.
    if (!window_.isVisible()) {
        return;
    }
    for (const PixelRect &rect : rects) {
        pixels_.put(rect);
        pixelsSent_ +=
            static_cast<std::uint64_t>(rect.width) * static_cast<std::uint64_t>(rect.height);
    }
    x_.flush();
}

} // namespace orv::platform
