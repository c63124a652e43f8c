#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace orv::platform {

/// Memory for square pieces of a picture, at hand before it is needed.
///
/// A page that a program touches for the first time costs more than a step of a stroke does, so
/// `prepare` touches some while nobody waits.
///
/// Thread   one.
class TilePool {
public:
    /// Of a tile, in pixels. Small enough to lie close round a stroke; its rows are cache lines.
    static constexpr int side = 16;
    using Pixels = std::array<std::uint32_t, std::size_t{side} * side>;
    using Tile = std::unique_ptr<Pixels>;
    /// Some more than a quick step with a wide pen comes upon.
    static constexpr std::size_t prepared = 128;

    /// With any pixels in it. Asks the system for memory when none is left.
    [[nodiscard]] Tile take();
    void giveBack(Tile tile);
    /// Has `prepared` tiles at hand.
    void prepare();
    [[nodiscard]] std::size_t ready() const { return tiles_.size(); }

private:
    std::vector<Tile> tiles_;
};

} // namespace orv::platform
