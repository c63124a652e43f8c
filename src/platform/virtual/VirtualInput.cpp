#include "platform/virtual/VirtualInput.h"

#include "platform/ports/MainThread.h"
#include "platform/virtual/VirtualDisplays.h"
#include "platform/virtual/VirtualWindowServer.h"

#include <cstddef>

namespace orv::platform {

namespace {

bool isPress(EventType type)
{
    return type == EventType::leftMouseDown || type == EventType::rightMouseDown;
}

bool isRelease(EventType type)
{
    return type == EventType::leftMouseUp || type == EventType::rightMouseUp;
}

MouseButton buttonOf(EventType type, MouseButton given)
{
    switch (type) {
    case EventType::rightMouseDown:
    case EventType::rightMouseUp:
    case EventType::rightMouseDragged:
        return MouseButton::right;
    default:
        return given;
    }
}

} // namespace

VirtualInput::VirtualInput(MainThread &mainThread, VirtualDisplays &displays,
                           VirtualWindowServer &windows)
    : mainThread_(mainThread), displays_(displays), windows_(windows)
{
}

int VirtualInput::sendMouse(EventType type, Point global, std::uint64_t modifierFlags,
                            MouseButton button)
{
    displays_.setMouseLocation(global);
    Event event;
    event.type = type;
    event.button = buttonOf(type, button);
    event.modifierFlags = modifierFlags;
    event.clickCount = type == EventType::mouseMoved ? 0 : 1;
    event.windowNumber = mouseTarget(type, global, event.button);
    if (const VirtualWindowSurface *target = windows_.surface(event.windowNumber)) {
        event.location = global - target->frame().origin;
        deliver(event);
        return event.windowNumber;
    }
    return 0;
}

int VirtualInput::sendKey(EventType type, std::uint16_t keyCode, const std::u16string &characters,
                          std::uint64_t modifierFlags)
{
    if (windows_.surface(windows_.keyWindow()) == nullptr) {
        return 0;
    }
    Event event;
    event.type = type;
    event.keyCode = keyCode;
    event.characters = characters;
    event.modifierFlags = modifierFlags;
    event.windowNumber = windows_.keyWindow();
    deliver(event);
    return event.windowNumber;
}

int VirtualInput::mouseTarget(EventType type, Point global, MouseButton button)
{
    const VirtualWindowSurface *below = windows_.windowAt(global);
    const int hit = below != nullptr ? below->windowNumber() : 0;
    if (type == EventType::mouseMoved) {
        return hit;
    }
    std::optional<int> &held = pressed_.at(static_cast<std::size_t>(button));
    if (isPress(type)) {
        held = hit;
    }
    const int target = held.value_or(hit);
    if (isRelease(type)) {
        held.reset();
    }
    return target;
}

void VirtualInput::deliver(const Event &event)
{
    Event sent = event;
    sent.timestamp = mainThread_.now();
    sent.eventNumber = ++eventNumber_;
    mainThread_.postAndWait([this, &sent] {
        if (const VirtualWindowSurface *target = windows_.surface(sent.windowNumber)) {
            target->events().sendEvent(sent);
        }
    });
}

} // namespace orv::platform
