#include "platform/desktop/InputShield.h"

#include "platform/desktop/CorePointer.h"

#include <QCoreApplication>

#include <array>

namespace orv::platform {

InputShield::InputShield(const XConnection &x, PointerLink &link, const QRect &frame,
                         PointerReceiver &receiver)
    : x_(x), link_(link), receiver_(receiver), window_(xcb_generate_id(x.get()))
{
    const std::array<std::uint32_t, 2> values = {1, core_pointer::events};
    xcb_create_window(
        x_.get(), 0, window_, x_.root(), static_cast<std::int16_t>(frame.x()),
        static_cast<std::int16_t>(frame.y()), static_cast<std::uint16_t>(frame.width()),
        static_cast<std::uint16_t>(frame.height()), 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    cursorWindow_.reset(QWindow::fromWinId(window_));
    cursorWindow_->setCursor(Qt::ArrowCursor);
    if (!link_.cover(window_, receiver)) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
}

InputShield::~InputShield()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
    cursorWindow_.reset();
    link_.uncover(window_);
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
    const auto &event = *static_cast<const xcb_generic_event_t *>(message);
    if (core_pointer::windowOf(event) != window_) {
        return false;
    }
    core_pointer::handOn(event, receiver_);
    return true;
}

} // namespace orv::platform
