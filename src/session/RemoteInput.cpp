#include "session/RemoteInput.h"

#include "channels/OrvFrameworkLogger.h"
#include "platform/ports/Displays.h"
#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"
#include "session/KeymapTable.h"

namespace orv {

namespace {

using platform::Event;
using platform::EventType;
using platform::MouseButton;
using platform::Point;

constexpr std::int32_t kLeftHeld = 1;
constexpr std::int32_t kRightHeld = 2;
constexpr std::int32_t kClickState = 1;
constexpr std::uint32_t kKeyDown = 1;
constexpr std::uint32_t kKeyUp = 2;
constexpr std::uint32_t kTypedCharacter = 64;
constexpr std::uint32_t kKeyCodeMask = 0xFF;
constexpr std::uint32_t kCapsLockKey = 57;

// A first word of 0 means that the second one carries both halves.
Point clientPoint(const ControlEvent &event)
{
    const std::uint32_t word1 = event[1];
    const std::uint32_t word2 = event[2];
    if (word1 != 0) {
        return {static_cast<double>(static_cast<std::int32_t>(word1)),
                static_cast<double>(static_cast<std::int32_t>(word2))};
    }
    return {static_cast<double>(word2 & 0xFFFFU), static_cast<double>(word2 >> 16U)};
}

// Into the toolbox's own system: its origin on the display is taken off, in x from the left and in
// y upward, so that the later flip lands in the panel.
Point getNewMouseLocation(Point location, const RemoteInputDesk &desk)
{
    const Point origin = desk.displayScreen ? desk.displayScreen->frame.origin : Point{};
    const Point panel = desk.toolbox->frame().origin - origin;
    return {location.x - panel.x, location.y + panel.y};
}

Point convertOriginPointCoordinates(Point location)
{
    platform::Displays &displays = platform::Platform::current().displays();
    const auto main = displays.screen(displays.mainDisplayID());
    return main ? main->flipPoint(location) : location;
}

bool checkHitView(const Event &event, const RemoteInputDesk &desk)
{
    // A strip that has slid away may stand at home, unseen; what is drawn there is ink.
    if (desk.toolbox->ignoresMouseEvents() ||
        !desk.toolbox->contentView()->frame().containsMouse(event.location)) {
        return false;
    }
    const bool menuIsOpen = desk.menuTool != nullptr && !desk.menuTool->getToolMenuIsHidden();
    return (desk.toolMenuView != nullptr &&
            desk.toolMenuView->frame().containsMouse(event.location)) ||
           (menuIsOpen && desk.menuTool->getToolMenuRect().containsMouse(event.location));
}

bool isPress(EventType type)
{
    return type == EventType::leftMouseDown || type == EventType::rightMouseDown;
}

std::uint64_t modifierOf(std::uint32_t vkey)
{
    switch (vkey) {
    case 54:
    case 55:
        return platform::modifier::command;
    case 56:
    case 60:
        return platform::modifier::shift;
    case 58:
    case 61:
        return platform::modifier::option;
    case 59:
    case 62:
        return platform::modifier::control;
    default:
        return 0;
    }
}

double now()
{
    return platform::Platform::current().mainThread().now();
}

void sendToCanvasWindow(const Event &event, const RemoteInputDesk &desk)
{
    if (desk.overlay != nullptr) {
        desk.overlay->sendEvent(event);
    }
}

} // namespace

std::optional<RemoteInput::Kind> RemoteInput::translate(std::int32_t number)
{
    switch (number) {
    case 4:
        return Kind{EventType::null, MouseButton::left};
    case 5:
        mouseButtonStatus_ |= kLeftHeld;
        return Kind{EventType::leftMouseDown, MouseButton::left};
    case 6:
        mouseButtonStatus_ &= ~kLeftHeld;
        return Kind{EventType::leftMouseUp, MouseButton::left};
    case 7:
        return Kind{EventType::null, MouseButton::right};
    case 8:
        mouseButtonStatus_ |= kRightHeld;
        return Kind{EventType::rightMouseDown, MouseButton::right};
    case 9:
        mouseButtonStatus_ &= ~kRightHeld;
        return Kind{EventType::rightMouseUp, MouseButton::right};
    case 10:
        if ((mouseButtonStatus_ & kLeftHeld) != 0) {
            return Kind{EventType::leftMouseDragged, MouseButton::left};
        }
        if ((mouseButtonStatus_ & kRightHeld) != 0) {
            return Kind{EventType::rightMouseDragged, MouseButton::right};
        }
        return Kind{EventType::mouseMoved, MouseButton::center};
    default:
        return std::nullopt;
    }
}

void RemoteInput::handleControlMouseEvent(const ControlEvent &event, const RemoteInputDesk &desk)
{
    const platform::Rect bounds =
        platform::Platform::current().displays().bounds(desk.requestedDisplay);
    const Point location = desk.picture.scaleMouseLocation(clientPoint(event), bounds);
    const auto kind = translate(static_cast<std::int32_t>(event[0]));
    if (!kind) {
        logLine(2, "skipped the mouse event");
        return;
    }
    sendMouseEventtoWindow(*kind, location, desk);
}

Event RemoteInput::createSendEvent(Kind kind, Point location, const RemoteInputDesk &desk) const
{
    const platform::Window *window = desk.overlay;
    if (desk.isSupportMultiScreen) {
        window = desk.canvasHandler->testHitCanvas(location);
    }
    Event event;
    event.type = kind.type;
    event.button = kind.button;
    event.modifierFlags = gFlag_;
    event.timestamp = now();
    event.eventNumber = m_nEventNumber_;
    event.clickCount = kClickState;
    event.location = window == nullptr
                         ? Point{}
                         : window->convertPointFromScreen(convertOriginPointCoordinates(location));
    return event;
}

void RemoteInput::sendMouseEventtoWindow(Kind kind, Point location, const RemoteInputDesk &desk)
{
    if (desk.toolbox == nullptr || desk.canvasHandler == nullptr) {
        return;
    }
    AnnotationOverlayWindow *hit = desk.canvasHandler->testHitCanvas(location);
    m_nEventNumber_ = static_cast<std::int32_t>(static_cast<std::uint32_t>(m_nEventNumber_) + 1U);
    if (isPress(kind.type)) {
        const Event probe = createSendEvent(kind, getNewMouseLocation(location, desk), desk);
        sendEventWindow_ = checkHitView(probe, desk) ? desk.toolbox : nullptr;
    }
    if (sendEventWindow_ == nullptr) {
        sendEventWindow_ = desk.isSupportMultiScreen ? hit : desk.overlay;
    }
    const bool toToolbox = sendEventWindow_ == desk.toolbox;
    Event event =
        createSendEvent(kind, toToolbox ? getNewMouseLocation(location, desk) : location, desk);
    event.windowNumber = sendEventWindow_ == nullptr ? 0 : sendEventWindow_->windowNumber();
    if (!toToolbox) {
        desk.toolbox->sendEvent(event);
    }
    if (desk.isSupportMultiScreen) {
        event.windowNumber = hit == nullptr ? 0 : hit->windowNumber();
        desk.canvasHandler->sendCanvas(hit, event);
    } else if (sendEventWindow_ != nullptr) {
        sendEventWindow_->sendEvent(event);
    }
}

bool RemoteInput::handleModifier(std::uint32_t vkey, bool down)
{
    const std::uint64_t flag = modifierOf(vkey);
    if (flag == 0 && vkey != kCapsLockKey) {
        return false;
    }
    // Caps lock leaves the mask of the modifier before it, and so applies that one once more.
    if (flag != 0) {
        gMask_ = flag;
    } else if (down) {
        gFlag_ ^= platform::modifier::capsLock;
    }
    gFlag_ = down ? gFlag_ | gMask_ : gFlag_ & ~gMask_;
    return true;
}

void RemoteInput::handleControlKeyboardEvent(const ControlEvent &event, const RemoteInputDesk &desk)
{
    const std::uint32_t action = event[0];
    if (action == kTypedCharacter) {
        Event typed;
        typed.timestamp = now();
        typed.characters = {static_cast<char16_t>(event[2])};
        typed.type = EventType::keyDown;
        sendToCanvasWindow(typed, desk);
        typed.type = EventType::keyUp;
        sendToCanvasWindow(typed, desk);
        return;
    }
    if (action != kKeyDown && action != kKeyUp) {
        logLine(1, "skipped the keyboard event");
        return;
    }
    const bool down = action == kKeyDown;
    const std::uint32_t vkey = keymapTable().at(event[1] & kKeyCodeMask).mac_vkey;
    if (!handleModifier(vkey, down)) {
        sendKey(down ? EventType::keyDown : EventType::keyUp, vkey, desk);
    }
}

void RemoteInput::sendKey(EventType type, std::uint32_t vkey, const RemoteInputDesk &desk) const
{
    Event event;
    event.type = type;
    event.timestamp = now();
    event.keyCode = static_cast<std::uint16_t>(vkey);
    event.modifierFlags = gFlag_ | ownFlagsOfVirtualKey(vkey);
    event.characters = charactersOfVirtualKey(vkey, gFlag_);
    sendToCanvasWindow(event, desk);
}

} // namespace orv
