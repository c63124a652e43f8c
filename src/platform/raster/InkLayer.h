#pragma once

#include "platform/ports/DrawnList.h"
#include "platform/raster/DamagedPixels.h"
#include "platform/raster/DrawingRecord.h"
#include "platform/raster/PixelRect.h"
#include "platform/raster/TilePool.h"
#include "platform/values/Image.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace orv::platform {

/// The picture of a list of things on a transparent ground, kept from one frame to the next.
///
/// What a pixel shows depends on the list alone: a thing that comes is painted over what is there,
/// one that goes gives back the pixels that it had covered, and the last one, which may change, is
/// painted anew where it has changed, on the pixels from before it. So a stroke that grows costs
/// what it grows by, and one that is undone what it covers, however many lie below.
///
/// Memory   the picture, and of the newest things the pixels that they cover: `mostSavedBytes` at
///          most beside those of the last one; tiles that are at hand, see `TilePool`.
/// Units    device pixels, origin top left, y down.
class InkLayer {
public:
    static constexpr std::size_t mostSavedBytes = std::size_t{64} << 20U;

    /// `prelude` are the calls that led to `state`, in which the things are drawn; none paints.
    InkLayer(const PixelGrid &grid, DrawingRecord prelude, drawing::State state);

    /// Of how many of its last things this picture has to be freed for the rest to be a beginning
    /// of the list. Nothing when it does not remember so far back.
    [[nodiscard]] std::optional<std::size_t> stepsBackTo(const DrawnList &list) const;
    /// Shows the list; answers what has changed.
    DamagedPixels follow(const DrawnList &list);
    /// Has memory for the next steps at hand, so that `follow` need not wait for the system.
    void prepare() { pool_.prepare(); }

    [[nodiscard]] const Image &picture() const { return picture_; }
    [[nodiscard]] const drawing::State &state() const { return state_; }
    /// How many things are in the picture.
    [[nodiscard]] std::size_t count() const { return count_; }

private:
    struct SavedTile {
        int number;
        TilePool::Tile pixels;
    };
    /// A thing that can be changed and taken away.
    struct Thing {
        std::uint64_t stamp = 0;
        DrawingRecord record;
        DamagedPixels painted;
        /// What was there before it; all that it covers.
        std::vector<SavedTile> before;
    };

    [[nodiscard]] std::uint64_t stampBelow(std::size_t steps) const;
    [[nodiscard]] DrawingRecord recordOf(const DrawnList &list, std::size_t index,
                                         DrawingRecord memory = {}) const;
    void paintAll(const DrawnList &list);
    void add(const DrawnList &list);
    void refreshLast(const DrawnList &list, DamagedPixels &damage);
    void takeLastAway(DamagedPixels &damage);
    /// Paints the last thing within `area` on what was there before it.
    void paintLast(const PixelRect &area);
    /// Puts back what was there before the last thing, and keeps what it has not covered yet.
    void uncover(const PixelRect &area);
    void save(Thing &thing, int tile);
    void putBack(const SavedTile &tile, const PixelRect &area);
    /// Whether the tiles of the last thing are found by their place.
    void findLast(bool isFound);
    void forgetOldest();
    void giveBack(Thing &thing);
    [[nodiscard]] int tilesPerRow() const;
    [[nodiscard]] PixelRect tileRect(int tile) const;

    PixelGrid grid_;
    DrawingRecord prelude_;
    drawing::State state_;
    Image picture_;
    std::size_t count_ = 0;
    /// The newest last; below them lie things that are pixels only.
    std::deque<Thing> things_;
    std::uint64_t stampBelowThings_ = 0;
    std::size_t savedBytes_ = 0;
    /// Of each tile, where among those of the last thing it is, counted from 1; or 0.
    std::vector<std::uint32_t> placeInLast_;
    TilePool pool_;
    /// Memory for the record of the last thing's next look.
    DrawingRecord spare_;
};

} // namespace orv::platform
