#include "platform/desktop/StackKeeper.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>
#include <utility>

namespace orv::platform {

namespace {

constexpr double kShortestDelay = 0.05;
constexpr double kLongestDelay = 10.0;
/// A restack that does not hold this many delays was contested.
constexpr double kPeace = 4.0;

xcb_window_t changedWindow(const void *message)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    switch (kindOf(*event)) {
    case XCB_MAP_NOTIFY:
        return static_cast<const xcb_map_notify_event_t *>(message)->window;
    case XCB_CONFIGURE_NOTIFY:
        return static_cast<const xcb_configure_notify_event_t *>(message)->window;
    default:
        return XCB_NONE;
    }
}

} // namespace

StackKeeper::StackKeeper(const XConnection &x, const FrontWindow &front,
                         DesktopMainThread &mainThread,
                         std::function<std::vector<xcb_window_t>()> ours,
                         std::function<void()> restack)
    : x_(x), front_(front), mainThread_(mainThread), ours_(std::move(ours)),
      restack_(std::move(restack)), delay_(kShortestDelay)
{
    // A compositor keeps windows from becoming obscured, so the order itself is watched.
    x_.addEvents(x_.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

StackKeeper::~StackKeeper()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool StackKeeper::nativeEventFilter(const QByteArray & /*eventType*/, void *message,
                                    qintptr * /*result*/)
{
    const xcb_window_t window = changedWindow(message);
    if (window != XCB_NONE && !front_.isOwn(window)) {
        checkLater();
    }
    return false;
}

void StackKeeper::checkLater()
{
    if (!std::exchange(pending_, true)) {
        timer_ = mainThread_.after(delay_, [this] {
            pending_ = false;
            check();
        });
    }
}

void StackKeeper::check()
{
    if (!isCovered()) {
        return;
    }
    const double now = mainThread_.now();
    const bool contested = now - lastRestack_ < kPeace * delay_;
    delay_ = contested ? std::min(2.0 * delay_, kLongestDelay) : kShortestDelay;
    lastRestack_ = now;
    restack_();
}

bool StackKeeper::isCovered() const
{
    const std::vector<xcb_window_t> ours = ours_();
    const std::vector<xcb_window_t> all = x_.topLevels();
    const auto lowest = std::find_first_of(all.begin(), all.end(), ours.begin(), ours.end());
    std::vector<xcb_window_t> others;
    std::copy_if(lowest, all.end(), std::back_inserter(others),
                 [this](xcb_window_t window) { return !front_.isOwn(window); });
    return !x_.shownAmong(others).empty();
}

} // namespace orv::platform
