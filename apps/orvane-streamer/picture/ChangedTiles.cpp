#include "orvane-streamer/picture/ChangedTiles.h"

#include <algorithm>
#include <cstddef>

namespace orv::apps {

namespace {

constexpr std::uint32_t kColour = 0x00ffffff;

std::size_t offset(int x, int y, int width)
{
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
}

/// Without a branch for each pixel, so that the compiler can take several at once.
bool differs(const std::uint32_t *a, const std::uint32_t *b, int count)
{
    std::uint32_t difference = 0;
    for (int i = 0; i < count; ++i) {
        difference |= a[i] ^ b[i];
    }
    return (difference & kColour) != 0;
}

} // namespace

Picture::Picture(const TileGrid &tiles)
    : grid(tiles),
      pixels(static_cast<std::size_t>(tiles.width()) * static_cast<std::size_t>(tiles.height()))
{
}

void takeOver(Picture &picture, const TileBox &tiles, std::span<const std::uint32_t> fresh,
              TileSet &changed)
{
    const PixelBox box = picture.grid.pixels(tiles);
    for (int y = box.y; y < box.y + box.height; ++y) {
        const std::uint32_t *from = fresh.data() + offset(0, y - box.y, box.width);
        std::uint32_t *to = picture.pixels.data() + offset(box.x, y, picture.grid.width());
        if (!differs(from, to, box.width)) {
            continue;
        }
        const int row = y / TileGrid::kSide;
        for (int column = tiles.left; column < tiles.right; ++column) {
            const int x = column * TileGrid::kSide - box.x;
            const int width = std::min(TileGrid::kSide, box.width - x);
            if (!changed.has(column, row) && differs(from + x, to + x, width)) {
                changed.add({column, row, column + 1, row + 1});
            }
        }
        std::copy_n(from, box.width, to);
    }
}

} // namespace orv::apps
