#include "platform/desktop/PixelReader.h"

#include <cstddef>
#include <cstring>

namespace orv::platform {

namespace {

constexpr std::uint32_t kAllPlanes = 0xffffffffU;

std::size_t pixelsIn(const QRect &area)
{
    return static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(area.height());
}

} // namespace

std::optional<Image> readPixels(const XConnection &x, xcb_drawable_t drawable, const QRect &area)
{
    if (area.isEmpty()) {
        return std::nullopt;
    }
    const auto cookie = xcb_get_image(
        x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(area.x()),
        static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
        static_cast<std::uint16_t>(area.height()), kAllPlanes);
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(x.get(), cookie, nullptr));
    const std::size_t bytes = pixelsIn(area) * sizeof(std::uint32_t);
    const bool isRgb32 =
        reply && (reply->depth == 24 || reply->depth == 32) &&
        static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) == bytes &&
        xcb_get_setup(x.get())->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    if (!isRgb32) {
        return std::nullopt;
    }
    Image image(area.width(), area.height());
    std::memcpy(image.data(), xcb_get_image_data(reply.get()), bytes);
    return image;
}

const std::uint32_t *PixelReader::read(xcb_drawable_t drawable, const QRect &area)
{
    if (area.isEmpty()) {
        return nullptr;
    }
    if (shared_.makeRoom(pixelsIn(area))) {
        return shared_.read(drawable, area);
    }
    received_ = readPixels(x_, drawable, area);
    return received_ ? received_->data() : nullptr;
}

} // namespace orv::platform
