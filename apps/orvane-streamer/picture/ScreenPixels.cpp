#include "orvane-streamer/picture/ScreenPixels.h"

#include <algorithm>
#include <cstddef>

namespace orv::apps {

namespace {

constexpr std::uint32_t kAllPlanes = 0xffffffff;

std::size_t pixelCount(int width, int height)
{
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

} // namespace

std::span<const std::uint32_t> ScreenPixels::read(const ScreenArea &area)
{
    if (onScreen(area, connection_.width(), connection_.height()) != area || area.width <= 0) {
        return {};
    }
    const std::size_t count = pixelCount(area.width, area.height);
    if (!isUnshared_ && (shared_ == nullptr || shared_->pixels().size() < count)) {
        const std::size_t whole = pixelCount(connection_.width(), connection_.height());
        shared_.reset();
        shared_ = std::make_unique<SharedPixels>(connection_.get(), whole);
        isUnshared_ = shared_->pixels().empty();
    }
    if (!isUnshared_) {
        return readShared(area) ? shared_->pixels().first(count) : std::span<const std::uint32_t>();
    }
    image_.reset(xcb_get_image_reply(
        connection_.get(),
        xcb_get_image_unchecked(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection_.root(),
                                static_cast<std::int16_t>(area.x),
                                static_cast<std::int16_t>(area.y),
                                static_cast<std::uint16_t>(area.width),
                                static_cast<std::uint16_t>(area.height), kAllPlanes),
        nullptr));
    if (image_ == nullptr) {
        return {};
    }
    const auto bytes = static_cast<std::size_t>(xcb_get_image_data_length(image_.get()));
    const auto *pixels = reinterpret_cast<const std::uint32_t *>(xcb_get_image_data(image_.get()));
    return bytes / sizeof(std::uint32_t) < count ? std::span<const std::uint32_t>()
                                                 : std::span(pixels, count);
}

bool ScreenPixels::readShared(const ScreenArea &area)
{
    const auto cookie = xcb_shm_get_image_unchecked(
        connection_.get(), connection_.root(), static_cast<std::int16_t>(area.x),
        static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
        static_cast<std::uint16_t>(area.height), kAllPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP,
        shared_->segment(), 0);
    const XcbReply<xcb_shm_get_image_reply_t> reply(
        xcb_shm_get_image_reply(connection_.get(), cookie, nullptr));
    return reply != nullptr;
}

} // namespace orv::apps
