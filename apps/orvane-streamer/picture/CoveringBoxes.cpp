#include "orvane-streamer/picture/CoveringBoxes.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace orv::apps {

namespace {

constexpr std::size_t kMostBoxes = 4;
/// A box more costs the tables of a JPEG, a message and an answer. It has to save so many tiles,
/// and such a part of the box that it divides.
constexpr int kLeastSaved = 8;
constexpr int kLeastPart = 4;

struct Division {
    TileBox first;
    TileBox second;
    int saved = 0;
};

/// The best place to cut a row of strips in two, by what both sides need then.
Division bestCut(const std::vector<TileBox> &strips, int whole)
{
    std::vector<TileBox> behind(strips.size() + 1);
    for (std::size_t i = strips.size(); i > 0; --i) {
        behind[i - 1] = united(strips[i - 1], behind[i]);
    }
    Division best;
    TileBox before;
    for (std::size_t i = 0; i + 1 < strips.size(); ++i) {
        before = united(before, strips[i]);
        const int saved = whole - before.count() - behind[i + 1].count();
        if (saved > best.saved) {
            best = {before, behind[i + 1], saved};
        }
    }
    return best;
}

Division bestDivision(const TileSet &set, const TileBox &box)
{
    std::vector<TileBox> strips;
    for (int row = box.top; row < box.bottom; ++row) {
        strips.push_back(boundsIn(set, {box.left, row, box.right, row + 1}));
    }
    const Division byRows = bestCut(strips, box.count());
    strips.clear();
    for (int column = box.left; column < box.right; ++column) {
        strips.push_back(boundsIn(set, {column, box.top, column + 1, box.bottom}));
    }
    const Division byColumns = bestCut(strips, box.count());
    return byRows.saved >= byColumns.saved ? byRows : byColumns;
}

bool isWorthIt(const Division &division, const TileBox &box)
{
    return division.saved >= kLeastSaved && division.saved * kLeastPart >= box.count();
}

} // namespace

TileBox boundsIn(const TileSet &set, const TileBox &box)
{
    TileBox bounds;
    forEachTile(set, box, [&bounds](int column, int row) {
        bounds = united(bounds, {column, row, column + 1, row + 1});
    });
    return bounds;
}

std::vector<TileBox> coveringBoxes(const TileSet &set)
{
    if (set.isEmpty()) {
        return {};
    }
    std::vector<TileBox> boxes{boundsIn(set, set.all())};
    while (boxes.size() < kMostBoxes) {
        Division best;
        std::size_t divided = 0;
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            const Division division = bestDivision(set, boxes[i]);
            if (isWorthIt(division, boxes[i]) && division.saved > best.saved) {
                best = division;
                divided = i;
            }
        }
        if (best.saved == 0) {
            break;
        }
        boxes[divided] = best.first;
        boxes.push_back(best.second);
    }
    return boxes;
}

} // namespace orv::apps
