#include "platform/desktop/display/PaintingClient.h"

#include <xcb/shape.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace orv::platform::test {

namespace {

struct Free {
    void operator()(void *reply) const { std::free(reply); }
};
template <class T> using Reply = std::unique_ptr<T, Free>;

constexpr std::uint32_t kWhite = 0xffffffU;
constexpr std::uint8_t kAlphaDepth = 32;

xcb_visualid_t alphaVisual(const xcb_screen_t &screen)
{
    auto depth = xcb_screen_allowed_depths_iterator(&screen);
    while (depth.rem > 0 && depth.data->depth != kAlphaDepth) {
        xcb_depth_next(&depth);
    }
    if (depth.rem == 0) {
        throw std::runtime_error("the screen has no pixels with alpha");
    }
    return xcb_depth_visuals(depth.data)->visual_id;
}

} // namespace

PaintingClient::PaintingClient() : connection_(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(connection_) != 0) {
        throw std::runtime_error("the test needs an X display");
    }
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

PaintingClient::~PaintingClient()
{
    setRootColor(0);
    xcb_disconnect(connection_);
}

void PaintingClient::finish()
{
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

xcb_atom_t PaintingClient::atom(const char *name)
{
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply->atom;
}

xcb_window_t PaintingClient::showWindow(const QRect &frame, std::uint8_t depth,
                                        xcb_visualid_t visual, std::uint32_t pixel, int border)
{
    const xcb_window_t window = xcb_generate_id(connection_);
    const xcb_colormap_t colors = xcb_generate_id(connection_);
    xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, colors, screen_->root, visual);
    const std::array<std::uint32_t, 4> values = {pixel, kWhite, 1, colors};
    xcb_create_window(
        connection_, depth, window, screen_->root, static_cast<std::int16_t>(frame.x() - border),
        static_cast<std::int16_t>(frame.y() - border), static_cast<std::uint16_t>(frame.width()),
        static_cast<std::uint16_t>(frame.height()), static_cast<std::uint16_t>(border),
        XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
        XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
        values.data());
    xcb_map_window(connection_, window);
    finish();
    return window;
}

xcb_window_t PaintingClient::show(const QRect &frame, std::uint32_t color, int border)
{
    return showWindow(frame, screen_->root_depth, screen_->root_visual, color, border);
}

xcb_window_t PaintingClient::showTranslucent(const QRect &frame, std::uint32_t pixel)
{
    return showWindow(frame, kAlphaDepth, alphaVisual(*screen_), pixel, 0);
}

void PaintingClient::hide(xcb_window_t window)
{
    xcb_unmap_window(connection_, window);
    finish();
}

void PaintingClient::destroy(xcb_window_t window)
{
    xcb_destroy_window(connection_, window);
    finish();
}

void PaintingClient::recolor(xcb_window_t window, std::uint32_t color)
{
    xcb_change_window_attributes(connection_, window, XCB_CW_BACK_PIXEL, &color);
    xcb_clear_area(connection_, 0, window, 0, 0, 0, 0);
    finish();
}

void PaintingClient::setShape(xcb_window_t window, const std::vector<QRect> &rects)
{
    std::vector<xcb_rectangle_t> native;
    native.reserve(rects.size());
    for (const QRect &rect : rects) {
        native.push_back({static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                          static_cast<std::uint16_t>(rect.width()),
                          static_cast<std::uint16_t>(rect.height())});
    }
    xcb_shape_rectangles(connection_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_UNSORTED, window, 0, 0,
                         static_cast<std::uint32_t>(native.size()), native.data());
    finish();
}

void PaintingClient::setOpacity(xcb_window_t window, double opacity)
{
    const auto value = static_cast<std::uint32_t>(std::llround(opacity * 0xffffffffU));
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_WINDOW_OPACITY"),
                        XCB_ATOM_CARDINAL, 32, 1, &value);
    finish();
}

void PaintingClient::adopt(xcb_window_t child, xcb_window_t parent)
{
    xcb_reparent_window(connection_, child, parent, 0, 0);
    finish();
}

void PaintingClient::setRootColor(std::uint32_t color)
{
    xcb_delete_property(connection_, screen_->root, atom("_XROOTPMAP_ID"));
    recolor(screen_->root, color);
}

void PaintingClient::setRootPicture(int width, const std::vector<std::uint32_t> &pixels)
{
    const auto columns = static_cast<std::uint16_t>(width);
    const auto rows = static_cast<std::uint16_t>(pixels.size() / columns);
    const xcb_pixmap_t pixmap = xcb_generate_id(connection_);
    const xcb_gcontext_t context = xcb_generate_id(connection_);
    xcb_create_pixmap(connection_, screen_->root_depth, pixmap, screen_->root, columns, rows);
    xcb_create_gc(connection_, context, pixmap, 0, nullptr);
    std::vector<std::uint8_t> bytes(pixels.size() * sizeof(std::uint32_t));
    std::memcpy(bytes.data(), pixels.data(), bytes.size());
    xcb_put_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, columns, rows, 0, 0, 0,
                  screen_->root_depth, static_cast<std::uint32_t>(bytes.size()), bytes.data());
    xcb_free_gc(connection_, context);
    setRootPictureName(pixmap);
}

void PaintingClient::setLostRootPicture()
{
    setRootPictureName(xcb_generate_id(connection_));
}

void PaintingClient::setRootPictureName(xcb_pixmap_t name)
{
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, screen_->root, atom("_XROOTPMAP_ID"),
                        XCB_ATOM_PIXMAP, 32, 1, &name);
    finish();
}

} // namespace orv::platform::test
