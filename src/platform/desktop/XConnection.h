#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace orv::platform {

struct XReplyDeleter {
    void operator()(void *reply) const { std::free(reply); }
};
/// A reply of the X server, freed at its end; null when the request failed.
template <class T> using XReply = std::unique_ptr<T, XReplyDeleter>;

/// What kind of event it is, whether the X server or another program sent it.
[[nodiscard]] inline std::uint8_t kindOf(const xcb_generic_event_t &event)
{
    constexpr std::uint8_t kKindBits = 0x7F;
    return event.response_type & kKindBits;
}

/// The application's connection to the X server, with the few questions that several ask of it.
///
/// Owner    borrows the connection of the GUI application, which outlives it.
/// Thread   any.
/// Fails    a question about a window that is gone is answered empty.
class XConnection {
public:
    /// Throws `std::runtime_error` when the GUI application is not one on X.
    XConnection();
    XConnection(const XConnection &) = delete;
    XConnection &operator=(const XConnection &) = delete;

    /// Throws `std::runtime_error` with one sentence that names the display when there is none, it
    /// can't be connected to, or it can neither blend nor shape windows. To be called before the
    /// GUI application is made, which would end the process instead.
    static void requireUsableDisplay();

    [[nodiscard]] xcb_connection_t *get() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return root_; }
    [[nodiscard]] int screenNumber() const { return screenNumber_; }
    /// Whether the screen has a visual with eight bits of alpha.
    [[nodiscard]] bool hasAlphaVisual() const { return hasAlphaVisual_; }

    [[nodiscard]] xcb_atom_t atom(const std::string &name) const;
    /// Window IDs, cardinals and atoms; empty when the property is missing or of another format.
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window,
                                                     const std::string &property) const;
    /// The bytes of a text property; empty when it is missing.
    [[nodiscard]] std::string text(xcb_window_t window, const std::string &property) const;
    void setNumber(xcb_window_t window, const std::string &property, std::uint32_t value) const;
    /// The top-level windows from the rearmost to the frontmost.
    [[nodiscard]] std::vector<xcb_window_t> topLevels() const;
    /// Those that draw and are shown, in the same order. All are asked before the first answer is
    /// awaited.
    [[nodiscard]] std::vector<xcb_window_t>
    shownAmong(const std::vector<xcb_window_t> &windows) const;
    /// The top-level window that a window is in, itself when it is one; `XCB_NONE` when it is gone.
    [[nodiscard]] xcb_window_t topLevelOf(xcb_window_t window) const;
    /// Adds event kinds to those that this connection already gets from a window.
    void addEvents(xcb_window_t window, std::uint32_t mask) const;

    /// Sends what waits in the connection's buffer. Requests made while no X event is handled would
    /// otherwise stay there until the next one arrives.
    void flush() const { xcb_flush(connection_); }

private:
    xcb_connection_t *connection_ = nullptr;
    int screenNumber_ = 0;
    xcb_window_t root_ = XCB_NONE;
    bool hasAlphaVisual_ = false;
    mutable std::mutex mutex_;
    mutable std::map<std::string, xcb_atom_t> atoms_;
};

} // namespace orv::platform
