#include "platform/desktop/InkShape.h"

#include "platform/desktop/InkRuns.h"
#include "platform/desktop/WindowTraits.h"

#include <cstddef>
#include <utility>

namespace orv::platform {

void InkShape::count(const Image &image, int first, int end)
{
    for (int y = first; y < end; ++y) {
        const int runs = countRuns(image, y, visibleFrom_);
        runs_ += runs - std::exchange(runsOfRow_[static_cast<std::size_t>(y)], runs);
    }
}

void InkShape::reset(const Image &image, int visibleFrom)
{
    visibleFrom_ = visibleFrom;
    runsOfRow_.assign(static_cast<std::size_t>(image.height()), 0);
    runs_ = 0;
    count(image, 0, image.height());
    setAll(image);
}

void InkShape::setAll(const Image &image)
{
    coarse_ = runs_ > window_traits::maxShapeRuns;
    if (!coarse_) {
        shape_.set(inkRuns(image, 0, image.height(), visibleFrom_));
        return;
    }
    for (int step = 2;; step *= 2) {
        const std::vector<PixelRect> runs = coarseInkRuns(image, step, visibleFrom_);
        if (std::ssize(runs) <= window_traits::maxShapeRuns || step >= image.height()) {
            shape_.set(runs);
            return;
        }
    }
}

bool InkShape::update(const Image &before, const Image &after, const std::vector<PixelRect> &rects)
{
    for (const PixelRect &rect : rects) {
        count(after, rect.y, rect.y + rect.height);
    }
    if (coarse_ || runs_ > window_traits::maxShapeRuns) {
        setAll(after);
        return true;
    }
    InkChange change;
    for (const PixelRect &rect : rects) {
        collectInkChange(before, after, rect, visibleFrom_, change);
    }
    shape_.add(change.added);
    shape_.remove(change.removed);
    return false;
}

} // namespace orv::platform
