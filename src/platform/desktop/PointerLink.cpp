#include "platform/desktop/PointerLink.h"

#include "platform/desktop/CorePointer.h"

#include <QCoreApplication>
#include <QEvent>

#include <xcb/xinput.h>

#include <algorithm>
#include <array>
#include <utility>

namespace orv::platform {

namespace {

/// No window is larger; what is beyond the window that it fills is cut off.
constexpr std::uint16_t kSide = 32767;

/// Of a press or release of a key or button, or a motion; all have one layout.
std::uint32_t timeOf(const xcb_generic_event_t &event)
{
    return reinterpret_cast<const xcb_key_press_event_t &>(event).time;
}

bool isKeyPress(const xcb_generic_event_t &event)
{
    return kindOf(event) == XCB_KEY_PRESS;
}

bool isSame(const xcb_generic_event_t &event, const KeyMoment &key)
{
    const auto &press = reinterpret_cast<const xcb_key_press_event_t &>(event);
    return isKeyPress(event) && key.down && press.detail == key.keyCode && press.time == key.time;
}

/// The server's clock begins anew every seven weeks.
std::int32_t timeSince(const xcb_generic_event_t &event, const KeyMoment &key)
{
    return static_cast<std::int32_t>(timeOf(event) - key.time);
}

/// Calls when its socket has something; without a signal, whose way is the longer one.
class SocketBell final : public QSocketNotifier {
public:
    SocketBell(int socket, std::function<void()> ring)
        : QSocketNotifier(socket, Read), ring_(std::move(ring))
    {
    }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::SockAct) {
            return QSocketNotifier::event(event);
        }
        ring_();
        return true;
    }

private:
    std::function<void()> ring_;
};

} // namespace

PointerLink::PointerLink(const XConnection &x, DesktopMainThread &mainThread,
                         std::function<bool()> hasPen, std::function<void()> afterLot)
    : x_(x), mainThread_(mainThread), hasPen_(std::move(hasPen)), afterLot_(std::move(afterLot)),
      connection_(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(connection_.get()) != 0) {
        connection_.reset();
        return;
    }
    notifier_ = std::make_unique<SocketBell>(xcb_get_file_descriptor(connection_.get()),
                                             [this] { take(); });
}

PointerLink::~PointerLink() = default;

std::vector<PointerLink::Selection> PointerLink::toolkitsSelections(xcb_window_t window) const
{
    const auto cookie = xcb_input_xi_get_selected_events(x_.get(), window);
    const XReply<xcb_input_xi_get_selected_events_reply_t> reply(
        xcb_input_xi_get_selected_events_reply(x_.get(), cookie, nullptr));
    std::vector<Selection> selections;
    if (!reply) {
        return selections;
    }
    for (auto mask = xcb_input_xi_get_selected_events_masks_iterator(reply.get()); mask.rem > 0;
         xcb_input_event_mask_next(&mask)) {
        const std::uint32_t *bits = xcb_input_event_mask_mask(mask.data);
        selections.push_back({mask.data->deviceid, {bits, bits + mask.data->mask_len}});
    }
    return selections;
}

void PointerLink::select(xcb_window_t window, const std::vector<Selection> &selections) const
{
    for (const Selection &selection : selections) {
        std::vector<std::uint32_t> request{
            selection.device | static_cast<std::uint32_t>(selection.mask.size()) << 16U};
        request.insert(request.end(), selection.mask.begin(), selection.mask.end());
        xcb_input_xi_select_events(
            x_.get(), window, 1, reinterpret_cast<const xcb_input_event_mask_t *>(request.data()));
    }
    x_.flush();
}

bool PointerLink::cover(xcb_window_t window, PointerReceiver &receiver)
{
    if (hasPen_()) {
        uncover(window);
        return false;
    }
    if (!connection_ || covers_.contains(window)) {
        return connection_ != nullptr;
    }
    // The answer also says that the window, asked for on the toolkit's connection, is there by now.
    std::vector<Selection> toolkits = toolkitsSelections(window);
    std::vector<Selection> none = toolkits;
    for (Selection &selection : none) {
        std::fill(selection.mask.begin(), selection.mask.end(), 0U);
    }
    select(window, none);
    xcb_connection_t *link = connection_.get();
    const xcb_window_t cover = xcb_generate_id(link);
    const std::array<std::uint32_t, 1> pointer{core_pointer::events};
    xcb_create_window(link, 0, cover, window, 0, 0, kSide, kSide, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, pointer.data());
    xcb_map_window(link, cover);
    const std::array<std::uint32_t, 1> keys{XCB_EVENT_MASK_KEY_PRESS};
    xcb_change_window_attributes(link, window, XCB_CW_EVENT_MASK, keys.data());
    // Or input that another program sends next would come upon nobody.
    waitForServer();
    takeSoon();
    covers_.emplace(window, Cover{cover, &receiver, std::move(toolkits)});
    return true;
}

void PointerLink::uncover(xcb_window_t window)
{
    const auto found = covers_.find(window);
    if (found == covers_.end()) {
        return;
    }
    const std::array<std::uint32_t, 1> nothing{XCB_EVENT_MASK_NO_EVENT};
    xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, nothing.data());
    xcb_destroy_window(connection_.get(), found->second.window);
    xcb_flush(connection_.get());
    takeSoon();
    select(window, found->second.toolkits);
    covers_.erase(found);
}

void PointerLink::waitForServer() const
{
    const XReply<xcb_get_input_focus_reply_t> answer(xcb_get_input_focus_reply(
        connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
}

void PointerLink::takeSoon()
{
    // Whoever writes to the connection may read what has come, and then the socket is silent of it.
    QCoreApplication::postEvent(notifier_.get(), new QEvent(QEvent::SockAct));
}

void PointerLink::take()
{
    isTaking_ = true;
    read();
    handOnUpToKey();
    isTaking_ = false;
    afterLot_();
}

void PointerLink::read()
{
    std::size_t came = 0;
    do {
        came = 0;
        XEvent event(xcb_poll_for_event(connection_.get()));
        while (event) {
            ++came;
            // What everyone is told, such as another layout of the keys, has no time to go by.
            if (isKeyPress(*event) || core_pointer::windowOf(*event)) {
                waiting_.push_back(std::move(event));
            }
            event.reset(xcb_poll_for_queued_event(connection_.get()));
        }
        // One alone leaves nothing behind it as a rule; if it does, the socket says so.
    } while (came > 1);
    if (xcb_connection_has_error(connection_.get()) != 0) {
        notifier_->setEnabled(false);
    }
}

void PointerLink::handOnUpToKey()
{
    while (!waiting_.empty() && !isKeyPress(*waiting_.front())) {
        const XEvent event = std::move(waiting_.front());
        waiting_.pop_front();
        handOn(*event);
    }
    if (!waiting_.empty() && !patience_) {
        waitForKey();
    }
}

void PointerLink::waitForKey()
{
    patience_ = mainThread_.after(patience, [this] {
        patience_.reset();
        if (!waiting_.empty() && isKeyPress(*waiting_.front())) {
            waiting_.pop_front();
        }
        take();
    });
}

bool PointerLink::isDueBefore(const KeyMoment &key) const
{
    if (waiting_.empty() || isSame(*waiting_.front(), key)) {
        return false;
    }
    // Of one moment, a key that is not this one is still to be met.
    const std::int32_t since = timeSince(*waiting_.front(), key);
    return isKeyPress(*waiting_.front()) ? since < 0 : since <= 0;
}

void PointerLink::meet(const KeyMoment &key)
{
    if (covers_.empty()) {
        return;
    }
    // By its answer the server has sent us whatever came before the key.
    waitForServer();
    read();
    while (isDueBefore(key)) {
        const XEvent event = std::move(waiting_.front());
        waiting_.pop_front();
        handOn(*event);
    }
    if (!waiting_.empty() && isSame(*waiting_.front(), key)) {
        waiting_.pop_front();
    }
    patience_.reset();
    if (!waiting_.empty()) {
        takeSoon();
    }
}

void PointerLink::handOn(const xcb_generic_event_t &event) const
{
    const auto window = core_pointer::windowOf(event);
    const auto found = std::find_if(covers_.begin(), covers_.end(), [&](const auto &entry) {
        return window && entry.second.window == *window;
    });
    if (found != covers_.end()) {
        core_pointer::handOn(event, *found->second.receiver);
    }
}

} // namespace orv::platform
