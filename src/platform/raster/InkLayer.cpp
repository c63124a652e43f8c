#include "platform/raster/InkLayer.h"

#include "platform/raster/BandPainter.h"
#include "platform/raster/DrawingExtent.h"
#include "platform/raster/DrawingRecorder.h"
#include "platform/raster/RasterContext.h"

#include <algorithm>
#include <utility>

namespace orv::platform {

namespace {

/// Small enough to lie close round a stroke, large enough to copy whole cache lines; a page of
/// memory.
constexpr int kTileSide = 32;
constexpr std::size_t kTileBytes = std::size_t{kTileSide} * kTileSide * sizeof(std::uint32_t);
/// So many undo steps in a row need no repaint after the list was painted as a whole.
constexpr std::size_t kRememberedThings = 64;
/// Many enough to keep all processors at work, few enough for their records to need little memory.
constexpr std::size_t kThingsOfALot = 1024;

} // namespace

InkLayer::InkLayer(const PixelGrid &grid, DrawingRecord prelude, drawing::State state)
    : grid_(grid), prelude_(std::move(prelude)), state_(std::move(state)),
      picture_(grid.pixelWidth(), grid.pixelHeight())
{
}

std::uint64_t InkLayer::stampBelow(std::size_t steps) const
{
    return steps == things_.size() ? stampBelowThings_ : things_[things_.size() - 1 - steps].stamp;
}

std::optional<std::size_t> InkLayer::stepsBackTo(const DrawnList &list) const
{
    for (std::size_t steps = 0; steps <= things_.size(); ++steps) {
        const std::size_t left = count_ - steps;
        if (left <= list.size() && list.stamp(left) == stampBelow(steps)) {
            // What is the last one then must be remembered, as it may change.
            const bool knowsLast = left == 0 || steps < things_.size();
            return knowsLast ? std::optional(steps) : std::nullopt;
        }
    }
    return std::nullopt;
}

DamagedPixels InkLayer::follow(const DrawnList &list)
{
    DamagedPixels damage;
    const auto steps = stepsBackTo(list);
    const bool isAllNew = steps && *steps == count_ && list.size() > kRememberedThings;
    if (steps && !isAllNew) {
        for (std::size_t step = 0; step < *steps; ++step) {
            takeLastAway(damage);
        }
        refreshLast(list, damage);
    } else {
        paintAll(list);
        damage.add({0, 0, picture_.width(), picture_.height()});
    }
    while (count_ < list.size()) {
        add(list);
        damage.add(things_.back().painted.rects());
    }
    return damage;
}

DrawingRecord InkLayer::recordOf(const DrawnList &list, std::size_t index) const
{
    DrawingRecorder recorder(grid_, state_);
    list.draw(index, recorder);
    return recorder.take();
}

void InkLayer::paintAll(const DrawnList &list)
{
    picture_ = Image(picture_.width(), picture_.height());
    things_.clear();
    savedBytes_ = 0;
    count_ = list.size() > kRememberedThings ? list.size() - kRememberedThings : 0;
    stampBelowThings_ = list.stamp(count_);
    std::vector<DrawingRecord> lot;
    for (std::size_t index = 0; index < count_; ++index) {
        lot.push_back(recordOf(list, index));
        if (lot.size() == kThingsOfALot || index + 1 == count_) {
            paintThings(picture_, grid_, prelude_, lot);
            lot.clear();
        }
    }
}

void InkLayer::add(const DrawnList &list)
{
    Thing thing;
    thing.stamp = list.stamp(count_ + 1);
    thing.record = recordOf(list, count_);
    thing.painted.add(extentOf(thing.record));
    things_.push_back(std::move(thing));
    ++count_;
    // Its rectangles may overlap: each is painted on the ground, not on another one.
    for (const PixelRect &area : things_.back().painted.rects()) {
        paintLast(area);
    }
    forgetOldest();
}

void InkLayer::refreshLast(const DrawnList &list, DamagedPixels &damage)
{
    if (things_.empty()) {
        return;
    }
    Thing &last = things_.back();
    DrawingRecord now = recordOf(list, count_ - 1);
    DamagedPixels changed;
    changed.add(differenceOf(last.record, now));
    last.record = std::move(now);
    last.painted.add(changed.rects());
    for (const PixelRect &area : changed.rects()) {
        paintLast(area);
    }
    damage.add(changed.rects());
    forgetOldest();
}

void InkLayer::takeLastAway(DamagedPixels &damage)
{
    const Thing &last = things_.back();
    for (const auto &[tile, pixels] : last.before) {
        putBack(last, tileRect(tile));
    }
    damage.add(last.painted.rects());
    savedBytes_ -= last.before.size() * kTileBytes;
    things_.pop_back();
    --count_;
}

void InkLayer::paintLast(const PixelRect &area)
{
    Thing &last = things_.back();
    saveBefore(last, area);
    putBack(last, area);
    RasterContext context(picture_, grid_, area);
    replay(prelude_, 0, prelude_.calls.size(), context);
    replay(last.record, 0, last.record.calls.size(), context);
}

void InkLayer::saveBefore(Thing &thing, const PixelRect &area)
{
    forEachTile(area, [&](int tile) {
        auto [place, isNew] = thing.before.try_emplace(tile);
        if (!isNew) {
            return;
        }
        const PixelRect rect = tileRect(tile);
        std::vector<std::uint32_t> &pixels = place->second;
        pixels.reserve(kTileBytes / sizeof(std::uint32_t));
        for (int y = rect.y; y < rect.y + rect.height; ++y) {
            const std::uint32_t *row = picture_.row(y) + rect.x;
            pixels.insert(pixels.end(), row, row + rect.width);
        }
        savedBytes_ += kTileBytes;
    });
}

void InkLayer::putBack(const Thing &thing, const PixelRect &area)
{
    forEachTile(area, [&](int tile) {
        const std::vector<std::uint32_t> &pixels = thing.before.at(tile);
        const PixelRect rect = tileRect(tile);
        const PixelRect part = rect.intersection(area);
        for (int y = part.y; y < part.y + part.height; ++y) {
            const auto row =
                static_cast<std::size_t>(y - rect.y) * static_cast<std::size_t>(rect.width) +
                static_cast<std::size_t>(part.x - rect.x);
            std::copy_n(pixels.data() + row, part.width, picture_.row(y) + part.x);
        }
    });
}

void InkLayer::forgetOldest()
{
    while (savedBytes_ > mostSavedBytes && things_.size() > 1) {
        savedBytes_ -= things_.front().before.size() * kTileBytes;
        stampBelowThings_ = things_.front().stamp;
        things_.pop_front();
    }
}

PixelRect InkLayer::tileRect(int tile) const
{
    const int perRow = (picture_.width() + kTileSide - 1) / kTileSide;
    return PixelRect{tile % perRow * kTileSide, tile / perRow * kTileSide, kTileSide, kTileSide}
        .intersection({0, 0, picture_.width(), picture_.height()});
}

template <class Visitor> void InkLayer::forEachTile(const PixelRect &area, Visitor &&visit) const
{
    const int perRow = (picture_.width() + kTileSide - 1) / kTileSide;
    for (int y = area.y / kTileSide; y * kTileSide < area.y + area.height; ++y) {
        for (int x = area.x / kTileSide; x * kTileSide < area.x + area.width; ++x) {
            visit(y * perRow + x);
        }
    }
}

} // namespace orv::platform
