#include "apps/orvane-streamer/desk/display/InputReader.h"

#include <poll.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <array>
#include <bit>
#include <chrono>
#include <stdexcept>

namespace orv::apps::test {

namespace {

constexpr std::chrono::seconds kLimit{10};

std::string nameOf(xkb_keysym_t symbol)
{
    std::array<char, 64> name{};
    xkb_keysym_get_name(symbol, name.data(), name.size());
    return name.data();
}

} // namespace

InputReader::InputReader() : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS))
{
    if (server_.isLost()) {
        throw std::runtime_error("the test needs an X display");
    }
    xkb_x11_setup_xkb_extension(server_.get(), 1, 0, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr,
                                nullptr, nullptr, nullptr);
    readLayout();
    window_ = xcb_generate_id(server_.get());
    const xcb_screen_t &screen = server_.screen();
    const std::array<std::uint32_t, 2> values{
        1, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
               XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_KEY_PRESS |
               XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_FOCUS_CHANGE};
    xcb_create_window(server_.get(), XCB_COPY_FROM_PARENT, window_, screen.root, 0, 0,
                      screen.width_in_pixels, screen.height_in_pixels, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(server_.get(), window_);
    if (!reads([this] { return isVisible_; })) {
        throw std::runtime_error("the test's window does not come");
    }
    xcb_set_input_focus(server_.get(), XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
    if (!reads([this] { return isFocused_; })) {
        throw std::runtime_error("the test's window does not get the keyboard");
    }
}

void InputReader::readLayout()
{
    const std::int32_t keyboard = xkb_x11_get_core_keyboard_device_id(server_.get());
    keymap_.reset(xkb_x11_keymap_new_from_device(context_.get(), server_.get(), keyboard,
                                                 XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap_) {
        throw std::runtime_error("the test cannot read the keyboard layout");
    }
}

bool InputReader::reads(const std::function<bool()> &condition)
{
    const auto end = std::chrono::steady_clock::now() + kLimit;
    while (!condition()) {
        xcb_flush(server_.get());
        if (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(server_.get())}) {
            take(*event);
            continue;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            end - std::chrono::steady_clock::now());
        pollfd descriptor{xcb_get_file_descriptor(server_.get()), POLLIN, 0};
        if (left.count() <= 0 || server_.isLost() ||
            ::poll(&descriptor, 1, static_cast<int>(left.count())) <= 0) {
            return false;
        }
    }
    return true;
}

bool InputReader::readsText(const std::string &expected)
{
    return reads([&] { return text.size() >= expected.size(); }) && text == expected;
}

void InputReader::take(const xcb_generic_event_t &event)
{
    switch (event.response_type & 0x7F) {
    case XCB_EXPOSE:
        isVisible_ = true;
        break;
    case XCB_FOCUS_IN:
        isFocused_ = true;
        break;
    case XCB_MOTION_NOTIFY: {
        const auto &motion = reinterpret_cast<const xcb_motion_notify_event_t &>(event);
        pointerX = motion.root_x;
        pointerY = motion.root_y;
        break;
    }
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE: {
        const auto &button = reinterpret_cast<const xcb_button_press_event_t &>(event);
        const bool isDown = (event.response_type & 0x7F) == XCB_BUTTON_PRESS;
        buttons.push_back({button.detail, isDown, button.root_x, button.root_y});
        break;
    }
    case XCB_KEY_PRESS:
        takeKey(reinterpret_cast<const xcb_key_press_event_t &>(event), true);
        break;
    case XCB_KEY_RELEASE:
        takeKey(reinterpret_cast<const xcb_key_press_event_t &>(event), false);
        break;
    default:
        break;
    }
}

void InputReader::takeKey(const xcb_key_press_event_t &event, bool down)
{
    readLayout();
    const std::unique_ptr<xkb_state, XkbUnref> state(xkb_state_new(keymap_.get()));
    // The low byte of an event's state are the modifiers, two bits above the buttons the language.
    xkb_state_update_mask(state.get(), event.state & 0xFFU, 0, 0, 0, 0, event.state >> 13U & 3U);
    const xkb_keysym_t symbol = xkb_state_key_get_one_sym(state.get(), event.detail);
    keys.push_back((down ? "" : "-") + nameOf(symbol));
    std::array<char, 8> character{};
    if (down && xkb_keysym_to_utf8(symbol, character.data(), character.size()) > 0) {
        text += character.data();
    }
}

int InputReader::keysDown()
{
    const XReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(server_.get(), xcb_query_keymap(server_.get()), nullptr));
    int count = 0;
    for (const std::uint8_t bits : reply->keys) {
        count += std::popcount(bits);
    }
    return count;
}

bool InputReader::hasButtonDown()
{
    const XReply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(server_.get(), xcb_query_pointer(server_.get(), window_), nullptr));
    return (reply->mask & (XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3)) != 0;
}

std::vector<std::uint32_t> InputReader::mapping()
{
    const xcb_setup_t *setup = xcb_get_setup(server_.get());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const XReply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        server_.get(), xcb_get_keyboard_mapping(server_.get(), setup->min_keycode, count),
        nullptr));
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    return {symbols, symbols + xcb_get_keyboard_mapping_keysyms_length(reply.get())};
}

void InputReader::pressKey(std::uint8_t key, bool down)
{
    xcb_test_fake_input(server_.get(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key,
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(server_.get());
}

void InputReader::pressButton(std::uint8_t button, bool down)
{
    xcb_test_fake_input(server_.get(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button,
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(server_.get());
}

void InputReader::write(std::uint8_t key, xkb_keysym_t symbol)
{
    const std::array<xcb_keysym_t, 2> symbols{symbol, symbol};
    xcb_change_keyboard_mapping(server_.get(), 1, key, symbols.size(), symbols.data());
    xcb_flush(server_.get());
}

std::uint8_t InputReader::keyOf(xkb_keysym_t symbol)
{
    readLayout();
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap_.get());
         key <= xkb_keymap_max_keycode(keymap_.get()); ++key) {
        const xkb_keysym_t *symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(keymap_.get(), key, 0, 0, &symbols) == 1 &&
            *symbols == symbol) {
            return static_cast<std::uint8_t>(key);
        }
    }
    return 0;
}

} // namespace orv::apps::test
