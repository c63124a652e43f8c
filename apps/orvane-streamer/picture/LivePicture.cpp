#include "orvane-streamer/picture/LivePicture.h"

#include "orvane-streamer/picture/PictureLevels.h"

#include <algorithm>
#include <utility>

namespace orv::apps {

void LivePicture::startOver(const Place &place, Time now)
{
    place_ = place;
    picture_ = Picture(TileGrid(place.readable.width, place.readable.height));
    for (auto &[viewer, frames] : viewers_) {
        frames.startOver(picture_.grid, now);
    }
}

void LivePicture::join(Viewer viewer, Time now)
{
    viewers_.insert_or_assign(viewer, ViewerFrames(picture_.grid, now));
}

void LivePicture::shown(Viewer viewer, std::uint32_t frame, Time now)
{
    if (const auto found = viewers_.find(viewer); found != viewers_.end()) {
        found->second.shown(frame, now);
    }
}

bool LivePicture::hasReadyViewer() const
{
    return std::any_of(viewers_.begin(), viewers_.end(),
                       [](const auto &viewer) { return viewer.second.isReady(); });
}

void LivePicture::update(const TileBox &tiles, std::span<const std::uint32_t> fresh, Time now)
{
    TileSet changed(picture_.grid);
    takeOver(picture_, tiles, fresh, changed);
    if (changed.isEmpty()) {
        return;
    }
    for (auto &[viewer, frames] : viewers_) {
        frames.changed(changed, now);
    }
}

void LivePicture::send(Time now)
{
    std::vector<CodedBox> made;
    for (auto &[viewer, frames] : viewers_) {
        while (const auto order = frames.next(now)) {
            PixelBox box = picture_.grid.pixels(order->tiles);
            box.x += place_.readable.x;
            box.y += place_.readable.y;
            sink_(viewer, std::make_shared<const std::vector<std::uint8_t>>(FrameWriter::message(
                              {order->frame, box, place_.pictureWidth, place_.pictureHeight},
                              coded(made, *order))));
        }
    }
}

std::optional<LivePicture::Time> LivePicture::due() const
{
    std::optional<Time> first;
    for (const auto &[viewer, frames] : viewers_) {
        if (const auto due = frames.due(); due && (!first || *due < *first)) {
            first = due;
        }
    }
    return first;
}

const std::vector<std::uint8_t> &LivePicture::coded(std::vector<CodedBox> &made,
                                                    const ViewerFrames::Order &order)
{
    const auto same = [&order](const CodedBox &box) {
        return box.tiles == order.tiles && box.level == order.level;
    };
    if (const auto found = std::find_if(made.begin(), made.end(), same); found != made.end()) {
        return found->bytes;
    }
    const PictureLevel &level = kPictureLevels.at(static_cast<std::size_t>(order.level));
    made.push_back({order.tiles, order.level,
                    writer_.code(picture_, picture_.grid.pixels(order.tiles), level)});
    return made.back().bytes;
}

} // namespace orv::apps
