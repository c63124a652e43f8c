#pragma once

#include "platform/desktop/DesktopMainThread.h"
#include "platform/desktop/PointerInput.h"
#include "platform/desktop/XConnection.h"

#include <QSocketNotifier>

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace orv::platform {

/// A key that went down or up, as the X server numbers keys and moments.
struct KeyMoment {
    bool down = false;
    std::uint8_t keyCode = 0;
    std::uint32_t time = 0;
};

/// A connection to the X server for the pointer over our windows alone.
///
/// The toolkit's connection is read by a thread of its own, which then wakes the main thread. Here
/// the main thread waits for the server itself, so that a motion comes to a stroke a wake-up
/// earlier. Keys still come by the toolkit; so that nothing overtakes them, this connection is told
/// of them too, and what the pointer did after a key waits until the toolkit has brought that.
///
/// Thread   main thread only.
/// Fails    where there is no second connection, windows can't be covered and nothing comes.
class PointerLink {
public:
    /// How long the pointer waits for a key that the toolkit may have kept for itself, in seconds.
    static constexpr double patience = 0.1;

    /// What it borrows outlives it. `hasPen` says whether a pen may draw, whose pressure the
    /// toolkit alone can tell; `afterLot` is called when all that has come was handed on.
    PointerLink(const XConnection &x, DesktopMainThread &mainThread, std::function<bool()> hasPen,
                std::function<void()> afterLot);
    ~PointerLink();
    PointerLink(const PointerLink &) = delete;
    PointerLink &operator=(const PointerLink &) = delete;

    /// Has the pointer over a window go to `receiver` instead of the toolkit, through a window
    /// without looks that fills it and takes what the window itself would have taken. Undoes it
    /// where a pen may draw. Answers whether the window is covered; what the toolkit still tells
    /// of the pointer over it is out of date then.
    [[nodiscard]] bool cover(xcb_window_t window, PointerReceiver &receiver);
    /// Gives the pointer over a window back to the toolkit. To be called before the window goes.
    void uncover(xcb_window_t window);
    /// To be called when the toolkit brings a key to a covered window: hands on first what the
    /// pointer did before it.
    void meet(const KeyMoment &key);
    /// Whether it is handing on at this moment, and will call `afterLot`.
    [[nodiscard]] bool isTaking() const { return isTaking_; }

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    using XEvent = XReply<xcb_generic_event_t>;
    /// What the toolkit had asked for of one device.
    struct Selection {
        std::uint16_t device = 0;
        std::vector<std::uint32_t> mask;
    };
    struct Cover {
        xcb_window_t window;
        PointerReceiver *receiver;
        std::vector<Selection> toolkits;
    };

    void take();
    void takeSoon();
    void waitForServer() const;
    void read();
    void handOnUpToKey();
    [[nodiscard]] bool isDueBefore(const KeyMoment &key) const;
    void handOn(const xcb_generic_event_t &event) const;
    void waitForKey();
    void select(xcb_window_t window, const std::vector<Selection> &selections) const;
    [[nodiscard]] std::vector<Selection> toolkitsSelections(xcb_window_t window) const;

    const XConnection &x_;
    DesktopMainThread &mainThread_;
    std::function<bool()> hasPen_;
    std::function<void()> afterLot_;
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    std::unique_ptr<QSocketNotifier> notifier_;
    /// By the window that each covers.
    std::map<xcb_window_t, Cover> covers_;
    /// Read and not yet handed on.
    std::deque<XEvent> waiting_;
    /// Runs while the pointer waits for a key.
    std::optional<TaskHandle> patience_;
    bool isTaking_ = false;
};

} // namespace orv::platform
