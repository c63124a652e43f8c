#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv::apps {

/// A box of a picture in pixels from its top left corner.
struct PixelBox {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PixelBox &) const = default;
};

/// A box of tiles; right and bottom lie behind the last ones.
struct TileBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    bool operator==(const TileBox &) const = default;

    [[nodiscard]] bool isEmpty() const { return left >= right || top >= bottom; }
    [[nodiscard]] int count() const { return isEmpty() ? 0 : (right - left) * (bottom - top); }
};

/// The smallest box that has both in it.
inline TileBox united(const TileBox &a, const TileBox &b)
{
    if (a.isEmpty() || b.isEmpty()) {
        return a.isEmpty() ? b : a;
    }
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

/// A picture in square tiles; those of the last column and row may be cut off.
class TileGrid {
public:
    /// In pixels. A multiple of 16, so that boxes of tiles begin where the blocks of a JPEG do.
    static constexpr int kSide = 32;

    TileGrid() = default;
    /// The picture's size in pixels.
    TileGrid(int width, int height) : width_(width), height_(height) {}

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] int columns() const { return (width_ + kSide - 1) / kSide; }
    [[nodiscard]] int rows() const { return (height_ + kSide - 1) / kSide; }
    [[nodiscard]] TileBox all() const { return {0, 0, columns(), rows()}; }

    [[nodiscard]] PixelBox pixels(const TileBox &tiles) const
    {
        const int x = tiles.left * kSide;
        const int y = tiles.top * kSide;
        return {x, y, std::min(tiles.right * kSide, width_) - x,
                std::min(tiles.bottom * kSide, height_) - y};
    }
    /// The tiles that a box of the picture touches.
    [[nodiscard]] TileBox tiles(const PixelBox &box) const
    {
        return {box.x / kSide, box.y / kSide, (box.x + box.width + kSide - 1) / kSide,
                (box.y + box.height + kSide - 1) / kSide};
    }

private:
    int width_ = 0;
    int height_ = 0;
};

/// Some of the tiles of a grid.
class TileSet {
public:
    TileSet() = default;
    explicit TileSet(const TileGrid &grid)
        : columns_(grid.columns()), marks_(static_cast<std::size_t>(grid.all().count()))
    {
    }

    [[nodiscard]] bool isEmpty() const { return count_ == 0; }
    [[nodiscard]] int columns() const { return columns_; }
    [[nodiscard]] TileBox all() const
    {
        const int size = static_cast<int>(marks_.size());
        return {0, 0, columns_, columns_ > 0 ? size / columns_ : 0};
    }
    [[nodiscard]] std::size_t index(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
               static_cast<std::size_t>(column);
    }
    [[nodiscard]] bool has(int column, int row) const { return marks_[index(column, row)] != 0; }

    void add(const TileBox &tiles) { mark(tiles, 1); }
    void remove(const TileBox &tiles) { mark(tiles, 0); }

private:
    void mark(const TileBox &tiles, std::uint8_t value)
    {
        for (int row = tiles.top; row < tiles.bottom; ++row) {
            for (int column = tiles.left; column < tiles.right; ++column) {
                std::uint8_t &tile = marks_[index(column, row)];
                count_ += value - tile;
                tile = value;
            }
        }
    }

    int columns_ = 0;
    int count_ = 0;
    std::vector<std::uint8_t> marks_;
};

/// Calls `visit(column, row)` for each tile of the box that the set has, row by row.
template <typename Visit>
void forEachTile(const TileSet &set, const TileBox &box, const Visit &visit)
{
    for (int row = box.top; row < box.bottom; ++row) {
        for (int column = box.left; column < box.right; ++column) {
            if (set.has(column, row)) {
                visit(column, row);
            }
        }
    }
}

} // namespace orv::apps
