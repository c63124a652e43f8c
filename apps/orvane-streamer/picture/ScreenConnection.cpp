#include "orvane-streamer/picture/ScreenConnection.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <stdexcept>

namespace orv::apps {

namespace {

constexpr std::uint8_t kSentBit = 0x80;

const xcb_screen_t *screenAt(const xcb_setup_t *setup, int number)
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(setup);
    for (; screens.rem > 1 && number > 0; --number) {
        xcb_screen_next(&screens);
    }
    return screens.data;
}

bool isRgb(const xcb_screen_t &screen)
{
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0;
         xcb_depth_next(&depths)) {
        const auto count = static_cast<std::size_t>(xcb_depth_visuals_length(depths.data));
        for (const xcb_visualtype_t &visual : std::span(xcb_depth_visuals(depths.data), count)) {
            if (visual.visual_id == screen.root_visual) {
                return visual._class == XCB_VISUAL_CLASS_TRUE_COLOR &&
                       visual.red_mask == 0xff0000 && visual.green_mask == 0x00ff00 &&
                       visual.blue_mask == 0x0000ff;
            }
        }
    }
    return false;
}

bool hasWordPixels(const xcb_setup_t *setup, std::uint8_t depth)
{
    const auto count = static_cast<std::size_t>(xcb_setup_pixmap_formats_length(setup));
    const std::span formats(xcb_setup_pixmap_formats(setup), count);
    const auto fits = [depth](const xcb_format_t &format) {
        return format.depth == depth && format.bits_per_pixel == 32;
    };
    const bool sameOrder = (setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST) ==
                           (std::endian::native == std::endian::little);
    return sameOrder && std::any_of(formats.begin(), formats.end(), fits);
}

} // namespace

ScreenConnection::ScreenConnection() : connection_(nullptr, &xcb_disconnect)
{
    int number = 0;
    connection_.reset(xcb_connect(nullptr, &number));
    if (isLost()) {
        throw std::runtime_error("The X display cannot be reached for its picture.");
    }
    const xcb_setup_t *setup = xcb_get_setup(get());
    const xcb_screen_t &screen = *screenAt(setup, number);
    if (!isRgb(screen) || !hasWordPixels(setup, screen.root_depth)) {
        throw std::runtime_error("The picture needs a screen with pixels of 32-bit RGB.");
    }
    root_ = screen.root;
    width_ = screen.width_in_pixels;
    height_ = screen.height_in_pixels;
    const std::array<std::uint32_t, 1> events{XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_change_window_attributes(get(), root_, XCB_CW_EVENT_MASK, events.data());
    xcb_flush(get());
}

XcbReply<xcb_generic_event_t> ScreenConnection::nextEvent()
{
    for (;;) {
        XcbReply<xcb_generic_event_t> event(xcb_poll_for_event(get()));
        if (event == nullptr || event->response_type != 0) {
            return event;
        }
    }
}

bool ScreenConnection::resizes(const xcb_generic_event_t &event)
{
    if ((event.response_type & ~kSentBit) != XCB_CONFIGURE_NOTIFY) {
        return false;
    }
    const auto &configured = reinterpret_cast<const xcb_configure_notify_event_t &>(event);
    const bool isOther =
        configured.window == root_ && (configured.width != width_ || configured.height != height_);
    if (isOther) {
        width_ = configured.width;
        height_ = configured.height;
    }
    return isOther;
}

} // namespace orv::apps
