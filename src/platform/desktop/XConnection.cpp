#include "platform/desktop/XConnection.h"

#include <QGuiApplication>

#include <fmt/format.h>
#include <xcb/shape.h>

#include <stdexcept>

namespace orv::platform {

namespace {

constexpr std::uint8_t kAlphaDepth = 32;
constexpr std::uint32_t kMaxPropertyWords = 1 << 16;

const xcb_screen_t *screenOf(xcb_connection_t *connection, int number)
{
    auto iterator = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < number && iterator.rem > 1; ++i) {
        xcb_screen_next(&iterator);
    }
    return iterator.data;
}

XReply<xcb_get_property_reply_t> propertyOf(xcb_connection_t *connection, xcb_window_t window,
                                            xcb_atom_t property)
{
    const auto cookie = xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY,
                                         0, kMaxPropertyWords);
    xcb_generic_error_t *error = nullptr;
    XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, &error));
    const XReply<xcb_generic_error_t> ownedError(error);
    return reply;
}

} // namespace

XConnection::XConnection()
{
    auto *native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    connection_ = native != nullptr ? native->connection() : nullptr;
    if (connection_ == nullptr) {
        throw std::runtime_error("The GUI application is not connected to an X display.");
    }
    char *host = nullptr;
    int displayNumber = 0;
    xcb_parse_display(nullptr, &host, &displayNumber, &screenNumber_);
    const XReply<char> ownedHost(host);
    const xcb_screen_t *screen = screenOf(connection_, screenNumber_);
    root_ = screen->root;
    for (auto depth = xcb_screen_allowed_depths_iterator(screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        hasAlphaVisual_ =
            hasAlphaVisual_ || (depth.data->depth == kAlphaDepth && depth.data->visuals_len > 0);
    }
}

void XConnection::requireUsableDisplay()
{
    const char *name = std::getenv("DISPLAY");
    if (name == nullptr || *name == '\0') {
        throw std::runtime_error(
            "There is no display to draw on: the environment variable DISPLAY is not set.");
    }
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0) {
        throw std::runtime_error(
            fmt::format("The X display \"{}\" can't be connected to: no server answers there, or "
                        "it refuses this user.",
                        name));
    }
    const auto *shape = xcb_get_extension_data(connection.get(), &xcb_shape_id);
    if (shape == nullptr || shape->present == 0) {
        throw std::runtime_error(fmt::format(
            "The X display \"{}\" has no SHAPE extension, so nothing can be drawn above other "
            "windows without hiding them.",
            name));
    }
}

xcb_atom_t XConnection::atom(const std::string &name) const
{
    const std::lock_guard lock(mutex_);
    if (const auto known = atoms_.find(name); known != atoms_.end()) {
        return known->second;
    }
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection_, cookie, nullptr));
    const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    atoms_.emplace(name, atom);
    return atom;
}

std::vector<std::uint32_t> XConnection::numbers(xcb_window_t window,
                                                const std::string &property) const
{
    const auto reply = propertyOf(connection_, window, atom(property));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto *values = static_cast<const std::uint32_t *>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

std::string XConnection::text(xcb_window_t window, const std::string &property) const
{
    const auto reply = propertyOf(connection_, window, atom(property));
    if (!reply || reply->format != 8) {
        return {};
    }
    const auto *bytes = static_cast<const char *>(xcb_get_property_value(reply.get()));
    return {bytes, bytes + reply->value_len};
}

void XConnection::setNumber(xcb_window_t window, const std::string &property,
                            std::uint32_t value) const
{
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property),
                        XCB_ATOM_CARDINAL, 32, 1, &value);
}

std::vector<xcb_window_t> XConnection::topLevels() const
{
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t *children = xcb_query_tree_children(tree.get());
    return {children, children + xcb_query_tree_children_length(tree.get())};
}

std::vector<xcb_window_t> XConnection::shownAmong(const std::vector<xcb_window_t> &windows) const
{
    std::vector<xcb_get_window_attributes_cookie_t> questions;
    questions.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        questions.push_back(xcb_get_window_attributes(connection_, window));
    }
    std::vector<xcb_window_t> shown;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const XReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(connection_, questions[i], nullptr));
        if (attributes && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT &&
            attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
            shown.push_back(windows[i]);
        }
    }
    return shown;
}

xcb_window_t XConnection::topLevelOf(xcb_window_t window) const
{
    xcb_window_t topLevel = window;
    while (topLevel != XCB_NONE) {
        const XReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection_, xcb_query_tree(connection_, topLevel), nullptr));
        if (tree && tree->parent == root_) {
            return topLevel;
        }
        topLevel = tree ? tree->parent : xcb_window_t{XCB_NONE};
    }
    return XCB_NONE;
}

void XConnection::addEvents(xcb_window_t window, std::uint32_t mask) const
{
    const XReply<xcb_get_window_attributes_reply_t> present(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, window), nullptr));
    const std::uint32_t all = (present ? present->your_event_mask : 0) | mask;
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &all);
}

} // namespace orv::platform
