#pragma once

#include "orvane-streamer/desk/KeyLayout.h"

#include <xcb/xcb.h>

#include <chrono>
#include <functional>
#include <vector>

namespace orv::apps {

/// Keys without a meaning of their own, lent to symbols that the layout lacks.
///
/// Borrows  connection and layout.
/// Thread   one at a time.
class SpareKeys {
public:
    SpareKeys(xcb_connection_t *connection, KeyLayout &layout);
    /// Leaves the keys empty again.
    ~SpareKeys();
    SpareKeys(const SpareKeys &) = delete;
    SpareKeys &operator=(const SpareKeys &) = delete;

    /// Writes a symbol on a key, where `layout` finds it from then on. When there is no empty one,
    /// the key that rested longest changes its symbol, once applications have had time to read the
    /// former; this waits for that. False when all are in use, as `isDown` says.
    bool lend(xkb_keysym_t symbol, const std::function<bool(KeyCode)> &isDown);
    /// To be told of each key that was pressed, lent or not.
    void wasUsed(KeyCode key);

private:
    using Clock = std::chrono::steady_clock;
    struct Lent {
        KeyCode key = 0;
        xkb_keysym_t symbol = 0;
        Clock::time_point used;
    };

    void write(KeyCode key, xkb_keysym_t plain, xkb_keysym_t shifted);

    xcb_connection_t *connection_;
    KeyLayout &layout_;
    /// The one that rested longest comes first.
    std::vector<Lent> lent_;
};

} // namespace orv::apps
