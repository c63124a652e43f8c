#pragma once

#include "orvane-streamer/picture/PicturePace.h"
#include "orvane-streamer/picture/Tiles.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace orv::apps {

/// What one viewer has of the picture, what it lacks, and which frame it gets next.
///
/// Holds no pixels: a frame shows what the picture looks like when it is ordered.
class ViewerFrames {
public:
    using Time = std::chrono::steady_clock::time_point;

    struct Order {
        std::uint32_t frame = 0;
        TileBox tiles;
        /// An index of `kPictureLevels`.
        int level = 0;
    };

    /// The viewer has nothing of the picture yet.
    ViewerFrames(const TileGrid &grid, Time now) { startOver(grid, now); }

    /// It is another picture now, of which the viewer has nothing. Frames that are under way still
    /// count.
    void startOver(const TileGrid &grid, Time now);
    void changed(const TileSet &tiles, Time now);
    /// Frames that are not under way are ignored.
    void shown(std::uint32_t frame, Time now);

    /// Whether one more frame may be under way.
    [[nodiscard]] bool isReady() const;
    /// The frame to send now, if any; counts as sent.
    std::optional<Order> next(Time now);
    /// When `next` may have one though nothing changes and nothing is shown until then.
    [[nodiscard]] std::optional<Time> due() const;

private:
    struct Frame {
        std::uint32_t number = 0;
        Time sent;
        bool refines = false;
    };

    [[nodiscard]] TileBox longestLacking() const;
    [[nodiscard]] int levelNow(const TileBox &tiles, Time now);
    [[nodiscard]] std::optional<TileBox> toRefine(Time now) const;
    Order order(const TileBox &tiles, int level, bool refines, Time now);

    TileSet lacking_;
    /// Sent, at less than the best level.
    TileSet coarse_;
    std::vector<Time> lackingSince_;
    std::vector<Time> changedAt_;
    std::vector<Frame> underWay_;
    std::uint32_t lastFrame_ = 0;
    PicturePace pace_;
};

} // namespace orv::apps
