#include "apps/orvane-streamer/picture/display/Painter.h"

#include <xcb/randr.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace orv::apps::test {

namespace {

struct Free {
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T> using Reply = std::unique_ptr<T, Free>;

std::int16_t place(int value)
{
    return static_cast<std::int16_t>(value);
}

std::uint16_t size(int value)
{
    return static_cast<std::uint16_t>(value);
}

} // namespace

Painter::Painter() : connection_(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(connection_) != 0) {
        throw std::runtime_error("no display");
    }
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    context_ = xcb_generate_id(connection_);
    xcb_create_gc(connection_, context_, screen_->root, 0, nullptr);
}

Painter::~Painter()
{
    xcb_disconnect(connection_);
}

void Painter::showWindow(int x, int y, int width, int height, std::uint32_t colour)
{
    window_ = xcb_generate_id(connection_);
    x_ = x;
    y_ = y;
    const std::array<std::uint32_t, 2> values{colour, 1};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen_->root, place(x), place(y),
                      size(width), size(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      screen_->root_visual, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
                      values.data());
    xcb_map_window(connection_, window_);
    sync();
}

void Painter::hideWindow()
{
    xcb_destroy_window(connection_, window_);
    sync();
}

void Painter::recolour(std::uint32_t colour)
{
    const std::array<std::uint32_t, 1> values{colour};
    xcb_change_window_attributes(connection_, window_, XCB_CW_BACK_PIXEL, values.data());
    xcb_clear_area(connection_, 0, window_, 0, 0, 0, 0);
    sync();
}

void Painter::fill(int x, int y, int width, int height, std::uint32_t colour)
{
    const std::array<std::uint32_t, 1> values{colour};
    xcb_change_gc(connection_, context_, XCB_GC_FOREGROUND, values.data());
    const xcb_rectangle_t box{place(x - x_), place(y - y_), size(width), size(height)};
    xcb_poly_fill_rectangle(connection_, window_, context_, 1, &box);
    sync();
}

std::uint32_t Painter::pixel(int x, int y)
{
    const Reply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(connection_,
                            xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root,
                                          place(x), place(y), 1, 1, ~0U),
                            nullptr));
    if (image == nullptr) {
        throw std::runtime_error("no pixel");
    }
    return *reinterpret_cast<const std::uint32_t *>(xcb_get_image_data(image.get())) & 0xffffff;
}

bool Painter::resizeScreen(int width, int height)
{
    const Reply<xcb_randr_get_screen_resources_reply_t> resources(
        xcb_randr_get_screen_resources_reply(
            connection_, xcb_randr_get_screen_resources(connection_, screen_->root), nullptr));
    for (int i = 0; i < xcb_randr_get_screen_resources_crtcs_length(resources.get()); ++i) {
        const xcb_randr_crtc_t crtc = xcb_randr_get_screen_resources_crtcs(resources.get())[i];
        const Reply<xcb_randr_set_crtc_config_reply_t> off(xcb_randr_set_crtc_config_reply(
            connection_,
            xcb_randr_set_crtc_config(connection_, crtc, XCB_CURRENT_TIME, XCB_CURRENT_TIME, 0, 0,
                                      XCB_NONE, XCB_RANDR_ROTATION_ROTATE_0, 0, nullptr),
            nullptr));
    }
    const Reply<xcb_generic_error_t> error(xcb_request_check(
        connection_, xcb_randr_set_screen_size_checked(connection_, screen_->root, size(width),
                                                       size(height), 300, 200)));
    return error == nullptr;
}

void Painter::sync()
{
    const Reply<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

} // namespace orv::apps::test
