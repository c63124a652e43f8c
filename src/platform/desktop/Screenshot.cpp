#include "platform/desktop/Screenshot.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orv::platform {

namespace {

constexpr std::uint32_t kAllPlanes = 0xffffffffU;
constexpr std::uint32_t kOpaque = 0xff000000U;

} // namespace

std::optional<Image> readScreen(const XConnection &x, const QRect &area)
{
    if (area.isEmpty()) {
        return std::nullopt;
    }
    const auto cookie = xcb_get_image(
        x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, x.root(), static_cast<std::int16_t>(area.x()),
        static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
        static_cast<std::uint16_t>(area.height()), kAllPlanes);
    xcb_generic_error_t *error = nullptr;
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(x.get(), cookie, &error));
    const XReply<xcb_generic_error_t> ownedError(error);

    Image image(area.width(), area.height());
    const std::size_t count =
        static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(area.height());
    const bool isRgb32 = reply && (reply->depth == 24 || reply->depth == 32) &&
                         static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) ==
                             count * sizeof(std::uint32_t) &&
                         xcb_get_setup(x.get())->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    if (!isRgb32) {
        return std::nullopt;
    }
    std::memcpy(image.data(), xcb_get_image_data(reply.get()), count * sizeof(std::uint32_t));
    for (std::size_t i = 0; i < count; ++i) {
        image.data()[i] |= kOpaque;
    }
    return image;
}

} // namespace orv::platform
