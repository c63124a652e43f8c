#include "platform/raster/FramePainter.h"

#include "platform/raster/DrawingExtent.h"
#include "platform/raster/DrawingRecorder.h"
#include "platform/raster/RasterContext.h"

#include <algorithm>
#include <utility>

namespace orv::platform {

namespace {

/// A few steps are always cheaper than a new picture; many are when most of the list stays.
constexpr std::size_t kFewSteps = 4;

bool isWorthSteppingBack(std::size_t steps, const DrawnList &list)
{
    return steps <= std::max(kFewSteps, list.size());
}

bool isSameGrid(const PixelGrid &a, const PixelGrid &b)
{
    return a.size == b.size && a.scale == b.scale;
}

} // namespace

void FramePainter::prepare()
{
    if (!layers_.empty()) {
        layers_.back()->prepare();
    }
}

void FramePainter::forget()
{
    grid_.reset();
    frame_ = {};
    spare_ = {};
    shownLayer_ = nullptr;
    layers_.clear();
}

std::vector<PixelRect>
FramePainter::paint(Image &picture, const PixelGrid &grid,
                    const std::function<void(GraphicsContext &context)> &draw)
{
    if (grid_ && !isSameGrid(*grid_, grid)) {
        forget();
    }
    const PixelRect whole{0, 0, picture.width(), picture.height()};
    DamagedPixels damage;
    const InkLayer *ink = nullptr;
    DrawingRecorder *recorderInUse = nullptr;
    const auto keepsList = [&](const DrawnList &list) {
        // Below a list that is kept lies nothing, or its things would have to mix with that.
        if (ink != nullptr || list.size() == 0 || !recorderInUse->record().marks.empty()) {
            return false;
        }
        InkLayer &layer = layerFor(list, grid, recorderInUse->record(), recorderInUse->state());
        damage.add(layer.follow(list).rects());
        ink = &layer;
        return true;
    };
    DrawingRecorder recorder(grid, keepsList, std::move(spare_));
    recorderInUse = &recorder;
    draw(recorder);
    DrawingRecord frame = recorder.take();
    if (!grid_ || ink != shownLayer_) {
        damage.add(whole);
    } else {
        damage.add(differenceOf(frame_, frame));
    }
    grid_ = grid;
    shownLayer_ = ink;
    spare_ = std::exchange(frame_, std::move(frame));
    spare_.clear();
    for (const PixelRect &area : damage.rects()) {
        paintArea(picture, area, ink);
    }
    return damage.rects();
}

void FramePainter::paintArea(Image &picture, const PixelRect &area, const InkLayer *ink) const
{
    for (int y = area.y; y < area.y + area.height; ++y) {
        if (ink == nullptr) {
            std::fill_n(picture.row(y) + area.x, area.width, 0U);
        } else {
            std::copy_n(ink->picture().row(y) + area.x, area.width, picture.row(y) + area.x);
        }
    }
    RasterContext context(picture, *grid_, area);
    replay(frame_, 0, frame_.calls.size(), context);
}

InkLayer &FramePainter::layerFor(const DrawnList &list, const PixelGrid &grid,
                                 const DrawingRecord &prelude, const drawing::State &state)
{
    const auto isOfThisPlace = [&](const auto &layer) { return layer->state() == state; };
    std::erase_if(layers_, [&](const auto &layer) { return !isOfThisPlace(layer); });
    auto best = layers_.end();
    std::size_t fewest = 0;
    for (auto layer = layers_.begin(); layer != layers_.end(); ++layer) {
        const auto steps = (*layer)->stepsBackTo(list);
        // Nearest is what has the fewest things to be painted or taken away.
        if (!steps || !isWorthSteppingBack(*steps, list)) {
            continue;
        }
        const std::size_t work = *steps + (list.size() - ((*layer)->count() - *steps));
        if (best == layers_.end() || work < fewest) {
            best = layer;
            fewest = work;
        }
    }
    if (best == layers_.end()) {
        // A new one may lie where the one shown lay.
        shownLayer_ = nullptr;
        if (layers_.size() == mostLayers) {
            layers_.erase(layers_.begin());
        }
        layers_.push_back(std::make_unique<InkLayer>(grid, prelude, state));
        return *layers_.back();
    }
    std::rotate(best, best + 1, layers_.end());
    return *layers_.back();
}

} // namespace orv::platform
