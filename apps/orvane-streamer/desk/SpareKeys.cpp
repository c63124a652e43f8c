#include "orvane-streamer/desk/SpareKeys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <thread>

namespace orv::apps {

namespace {

// Applications look up what a key means when they come to read its event. Toolkits are through with
// the events of a moment well within it.
constexpr std::chrono::milliseconds kReadingTime{60};

} // namespace

SpareKeys::SpareKeys(xcb_connection_t *connection, KeyLayout &layout)
    : connection_(connection), layout_(layout)
{
}

SpareKeys::~SpareKeys()
{
    layout_.refresh();
    for (const Lent &lent : lent_) {
        // Another layout may have come that uses the key.
        if (layout_.plainSymbol(lent.key) == lent.symbol) {
            write(lent.key, XKB_KEY_NoSymbol, XKB_KEY_NoSymbol);
        }
    }
    // Its answer says that the server has done it: who comes next finds the keys empty.
    layout_.refresh();
}

bool SpareKeys::lend(xkb_keysym_t symbol, const std::function<bool(KeyCode)> &isDown)
{
    // Small and capital letter on one key, as Caps Lock would swap them otherwise.
    Lent chosen{0, xkb_keysym_to_lower(symbol), Clock::now()};
    const std::vector<KeyCode> empty = layout_.emptyKeys();
    if (!empty.empty()) {
        chosen.key = empty.back();
        std::erase_if(lent_, [&](const Lent &lent) { return lent.key == chosen.key; });
    } else {
        const auto resting = std::find_if(lent_.begin(), lent_.end(),
                                          [&](const Lent &lent) { return !isDown(lent.key); });
        if (resting == lent_.end()) {
            return false;
        }
        std::this_thread::sleep_until(resting->used + kReadingTime);
        chosen.key = resting->key;
        lent_.erase(resting);
    }
    write(chosen.key, chosen.symbol, xkb_keysym_to_upper(symbol));
    lent_.push_back(chosen);
    layout_.refresh();
    return true;
}

void SpareKeys::wasUsed(KeyCode key)
{
    const auto found = std::find_if(lent_.begin(), lent_.end(),
                                    [key](const Lent &lent) { return lent.key == key; });
    if (found != lent_.end()) {
        found->used = Clock::now();
        std::rotate(found, found + 1, lent_.end());
    }
}

void SpareKeys::write(KeyCode key, xkb_keysym_t plain, xkb_keysym_t shifted)
{
    const std::array<xcb_keysym_t, 2> symbols{plain, shifted};
    xcb_change_keyboard_mapping(connection_, 1, key, symbols.size(), symbols.data());
}

} // namespace orv::apps
