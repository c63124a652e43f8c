#include "orvane-streamer/desk/KeyLayout.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <stdexcept>

namespace orv::apps {

namespace {

constexpr std::uint8_t kSentBit = 0x80;

/// The keys that both the layout and the X protocol have.
struct KeyRange {
    explicit KeyRange(xkb_keymap *keymap)
        : first(xkb_keymap_min_keycode(keymap)),
          last(std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap), UINT8_MAX))
    {
    }

    xkb_keycode_t first;
    xkb_keycode_t last;
};

std::uint32_t symbolCount(xkb_keymap *keymap, xkb_keycode_t key)
{
    std::uint32_t count = 0;
    for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(keymap, key);
         ++layout) {
        const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, key, layout);
        for (xkb_level_index_t level = 0; level < levels; ++level) {
            const xkb_keysym_t *symbols = nullptr;
            count += static_cast<std::uint32_t>(
                xkb_keymap_key_get_syms_by_level(keymap, key, layout, level, &symbols));
        }
    }
    return count;
}

} // namespace

KeyLayout::KeyLayout(xcb_connection_t *connection)
    : connection_(connection), context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS))
{
    const bool isTold = xkb_x11_setup_xkb_extension(connection_, XKB_X11_MIN_MAJOR_XKB_VERSION,
                                                    XKB_X11_MIN_MINOR_XKB_VERSION,
                                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr,
                                                    nullptr, nullptr, nullptr) != 0;
    keyboard_ = isTold ? xkb_x11_get_core_keyboard_device_id(connection_) : -1;
    if (!context_ || keyboard_ < 0 || !readKeymap() || !readState()) {
        throw std::runtime_error("The X server does not tell its keyboard layout.");
    }
}

bool KeyLayout::hasChanged()
{
    // An answer comes behind the news of all changes before it.
    const XReply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(news_.get(), xcb_get_input_focus(news_.get()), nullptr));
    bool isOther = false;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(news_.get())}) {
        isOther = isOther || (event->response_type & ~kSentBit) == XCB_MAPPING_NOTIFY;
    }
    return isOther;
}

bool KeyLayout::readKeymap()
{
    std::unique_ptr<xkb_keymap, XkbUnref> keymap(xkb_x11_keymap_new_from_device(
        context_.get(), connection_, keyboard_, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap) {
        return false;
    }
    // The state refers to the layout that it was read for.
    state_.reset(xkb_state_new(keymap.get()));
    keymap_ = std::move(keymap);
    shift_ = modifierOf(XKB_KEY_Shift_L);
    thirdLevel_ = modifierOf(XKB_KEY_ISO_Level3_Shift);
    return true;
}

bool KeyLayout::readState()
{
    State state(xkb_x11_state_new_from_device(keymap_.get(), connection_, keyboard_));
    if (!state) {
        return false;
    }
    state_ = std::move(state);
    return true;
}

void KeyLayout::refresh()
{
    // First, so that the server has dealt with what this program asked of it before.
    const bool isRead = readState();
    if (isRead && hasChanged() && readKeymap()) {
        readState();
    }
}

bool KeyLayout::bears(xkb_keycode_t key, xkb_layout_index_t layout, xkb_keysym_t symbol,
                      bool alone) const
{
    const xkb_level_index_t all = xkb_keymap_num_levels_for_key(keymap_.get(), key, layout);
    for (xkb_level_index_t level = 0; level < (alone ? std::min(all, 1U) : all); ++level) {
        const xkb_keysym_t *symbols = nullptr;
        const int count =
            xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout, level, &symbols);
        if (count == 1 && *symbols == symbol) {
            return true;
        }
    }
    return false;
}

std::optional<KeyCode> KeyLayout::keyBearing(xkb_keysym_t symbol, bool alone) const
{
    const KeyRange keys(keymap_.get());
    const xkb_layout_index_t own =
        xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    std::optional<KeyCode> otherLanguage;
    for (xkb_keycode_t key = keys.first; key <= keys.last; ++key) {
        const auto layouts = xkb_keymap_num_layouts_for_key(keymap_.get(), key);
        for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
            if (!bears(key, layout, symbol, alone)) {
                continue;
            }
            if (layout == own || layouts == 1) {
                return static_cast<KeyCode>(key);
            }
            otherLanguage = otherLanguage.value_or(static_cast<KeyCode>(key));
        }
    }
    return otherLanguage;
}

std::optional<KeyCode> KeyLayout::keyBearing(const std::vector<xkb_keysym_t> &symbols) const
{
    for (const bool alone : {true, false}) {
        for (const xkb_keysym_t symbol : symbols) {
            if (const auto key = keyBearing(symbol, alone)) {
                return key;
            }
        }
    }
    return std::nullopt;
}

KeyLayout::State KeyLayout::stateWith(bool shift, bool thirdLevel) const
{
    const auto mods = [this](xkb_state_component part) {
        return xkb_state_serialize_mods(state_.get(), part);
    };
    const auto layout = [this](xkb_state_component part) {
        return xkb_state_serialize_layout(state_.get(), part);
    };
    const xkb_mod_mask_t others =
        mods(XKB_STATE_MODS_DEPRESSED) & ~(shift_.mask | thirdLevel_.mask);
    State state(xkb_state_new(keymap_.get()));
    xkb_state_update_mask(
        state.get(), others | (shift ? shift_.mask : 0U) | (thirdLevel ? thirdLevel_.mask : 0U),
        mods(XKB_STATE_MODS_LATCHED), mods(XKB_STATE_MODS_LOCKED),
        layout(XKB_STATE_LAYOUT_DEPRESSED), layout(XKB_STATE_LAYOUT_LATCHED),
        layout(XKB_STATE_LAYOUT_LOCKED));
    return state;
}

std::optional<KeyLayout::Stroke> KeyLayout::strokeFor(xkb_keysym_t symbol) const
{
    const KeyRange keys(keymap_.get());
    for (const bool thirdLevel : {false, true}) {
        for (const bool shift : {false, true}) {
            if ((shift && shift_.mask == 0) || (thirdLevel && thirdLevel_.mask == 0)) {
                continue;
            }
            const State state = stateWith(shift, thirdLevel);
            for (xkb_keycode_t key = keys.first; key <= keys.last; ++key) {
                if (xkb_state_key_get_one_sym(state.get(), key) == symbol) {
                    return Stroke{static_cast<KeyCode>(key), shift, thirdLevel};
                }
            }
        }
    }
    return std::nullopt;
}

xkb_keysym_t KeyLayout::plainSymbol(KeyCode key) const
{
    const xkb_keysym_t *symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap_.get(), key, 0, 0, &symbols);
    return count == 1 ? *symbols : xkb_keysym_t{XKB_KEY_NoSymbol};
}

std::vector<KeyCode> KeyLayout::emptyKeys() const
{
    const KeyRange keys(keymap_.get());
    std::vector<KeyCode> empty;
    for (xkb_keycode_t key = keys.first; key <= keys.last; ++key) {
        if (symbolCount(keymap_.get(), key) == 0) {
            empty.push_back(static_cast<KeyCode>(key));
        }
    }
    return empty;
}

bool KeyLayout::isDown(const Modifier &modifier) const
{
    return (xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_DEPRESSED) & modifier.mask) != 0;
}

bool KeyLayout::changes(KeyCode key, const Modifier &modifier) const
{
    return (maskOf(key) & modifier.mask) != 0;
}

xkb_mod_mask_t KeyLayout::maskOf(KeyCode key) const
{
    const State state(xkb_state_new(keymap_.get()));
    xkb_state_update_key(state.get(), key, XKB_KEY_DOWN);
    return xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_DEPRESSED);
}

KeyLayout::Modifier KeyLayout::modifierOf(xkb_keysym_t symbol) const
{
    const auto key = keyBearing({symbol});
    return key ? Modifier{*key, maskOf(*key)} : Modifier{};
}

} // namespace orv::apps
