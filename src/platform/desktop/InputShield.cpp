#include "platform/desktop/InputShield.h"

#include <QCoreApplication>

#include <array>
#include <optional>

namespace orv::platform {

namespace {

constexpr std::uint8_t kSentEvent = 0x80;
constexpr std::uint8_t kLeftButton = 1;
constexpr std::uint8_t kRightButton = 3;
constexpr std::uint32_t kEvents = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                  XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_ENTER_WINDOW;

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

InputShield::InputShield(const XConnection &x, const QRect &frame, PointerReceiver &receiver)
    : x_(x), receiver_(receiver), window_(xcb_generate_id(x.get()))
{
    const std::array<std::uint32_t, 2> values = {1, kEvents};
    xcb_create_window(
        x_.get(), 0, window_, x_.root(), static_cast<std::int16_t>(frame.x()),
        static_cast<std::int16_t>(frame.y()), static_cast<std::uint16_t>(frame.width()),
        static_cast<std::uint16_t>(frame.height()), 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    cursorWindow_.reset(QWindow::fromWinId(window_));
    cursorWindow_->setCursor(Qt::ArrowCursor);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

InputShield::~InputShield()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
    cursorWindow_.reset();
    xcb_destroy_window(x_.get(), window_);
}

void InputShield::setFrame(const QRect &frame)
{
    const std::array<std::uint32_t, 4> values = {
        static_cast<std::uint32_t>(frame.x()), static_cast<std::uint32_t>(frame.y()),
        static_cast<std::uint32_t>(frame.width()), static_cast<std::uint32_t>(frame.height())};
    xcb_configure_window(x_.get(), window_,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
}

void InputShield::raise()
{
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(x_.get(), window_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_map_window(x_.get(), window_);
}

bool InputShield::nativeEventFilter(const QByteArray & /*eventType*/, void *message,
                                    qintptr * /*result*/)
{
    const auto *generic = static_cast<const xcb_generic_event_t *>(message);
    const std::uint8_t type = generic->response_type & ~kSentEvent;
    if (type == XCB_ENTER_NOTIFY) {
        return entered(*static_cast<const xcb_enter_notify_event_t *>(message));
    }
    if (type != XCB_BUTTON_PRESS && type != XCB_BUTTON_RELEASE && type != XCB_MOTION_NOTIFY) {
        return false;
    }
    const auto *event = static_cast<const xcb_button_press_event_t *>(message);
    if (event->event != window_) {
        return false;
    }
    if (const auto input = inputOf(*event, type)) {
        receiver_.pointer(*input);
    }
    return true;
}

bool InputShield::entered(const xcb_enter_notify_event_t &event)
{
    if (event.event != window_) {
        return false;
    }
    receiver_.pointerEntered(QPointF(event.event_x, event.event_y));
    return true;
}

} // namespace orv::platform
