#include "orvane-streamer/picture/ViewerFrames.h"

#include "orvane-streamer/picture/CoveringBoxes.h"
#include "orvane-streamer/picture/PictureLevels.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orv::apps {

namespace {

/// One is drawn while the next is on its way.
constexpr std::size_t kMostUnderWay = 2;
constexpr std::chrono::milliseconds kCalm(300);
/// Larger boxes take the second level first: at the best one they would hold up what comes next.
constexpr int kMostSharpTiles = 256;
/// A new stroke or a letter: few bytes whatever the level, and looked at while it comes.
constexpr int kFewTiles = 16;
constexpr int kBetterForFew = 2;
/// As kMostSharpTiles, for what nobody waits for.
constexpr int kMostRefinedTiles = 64;

/// Some of the tiles of a box, one of the set at least when the box is the bounds of the set in it.
TileBox firstTiles(const TileSet &set, const TileBox &box, int most)
{
    const int rows = std::clamp(most / (box.right - box.left), 1, box.bottom - box.top);
    TileBox first = boundsIn(set, {box.left, box.top, box.right, box.top + rows});
    first.right = std::min(first.right, first.left + most);
    return first;
}

} // namespace

void ViewerFrames::startOver(const TileGrid &grid, Time now)
{
    const TileSet none(grid);
    const auto count = static_cast<std::size_t>(grid.all().count());
    lacking_ = none;
    lacking_.add(grid.all());
    coarse_ = none;
    lackingSince_.assign(count, now);
    changedAt_.assign(count, now);
}

void ViewerFrames::changed(const TileSet &tiles, Time now)
{
    forEachTile(tiles, tiles.all(), [&](int column, int row) {
        const std::size_t index = lacking_.index(column, row);
        changedAt_[index] = now;
        if (!lacking_.has(column, row)) {
            lackingSince_[index] = now;
            lacking_.add({column, row, column + 1, row + 1});
        }
    });
}

void ViewerFrames::shown(std::uint32_t frame, Time now)
{
    const auto found = std::find_if(underWay_.begin(), underWay_.end(),
                                    [frame](const Frame &sent) { return sent.number == frame; });
    if (found == underWay_.end()) {
        return;
    }
    if (!found->refines) {
        pace_.drawn(found->sent, now);
    }
    underWay_.erase(found);
}

bool ViewerFrames::isReady() const
{
    return underWay_.size() < kMostUnderWay;
}

std::optional<ViewerFrames::Order> ViewerFrames::next(Time now)
{
    if (!isReady()) {
        return std::nullopt;
    }
    if (!lacking_.isEmpty()) {
        const TileBox tiles = longestLacking();
        return order(tiles, levelNow(tiles, now), false, now);
    }
    if (const auto tiles = toRefine(now)) {
        return order(*tiles, kBestLevel, true, now);
    }
    return std::nullopt;
}

std::optional<ViewerFrames::Time> ViewerFrames::due() const
{
    if (coarse_.isEmpty() || !lacking_.isEmpty() || !underWay_.empty()) {
        return std::nullopt;
    }
    Time first = Time::max();
    forEachTile(coarse_, coarse_.all(), [&](int column, int row) {
        first = std::min(first, changedAt_[coarse_.index(column, row)] + kCalm);
    });
    return first;
}

TileBox ViewerFrames::longestLacking() const
{
    // Else a small box that always changes would keep the others back for ever.
    using Rank = std::pair<Time, int>;
    Rank first(Time::max(), 0);
    TileBox chosen;
    for (const TileBox &box : coveringBoxes(lacking_)) {
        Rank rank(Time::max(), box.count());
        forEachTile(lacking_, box, [&](int column, int row) {
            rank.first = std::min(rank.first, lackingSince_[lacking_.index(column, row)]);
        });
        if (chosen.isEmpty() || rank < first) {
            first = rank;
            chosen = box;
        }
    }
    return chosen;
}

int ViewerFrames::levelNow(const TileBox &tiles, Time now)
{
    for (const Frame &frame : underWay_) {
        if (!frame.refines) {
            pace_.waiting(frame.sent, now);
        }
    }
    if (tiles.count() <= kFewTiles) {
        return std::max(pace_.level() - kBetterForFew, kBestLevel);
    }
    return std::max(pace_.level(), tiles.count() > kMostSharpTiles ? kBestLevel + 1 : kBestLevel);
}

std::optional<TileBox> ViewerFrames::toRefine(Time now) const
{
    // What changes meanwhile finds the second place free.
    if (coarse_.isEmpty() || !underWay_.empty()) {
        return std::nullopt;
    }
    TileSet calm = coarse_;
    forEachTile(coarse_, coarse_.all(), [&](int column, int row) {
        if (changedAt_[coarse_.index(column, row)] + kCalm > now) {
            calm.remove({column, row, column + 1, row + 1});
        }
    });
    if (calm.isEmpty()) {
        return std::nullopt;
    }
    return firstTiles(calm, coveringBoxes(calm).front(), kMostRefinedTiles);
}

ViewerFrames::Order ViewerFrames::order(const TileBox &tiles, int level, bool refines, Time now)
{
    lacking_.remove(tiles);
    if (level == kBestLevel) {
        coarse_.remove(tiles);
    } else {
        coarse_.add(tiles);
    }
    underWay_.push_back({++lastFrame_, now, refines});
    return {lastFrame_, tiles, level};
}

} // namespace orv::apps
