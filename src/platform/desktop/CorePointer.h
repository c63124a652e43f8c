#pragma once

#include "platform/desktop/PointerInput.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace orv::platform::core_pointer {

/// What a window asks for to get presses, releases, motions and the pointer's coming.
constexpr std::uint32_t events = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                 XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_ENTER_WINDOW;

/// The window that such an event is for; nothing for events of other kinds.
[[nodiscard]] std::optional<xcb_window_t> windowOf(const xcb_generic_event_t &event);
/// Tells the receiver of such an event; buttons other than left and right make no input.
void handOn(const xcb_generic_event_t &event, PointerReceiver &receiver);

} // namespace orv::platform::core_pointer
