#include "platform/desktop/CorePointer.h"

#include "platform/desktop/XConnection.h"

namespace orv::platform::core_pointer {

namespace {

constexpr std::uint8_t kLeftButton = 1;
constexpr std::uint8_t kRightButton = 3;

/// Presses, releases and motions have one layout. Nothing for a button that makes no input.
std::optional<PointerInput> inputOf(const xcb_button_press_event_t &event, std::uint8_t type)
{
    PointerInput input;
    std::uint32_t state = event.state;
    if (type == XCB_MOTION_NOTIFY) {
        input.action = PointerInput::Action::move;
    } else if (event.detail == kLeftButton || event.detail == kRightButton) {
        const bool down = type == XCB_BUTTON_PRESS;
        input.action = down ? PointerInput::Action::press : PointerInput::Action::release;
        const std::uint32_t bit =
            event.detail == kLeftButton ? XCB_BUTTON_MASK_1 : XCB_BUTTON_MASK_3;
        state = down ? state | bit : state & ~bit;
    } else {
        return std::nullopt;
    }
    input.leftHeld = (state & XCB_BUTTON_MASK_1) != 0;
    input.rightHeld = (state & XCB_BUTTON_MASK_3) != 0;
    const bool right = type == XCB_MOTION_NOTIFY ? input.rightHeld && !input.leftHeld
                                                 : event.detail == kRightButton;
    input.button = right ? MouseButton::right : MouseButton::left;
    input.position = QPointF(event.event_x, event.event_y);
    input.modifierFlags = modifierFlagsOfState(event.state);
    input.pressure = input.leftHeld || input.rightHeld ? 1.0F : 0.0F;
    return input;
}

} // namespace

std::optional<xcb_window_t> windowOf(const xcb_generic_event_t &event)
{
    switch (kindOf(event)) {
    case XCB_ENTER_NOTIFY:
        return reinterpret_cast<const xcb_enter_notify_event_t &>(event).event;
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
    case XCB_MOTION_NOTIFY:
        return reinterpret_cast<const xcb_button_press_event_t &>(event).event;
    default:
        return std::nullopt;
    }
}

void handOn(const xcb_generic_event_t &event, PointerReceiver &receiver)
{
    const std::uint8_t type = kindOf(event);
    if (type == XCB_ENTER_NOTIFY) {
        const auto &entered = reinterpret_cast<const xcb_enter_notify_event_t &>(event);
        receiver.pointerEntered(QPointF(entered.event_x, entered.event_y));
        return;
    }
    const auto &step = reinterpret_cast<const xcb_button_press_event_t &>(event);
    if (const auto input = inputOf(step, type)) {
        receiver.pointer(*input);
    }
}

} // namespace orv::platform::core_pointer
