#include "platform/desktop/FrontWindow.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace orv::platform {

namespace {

/// The source indication of pagers and tools, which window managers obey.
constexpr std::uint32_t kSourceTool = 2;

} // namespace

FrontWindow::FrontWindow(const XConnection &x)
    : x_(x), ownBase_(xcb_get_setup(x.get())->resource_id_base),
      ownMask_(xcb_get_setup(x.get())->resource_id_mask)
{
}

bool FrontWindow::isOwn(xcb_window_t window) const
{
    return (window & ~ownMask_) == ownBase_;
}

bool FrontWindow::hasWindowManager() const
{
    const auto named = x_.numbers(x_.root(), "_NET_SUPPORTING_WM_CHECK");
    if (named.empty()) {
        return false;
    }
    const auto itself = x_.numbers(named.front(), "_NET_SUPPORTING_WM_CHECK");
    return !itself.empty() && itself.front() == named.front();
}

xcb_window_t FrontWindow::focus() const
{
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(x_.get(), xcb_get_input_focus(x_.get()), nullptr));
    return reply && reply->focus > XCB_INPUT_FOCUS_POINTER_ROOT ? reply->focus
                                                                : xcb_window_t{XCB_NONE};
}

bool FrontWindow::isOurs() const
{
    const xcb_window_t window = focus();
    return window != XCB_NONE && isOwn(window);
}

xcb_window_t FrontWindow::present() const
{
    xcb_window_t window = XCB_NONE;
    if (hasWindowManager()) {
        const auto active = x_.numbers(x_.root(), "_NET_ACTIVE_WINDOW");
        window = active.empty() ? xcb_window_t{XCB_NONE} : active.front();
    } else {
        window = focus();
    }
    return window == x_.root() || isOwn(window) ? xcb_window_t{XCB_NONE} : window;
}

void FrontWindow::remember()
{
    if (isOurs()) {
        return;
    }
    remembered_ = present();
}

void FrontWindow::giveBack() const
{
    activate(remembered_);
}

void FrontWindow::activate(xcb_window_t window) const
{
    if (window == XCB_NONE) {
        return;
    }
    if (hasWindowManager()) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = x_.atom("_NET_ACTIVE_WINDOW");
        message.data.data32[0] = kSourceTool;
        message.data.data32[1] = XCB_CURRENT_TIME;
        std::array<char, sizeof message> bytes{};
        std::memcpy(bytes.data(), &message, sizeof message);
        xcb_send_event(x_.get(), 0, x_.root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       bytes.data());
    } else {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(x_.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        xcb_set_input_focus(x_.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    }
    x_.flush();
}

std::vector<xcb_window_t> FrontWindow::windows() const
{
    std::vector<xcb_window_t> found =
        hasWindowManager() ? x_.numbers(x_.root(), "_NET_CLIENT_LIST_STACKING") : x_.topLevels();
    std::erase_if(found, [this](xcb_window_t window) { return isOwn(window); });
    std::reverse(found.begin(), found.end());
    return found;
}

std::int32_t FrontWindow::process(xcb_window_t window) const
{
    const auto pid =
        window == XCB_NONE ? std::vector<std::uint32_t>{} : x_.numbers(window, "_NET_WM_PID");
    return pid.empty() ? 0 : static_cast<std::int32_t>(pid.front());
}

} // namespace orv::platform
