#include "platform/desktop/PointerInput.h"

#include <xcb/xproto.h>

#include <cmath>

namespace orv::platform {

namespace {

constexpr double kDoubleClickSeconds = 0.5;
constexpr double kDoubleClickPixels = 5.0;

} // namespace

std::uint64_t modifierFlags(Qt::KeyboardModifiers modifiers)
{
    std::uint64_t flags = 0;
    flags |= modifiers.testFlag(Qt::ShiftModifier) ? modifier::shift : 0;
    flags |= modifiers.testFlag(Qt::ControlModifier) ? modifier::control : 0;
    flags |= modifiers.testFlag(Qt::AltModifier) ? modifier::option : 0;
    flags |= modifiers.testFlag(Qt::MetaModifier) ? modifier::command : 0;
    return flags;
}

std::uint64_t modifierFlagsOfState(std::uint32_t state)
{
    std::uint64_t flags = 0;
    flags |= (state & XCB_MOD_MASK_LOCK) != 0 ? modifier::capsLock : 0;
    flags |= (state & XCB_MOD_MASK_SHIFT) != 0 ? modifier::shift : 0;
    flags |= (state & XCB_MOD_MASK_CONTROL) != 0 ? modifier::control : 0;
    flags |= (state & XCB_MOD_MASK_1) != 0 ? modifier::option : 0;
    flags |= (state & XCB_MOD_MASK_4) != 0 ? modifier::command : 0;
    return flags;
}

EventType eventType(const PointerInput &input)
{
    const bool right = input.button == MouseButton::right;
    switch (input.action) {
    case PointerInput::Action::press:
        return right ? EventType::rightMouseDown : EventType::leftMouseDown;
    case PointerInput::Action::release:
        return right ? EventType::rightMouseUp : EventType::leftMouseUp;
    case PointerInput::Action::move:
        break;
    }
    if (input.leftHeld) {
        return EventType::leftMouseDragged;
    }
    return input.rightHeld ? EventType::rightMouseDragged : EventType::mouseMoved;
}

std::int32_t ClickCounter::press(MouseButton button, const QPointF &position, double seconds)
{
    const QPointF way = position - position_;
    const bool follows =
        count_ > 0 && button == button_ && seconds - seconds_ <= kDoubleClickSeconds &&
        std::abs(way.x()) <= kDoubleClickPixels && std::abs(way.y()) <= kDoubleClickPixels;
    count_ = follows ? count_ + 1 : 1;
    button_ = button;
    position_ = position;
    seconds_ = seconds;
    return count_;
}

} // namespace orv::platform
