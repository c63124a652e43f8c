#include "orvane-streamer/picture/ScreenRounds.h"

#include "orvane-streamer/picture/CoveringBoxes.h"

#include <algorithm>
#include <utility>

namespace orv::apps {

namespace {

using std::chrono::milliseconds;

/// No screen shows more pictures a second than this lets through.
constexpr milliseconds kRound(16);
constexpr milliseconds kUntoldRound(200);
/// A picture's size and places have to fit the 16 bits that a frame has for them.
constexpr int kLongestSide = 65535;

} // namespace

ScreenRounds::ScreenRounds(const ScreenArea &area, LivePicture::Sink sink)
    : damage_(connection_), pixels_(connection_), live_(std::move(sink)), area_(area)
{
    placePicture({});
}

void ScreenRounds::join(Viewer viewer, Time now)
{
    if (!live_.hasViewers()) {
        damage_.watch();
        unread_.add(live_.grid().all());
    }
    live_.join(viewer, now);
}

void ScreenRounds::leave(Viewer viewer)
{
    live_.leave(viewer);
    if (!live_.hasViewers()) {
        damage_.unwatch();
        wasDrawn_ = false;
    }
}

void ScreenRounds::setArea(const ScreenArea &area, Time now)
{
    area_ = area;
    placePicture(now);
}

void ScreenRounds::placePicture(Time now)
{
    const bool fits = std::max(area_.width, area_.height) <= kLongestSide;
    visible_ = fits ? onScreen(area_, connection_.width(), connection_.height()) : ScreenArea{};
    live_.startOver({{visible_.x - area_.x, visible_.y - area_.y, visible_.width, visible_.height},
                     area_.width,
                     area_.height},
                    now);
    unread_ = TileSet(live_.grid());
    unread_.add(live_.grid().all());
}

void ScreenRounds::run(Time now)
{
    takeEvents(now);
    if (live_.hasReadyViewer()) {
        if (mayHaveChanged() && now >= nextLook_) {
            look(now);
            nextLook_ = now + (isTold() ? kRound : kUntoldRound);
        }
        // Pixels that are known to be old can wait for the next look.
        if (!mayHaveChanged() || !isTold()) {
            live_.send(now);
        }
    }
    // An answer may have brought events with it, which the descriptor does not tell any more.
    takeEvents(now);
}

std::optional<ScreenRounds::Time> ScreenRounds::due() const
{
    if (mayHaveChanged() && live_.hasReadyViewer()) {
        return nextLook_;
    }
    return live_.due();
}

void ScreenRounds::takeEvents(Time now)
{
    while (const auto event = connection_.nextEvent()) {
        if (damage_.tells(*event)) {
            wasDrawn_ = true;
        } else if (connection_.resizes(*event)) {
            placePicture(now);
        }
    }
    if (!isTold()) {
        wasDrawn_ = live_.hasViewers();
    }
}

void ScreenRounds::look(Time now)
{
    wasDrawn_ = false;
    for (const ScreenArea &drawn : damage_.take()) {
        const ScreenArea inPicture =
            onScreen({drawn.x - visible_.x, drawn.y - visible_.y, drawn.width, drawn.height},
                     visible_.width, visible_.height);
        unread_.add(
            live_.grid().tiles({inPicture.x, inPicture.y, inPicture.width, inPicture.height}));
    }
    if (!isTold()) {
        unread_.add(live_.grid().all());
    }
    for (const TileBox &tiles : coveringBoxes(unread_)) {
        const PixelBox box = live_.grid().pixels(tiles);
        const auto fresh =
            pixels_.read({visible_.x + box.x, visible_.y + box.y, box.width, box.height});
        if (!fresh.empty()) {
            live_.update(tiles, fresh, now);
        }
    }
    unread_.remove(live_.grid().all());
}

} // namespace orv::apps
