#include "platform/desktop/OverlayWindow.h"

#include "platform/desktop/KeyTranslation.h"
#include "platform/desktop/WindowTraits.h"

#include <QEnterEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QSurfaceFormat>
#include <QTabletEvent>

#include <xcb/xproto.h>

namespace orv::platform {

namespace {

constexpr double kMousePressure = 1.0;

std::uint64_t flagsAfter(const QKeyEvent &event, std::uint16_t key, bool down)
{
    // The native state is the one before the event.
    std::uint64_t flags = modifierFlagsOfState(event.nativeModifiers());
    const std::uint64_t own = modifierOfKey(key);
    if (own == modifier::capsLock) {
        return down ? flags ^ own : flags;
    }
    flags = down ? flags | own : flags & ~own;
    return flags | flagsOfKey(key);
}

} // namespace

OverlayWindow::OverlayWindow(OverlayWindowClient &client) : client_(&client)
{
    QSurfaceFormat format;
    format.setAlphaBufferSize(window_traits::alphaBits);
    setFormat(format);
    setSurfaceType(QSurface::RasterSurface);
    setFlags(window_traits::flags);
    setCursor(Qt::ArrowCursor);
}

void OverlayWindow::paintEvent(QPaintEvent *event)
{
    if (client_ != nullptr && isExposed()) {
        client_->exposed(event->region());
    }
}

void OverlayWindow::pointer(PointerInput::Action action, const QSinglePointEvent &event,
                            double pressure)
{
    const bool isMove = action == PointerInput::Action::move;
    const bool isKnown = event.button() == Qt::LeftButton || event.button() == Qt::RightButton;
    if (client_ == nullptr || !hearsPointer_ || (!isMove && !isKnown)) {
        return;
    }
    PointerInput input;
    input.action = action;
    input.leftHeld = event.buttons().testFlag(Qt::LeftButton);
    input.rightHeld = event.buttons().testFlag(Qt::RightButton);
    const bool right =
        isMove ? input.rightHeld && !input.leftHeld : event.button() == Qt::RightButton;
    input.button = right ? MouseButton::right : MouseButton::left;
    input.position = event.position();
    input.modifierFlags = modifierFlags(event.modifiers());
    const bool presses = input.leftHeld || input.rightHeld;
    input.pressure = presses ? static_cast<float>(pressure) : 0.0F;
    client_->pointer(input);
}

void OverlayWindow::mousePressEvent(QMouseEvent *event)
{
    pointer(PointerInput::Action::press, *event, kMousePressure);
}

void OverlayWindow::mouseReleaseEvent(QMouseEvent *event)
{
    pointer(PointerInput::Action::release, *event, kMousePressure);
}

void OverlayWindow::mouseMoveEvent(QMouseEvent *event)
{
    pointer(PointerInput::Action::move, *event, kMousePressure);
}

void OverlayWindow::tabletEvent(QTabletEvent *event)
{
    // Accepted, or the toolkit would send the same step again as a mouse event.
    event->accept();
    switch (event->type()) {
    case QEvent::TabletPress:
        pointer(PointerInput::Action::press, *event, event->pressure());
        break;
    case QEvent::TabletRelease:
        pointer(PointerInput::Action::release, *event, event->pressure());
        break;
    default:
        pointer(PointerInput::Action::move, *event, event->pressure());
        break;
    }
}

void OverlayWindow::key(const QKeyEvent &event, bool down)
{
    if (client_ == nullptr) {
        return;
    }
    KeyInput input;
    input.moment = {down, static_cast<std::uint8_t>(event.nativeScanCode()),
                    static_cast<std::uint32_t>(event.timestamp())};
    input.isRepeat = event.isAutoRepeat();
    input.virtualKey = virtualKey(event.nativeVirtualKey(), event.nativeScanCode());
    input.modifierFlags = flagsAfter(event, input.virtualKey, down);
    input.characters = event.text().toStdU16String();
    client_->key(input);
}

void OverlayWindow::keyPressEvent(QKeyEvent *event)
{
    key(*event, true);
}

void OverlayWindow::keyReleaseEvent(QKeyEvent *event)
{
    key(*event, false);
}

void OverlayWindow::focusInEvent(QFocusEvent * /*event*/)
{
    if (client_ != nullptr) {
        client_->keyboard(true);
    }
}

void OverlayWindow::focusOutEvent(QFocusEvent * /*event*/)
{
    if (client_ != nullptr) {
        client_->keyboard(false);
    }
}

bool OverlayWindow::event(QEvent *event)
{
    if (client_ != nullptr && hearsPointer_ && event->type() == QEvent::Enter) {
        client_->pointerEntered(static_cast<const QEnterEvent *>(event)->position());
    }
    return QWindow::event(event);
}

} // namespace orv::platform
