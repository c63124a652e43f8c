#include "platform/desktop/CompositorWatch.h"

#include <QCoreApplication>

#include <fmt/format.h>
#include <xcb/xfixes.h>

#include <utility>

namespace orv::platform {

CompositorWatch::CompositorWatch(const XConnection &x, std::function<void()> changed)
    : changed_(std::move(changed)),
      selection_(x.atom(fmt::format("_NET_WM_CM_S{}", x.screenNumber())))
{
    const auto *extension = xcb_get_extension_data(x.get(), &xcb_xfixes_id);
    if (extension != nullptr && extension->present != 0) {
        const auto version =
            xcb_xfixes_query_version(x.get(), XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
        const XReply<xcb_xfixes_query_version_reply_t> known(
            xcb_xfixes_query_version_reply(x.get(), version, nullptr));
        selectionEvent_ = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
        xcb_xfixes_select_selection_input(
            x.get(), x.root(), selection_,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
    const XReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        x.get(), xcb_get_selection_owner(x.get(), selection_), nullptr));
    present_ = owner && owner->owner != XCB_NONE;
    QCoreApplication::instance()->installNativeEventFilter(this);
}

CompositorWatch::~CompositorWatch()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool CompositorWatch::nativeEventFilter(const QByteArray & /*eventType*/, void *message,
                                        qintptr * /*result*/)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if (selectionEvent_ == 0 || kindOf(*event) != selectionEvent_) {
        return false;
    }
    const auto *notice = static_cast<const xcb_xfixes_selection_notify_event_t *>(message);
    if (notice->selection != selection_) {
        return false;
    }
    const bool present = notice->subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER &&
                         notice->owner != XCB_NONE;
    if (std::exchange(present_, present) != present) {
        changed_();
    }
    return false;
}

} // namespace orv::platform
