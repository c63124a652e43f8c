#include "platform/raster/InkLayer.h"

#include "platform/raster/BandPainter.h"
#include "platform/raster/DrawingExtent.h"
#include "platform/raster/DrawingRecorder.h"
#include "platform/raster/RasterContext.h"

#include <algorithm>
#include <utility>

namespace orv::platform {

namespace {

constexpr int kTileSide = TilePool::side;
constexpr std::size_t kTileBytes = sizeof(TilePool::Pixels);

int tilesFor(int length)
{
    return (length + kTileSide - 1) / kTileSide;
}

/// So many undo steps in a row need no repaint after the list was painted as a whole.
constexpr std::size_t kRememberedThings = 64;
/// Many enough to keep all processors at work, few enough for their records to need little memory.
constexpr std::size_t kThingsOfALot = 1024;

} // namespace

InkLayer::InkLayer(const PixelGrid &grid, DrawingRecord prelude, drawing::State state)
    : grid_(grid), prelude_(std::move(prelude)), state_(std::move(state)),
      picture_(grid.pixelWidth(), grid.pixelHeight()),
      placeInLast_(static_cast<std::size_t>(tilesPerRow()) * tilesFor(picture_.height()))
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

DrawingRecord InkLayer::recordOf(const DrawnList &list, std::size_t index,
                                 DrawingRecord memory) const
{
    DrawingRecorder recorder(grid_, state_, std::move(memory));
    list.draw(index, recorder);
    return recorder.take();
}

void InkLayer::paintAll(const DrawnList &list)
{
    picture_ = Image(picture_.width(), picture_.height());
    findLast(false);
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
    findLast(false);
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
    DrawingRecord now = recordOf(list, count_ - 1, std::move(spare_));
    DamagedPixels changed;
    changed.add(differenceOf(last.record, now));
    spare_ = std::exchange(last.record, std::move(now));
    spare_.clear();
    last.painted.add(changed.rects());
    for (const PixelRect &area : changed.rects()) {
        paintLast(area);
    }
    damage.add(changed.rects());
    forgetOldest();
}

void InkLayer::takeLastAway(DamagedPixels &damage)
{
    Thing &last = things_.back();
    for (const SavedTile &tile : last.before) {
        putBack(tile, tileRect(tile.number));
    }
    damage.add(last.painted.rects());
    findLast(false);
    giveBack(last);
    things_.pop_back();
    findLast(true);
    --count_;
}

void InkLayer::paintLast(const PixelRect &area)
{
    const Thing &last = things_.back();
    uncover(area);
    RasterContext context(picture_, grid_, area);
    replay(prelude_, 0, prelude_.calls.size(), context);
    replay(last.record, 0, last.record.calls.size(), context);
}

void InkLayer::uncover(const PixelRect &area)
{
    Thing &last = things_.back();
    const int perRow = tilesPerRow();
    for (int y = area.y / kTileSide; y * kTileSide < area.y + area.height; ++y) {
        for (int x = area.x / kTileSide; x * kTileSide < area.x + area.width; ++x) {
            const int tile = y * perRow + x;
            const std::uint32_t place = placeInLast_[static_cast<std::size_t>(tile)];
            if (place == 0) {
                save(last, tile);
            } else {
                putBack(last.before[place - 1], area);
            }
        }
    }
}

void InkLayer::save(Thing &thing, int tile)
{
    thing.before.push_back({tile, pool_.take()});
    const PixelRect rect = tileRect(tile);
    std::uint32_t *saved = thing.before.back().pixels->data();
    for (int y = rect.y; y < rect.y + rect.height; ++y, saved += kTileSide) {
        std::copy_n(picture_.row(y) + rect.x, rect.width, saved);
    }
    placeInLast_[static_cast<std::size_t>(tile)] = static_cast<std::uint32_t>(thing.before.size());
    savedBytes_ += kTileBytes;
}

void InkLayer::putBack(const SavedTile &tile, const PixelRect &area)
{
    const PixelRect rect = tileRect(tile.number);
    const PixelRect part = rect.intersection(area);
    const auto first = static_cast<std::ptrdiff_t>(part.y - rect.y) * kTileSide + part.x - rect.x;
    const std::uint32_t *saved = tile.pixels->data() + first;
    for (int y = part.y; y < part.y + part.height; ++y, saved += kTileSide) {
        std::copy_n(saved, part.width, picture_.row(y) + part.x);
    }
}

void InkLayer::findLast(bool isFound)
{
    if (things_.empty()) {
        return;
    }
    std::uint32_t place = 0;
    for (const SavedTile &tile : things_.back().before) {
        placeInLast_[static_cast<std::size_t>(tile.number)] = isFound ? ++place : 0;
    }
}

void InkLayer::forgetOldest()
{
    while (savedBytes_ > mostSavedBytes && things_.size() > 1) {
        giveBack(things_.front());
        stampBelowThings_ = things_.front().stamp;
        things_.pop_front();
    }
}

void InkLayer::giveBack(Thing &thing)
{
    savedBytes_ -= thing.before.size() * kTileBytes;
    for (SavedTile &tile : thing.before) {
        pool_.giveBack(std::move(tile.pixels));
    }
    thing.before.clear();
}

int InkLayer::tilesPerRow() const
{
    return tilesFor(picture_.width());
}

PixelRect InkLayer::tileRect(int tile) const
{
    const int perRow = tilesPerRow();
    return PixelRect{tile % perRow * kTileSide, tile / perRow * kTileSide, kTileSide, kTileSide}
        .intersection({0, 0, picture_.width(), picture_.height()});
}

} // namespace orv::platform
