#pragma once

#include "platform/desktop/XConnection.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace orv::platform {

/// The window of another application that has the front, and the way to give the front back.
///
/// Thread   any.
/// Fails    without such a window everything is answered with none and nothing is done.
class FrontWindow {
public:
    explicit FrontWindow(const XConnection &x);

    /// The active window: by the window manager, or without one the window with the keyboard.
    /// `XCB_NONE` when it is one of ours or there is none.
    [[nodiscard]] xcb_window_t present() const;
    /// Whether a window of this process has the keyboard.
    [[nodiscard]] bool isOurs() const;
    /// Takes note of the present one, to be called before a window of ours takes the keyboard.
    void remember();
    /// Activates the noted one.
    void giveBack() const;
    void activate(xcb_window_t window) const;

    /// The application windows from the frontmost to the rearmost, without ours.
    [[nodiscard]] std::vector<xcb_window_t> windows() const;
    /// 0 when the window does not tell.
    [[nodiscard]] std::int32_t process(xcb_window_t window) const;
    /// Made by this process.
    [[nodiscard]] bool isOwn(xcb_window_t window) const;

private:
    /// The property that names the manager's window outlives the manager, so the window is asked.
    [[nodiscard]] bool hasWindowManager() const;
    [[nodiscard]] xcb_window_t focus() const;

    const XConnection &x_;
    std::uint32_t ownBase_;
    std::uint32_t ownMask_;
    std::atomic<xcb_window_t> remembered_ = XCB_NONE;
};

} // namespace orv::platform
