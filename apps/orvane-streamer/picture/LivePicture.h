#pragma once

#include "orvane-streamer/picture/ChangedTiles.h"
#include "orvane-streamer/picture/FrameWriter.h"
#include "orvane-streamer/picture/ViewerFrames.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace orv::apps {

/// The last known pixels of the display and those who look at them.
///
/// Thread   one at a time; the sink is called from `send`.
class LivePicture {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Viewer = std::uint32_t;
    using Sink = std::function<void(Viewer viewer,
                                    std::shared_ptr<const std::vector<std::uint8_t>> message)>;

    /// Where the pixels that can be read lie in the picture that the viewers see.
    struct Place {
        PixelBox readable;
        int pictureWidth = 0;
        int pictureHeight = 0;
    };

    explicit LivePicture(Sink sink) : sink_(std::move(sink)) {}

    /// Another picture, black until it is updated. All viewers get it whole.
    void startOver(const Place &place, Time now);
    void join(Viewer viewer, Time now);
    void leave(Viewer viewer) { viewers_.erase(viewer); }
    /// Numbers that mean nothing are ignored.
    void shown(Viewer viewer, std::uint32_t frame, Time now);

    [[nodiscard]] const TileGrid &grid() const { return picture_.grid; }
    [[nodiscard]] bool hasViewers() const { return !viewers_.empty(); }
    /// Whether any viewer may be sent something.
    [[nodiscard]] bool hasReadyViewer() const;

    /// The present pixels of some tiles, row by row.
    void update(const TileBox &tiles, std::span<const std::uint32_t> fresh, Time now);
    /// Sends what viewers lack and may be sent.
    void send(Time now);
    /// When `send` may have something though nothing happens until then.
    [[nodiscard]] std::optional<Time> due() const;

private:
    struct CodedBox {
        TileBox tiles;
        int level = 0;
        std::vector<std::uint8_t> bytes;
    };

    const std::vector<std::uint8_t> &coded(std::vector<CodedBox> &made,
                                           const ViewerFrames::Order &order);

    Sink sink_;
    FrameWriter writer_;
    Place place_;
    Picture picture_;
    std::map<Viewer, ViewerFrames> viewers_;
};

} // namespace orv::apps
