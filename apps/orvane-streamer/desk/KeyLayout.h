#pragma once

#include "orvane-streamer/desk/XServer.h"

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace orv::apps {

struct XkbUnref {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state *state) const { xkb_state_unref(state); }
};

/// A key as X numbers it.
using KeyCode = std::uint8_t;

/// The keyboard layout that the X server has at present, and the state of its modifiers.
///
/// Borrows  the connection.
/// Thread   one at a time.
class KeyLayout {
public:
    /// A key that does nothing but lead to other symbols of other keys.
    struct Modifier {
        KeyCode key = 0;
        /// What it changes in the state; 0 when the layout has no such key.
        xkb_mod_mask_t mask = 0;
    };
    /// How a hand would make a symbol.
    struct Stroke {
        KeyCode key = 0;
        bool withShift = false;
        bool withThirdLevel = false;
    };

    /// Throws `std::runtime_error` when the X server does not tell its layout.
    explicit KeyLayout(xcb_connection_t *connection);

    /// Follows what changed since the last call; all else answers from what was read here.
    void refresh();

    /// The key that one of the symbols is written on: best alone, best an earlier one, best in the
    /// language that is switched on.
    [[nodiscard]] std::optional<KeyCode> keyBearing(const std::vector<xkb_keysym_t> &symbols) const;
    /// With what is locked now, Caps Lock for one.
    [[nodiscard]] std::optional<Stroke> strokeFor(xkb_keysym_t symbol) const;
    /// The symbol of a key alone.
    [[nodiscard]] xkb_keysym_t plainSymbol(KeyCode key) const;
    /// Keys without any symbol.
    [[nodiscard]] std::vector<KeyCode> emptyKeys() const;

    [[nodiscard]] const Modifier &shift() const { return shift_; }
    [[nodiscard]] const Modifier &thirdLevel() const { return thirdLevel_; }
    /// Whether keys hold it down.
    [[nodiscard]] bool isDown(const Modifier &modifier) const;
    [[nodiscard]] bool changes(KeyCode key, const Modifier &modifier) const;

private:
    using State = std::unique_ptr<xkb_state, XkbUnref>;

    bool hasChanged();
    bool readKeymap();
    bool readState();
    /// The state as it would be with only these two of its kind down.
    [[nodiscard]] State stateWith(bool shift, bool thirdLevel) const;
    [[nodiscard]] std::optional<KeyCode> keyBearing(xkb_keysym_t symbol, bool alone) const;
    [[nodiscard]] xkb_mod_mask_t maskOf(KeyCode key) const;
    [[nodiscard]] Modifier modifierOf(xkb_keysym_t symbol) const;
    [[nodiscard]] bool bears(xkb_keycode_t key, xkb_layout_index_t layout, xkb_keysym_t symbol,
                             bool alone) const;

    xcb_connection_t *connection_;
    /// The X server tells of other layouts only who has not asked for its keyboard extension.
    XServer news_;
    std::unique_ptr<xkb_context, XkbUnref> context_;
    std::int32_t keyboard_ = -1;
    std::unique_ptr<xkb_keymap, XkbUnref> keymap_;
    State state_;
    Modifier shift_;
    Modifier thirdLevel_;
};

} // namespace orv::apps
