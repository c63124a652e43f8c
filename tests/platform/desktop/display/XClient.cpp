#include "platform/desktop/display/XClient.h"

#include <xcb/xfixes.h>
#include <xcb/xtest.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace orv::platform::test {

namespace {

struct Free {
    void operator()(void *reply) const { std::free(reply); }
};
template <class T> using Reply = std::unique_ptr<T, Free>;

constexpr std::uint8_t kSentEvent = 0x80;
/// Of the size hints: the user has chosen the place, and the window itself stands there, whatever
/// frame it gets.
constexpr std::uint32_t kUserPosition = 1U << 0U;
constexpr std::uint32_t kWindowGravity = 1U << 9U;
constexpr std::size_t kSizeHintWords = 18;

} // namespace

XClient::XClient() : connection_(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(connection_) != 0) {
        throw std::runtime_error("the test needs an X display");
    }
    // The server answers what it would answer to a client of this version.
    const Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection_,
        xcb_xfixes_query_version(connection_, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

XClient::~XClient()
{
    xcb_disconnect(connection_);
}

xcb_window_t XClient::showWindow(int x, int y, int width, int height, std::uint32_t color,
                                 bool overrideRedirect, std::uint32_t pid)
{
    const xcb_window_t window = xcb_generate_id(connection_);
    const std::array<std::uint32_t, 3> values = {
        color, overrideRedirect ? 1U : 0U, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_KEY_PRESS};
    xcb_create_window(
        connection_, XCB_COPY_FROM_PARENT, window, root_, static_cast<std::int16_t>(x),
        static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
        static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    std::array<std::uint32_t, kSizeHintWords> hints{};
    hints.front() = kUserPosition | kWindowGravity;
    hints.back() = XCB_GRAVITY_STATIC;
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    if (pid != 0) {
        const std::string name = "_NET_WM_PID";
        const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom->atom,
                            XCB_ATOM_CARDINAL, 32, 1, &pid);
    }
    xcb_map_window(connection_, window);
    xcb_flush(connection_);
    return window;
}

void XClient::raise(xcb_window_t window)
{
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(connection_);
}

void XClient::move(xcb_window_t window, int x, int y)
{
    const std::array<std::uint32_t, 2> place{static_cast<std::uint32_t>(x),
                                             static_cast<std::uint32_t>(y)};
    xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                         place.data());
    xcb_flush(connection_);
}

void XClient::focus(xcb_window_t window)
{
    xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    xcb_flush(connection_);
}

xcb_window_t XClient::focused()
{
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_NONE};
}

void XClient::input(std::uint8_t type, std::uint8_t detail, int x, int y)
{
    if (beforeInput) {
        beforeInput();
    }
    xcb_test_fake_input(connection_, type, detail, XCB_CURRENT_TIME, root_,
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    xcb_flush(connection_);
}

void XClient::movePointer(int x, int y)
{
    input(XCB_MOTION_NOTIFY, 0, x, y);
}

void XClient::button(int number, bool down)
{
    input(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(number));
}

void XClient::key(std::uint32_t keysym, bool down)
{
    const xcb_setup_t *setup = xcb_get_setup(connection_);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const Reply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
        connection_,
        xcb_get_keyboard_mapping(connection_, setup->min_keycode, static_cast<std::uint8_t>(count)),
        nullptr));
    const xcb_keysym_t *keysyms = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int code = 0; code < count; ++code) {
        if (keysyms[code * map->keysyms_per_keycode] == keysym) {
            input(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
                  static_cast<std::uint8_t>(setup->min_keycode + code));
            return;
        }
    }
    throw std::runtime_error("the keyboard has no such key");
}

void XClient::grabServer()
{
    xcb_grab_server(connection_);
    // Held once this is answered.
    static_cast<void>(focused());
}

void XClient::ungrabServer()
{
    xcb_ungrab_server(connection_);
    xcb_flush(connection_);
}

std::uint32_t XClient::pixel(int x, int y)
{
    const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        connection_,
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_, static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y), 1, 1, 0xffffffffU),
        nullptr));
    if (!image) {
        throw std::runtime_error("the screen can't be read");
    }
    const std::uint8_t *bytes = xcb_get_image_data(image.get());
    return static_cast<std::uint32_t>(bytes[2] << 16 | bytes[1] << 8 | bytes[0]);
}

XClient::PointerLook XClient::pointerLook()
{
    const Reply<xcb_xfixes_get_cursor_image_reply_t> reply(xcb_xfixes_get_cursor_image_reply(
        connection_, xcb_xfixes_get_cursor_image(connection_), nullptr));
    if (!reply) {
        throw std::runtime_error("the pointer's look can't be read");
    }
    const std::uint32_t *pixels = xcb_xfixes_get_cursor_image_cursor_image(reply.get());
    const int count = xcb_xfixes_get_cursor_image_cursor_image_length(reply.get());
    return {reply->width, reply->height, reply->xhot, reply->yhot, {pixels, pixels + count}};
}

void XClient::collectEvents()
{
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        const std::uint8_t type = event->response_type & ~kSentEvent;
        presses_ += type == XCB_BUTTON_PRESS ? 1 : 0;
        keys_ += type == XCB_KEY_PRESS ? 1 : 0;
    }
}

int XClient::pressesSeen()
{
    collectEvents();
    return presses_;
}

int XClient::keysSeen()
{
    collectEvents();
    return keys_;
}

} // namespace orv::platform::test
