#pragma once

#include "platform/values/Geometry.h"

#include <cstdint>
#include <string>

namespace orv::platform {

/// Kinds of input events, with the numbers that the window system gives them.
enum class EventType : std::uint32_t {
    null = 0,
    leftMouseDown = 1,
    leftMouseUp = 2,
    rightMouseDown = 3,
    rightMouseUp = 4,
    mouseMoved = 5,
    leftMouseDragged = 6,
    rightMouseDragged = 7,
    keyDown = 10,
    keyUp = 11,
    flagsChanged = 12,
};

/// Bits of `Event::modifierFlags`.
namespace modifier {
constexpr std::uint64_t capsLock = 0x10000;
constexpr std::uint64_t shift = 0x20000;
constexpr std::uint64_t control = 0x40000;
constexpr std::uint64_t option = 0x80000;
constexpr std::uint64_t command = 0x100000;
constexpr std::uint64_t numericPad = 0x200000;
constexpr std::uint64_t function = 0x800000;
} // namespace modifier

/// Virtual key codes that the logic itself knows.
namespace key {
constexpr std::uint16_t escape = 53;
} // namespace key

/// Numbers of mouse buttons.
enum class MouseButton : std::uint32_t { left = 0, right = 1, center = 2 };

/// One mouse or keyboard event, whether of this machine or made from a client's record.
struct Event {
    EventType type = EventType::null;
    /// In the coordinates of the window it goes to: origin bottom left, y up, points.
    Point location;
    std::uint64_t modifierFlags = 0;
    /// Seconds on the main thread's monotonic clock.
    double timestamp = 0.0;
    /// The window that the event is meant for; 0 for none.
    int windowNumber = 0;
    std::int32_t eventNumber = 0;
    std::int32_t clickCount = 0;
    float pressure = 0.0F;
    MouseButton button = MouseButton::left;
    /// Virtual key code; key events only.
    std::uint16_t keyCode = 0;
    std::u16string characters;
    bool isRepeat = false;

    [[nodiscard]] bool isMouse() const
    {
        return type >= EventType::leftMouseDown && type <= EventType::rightMouseDragged;
    }
    [[nodiscard]] bool isKey() const
    {
        return type >= EventType::keyDown && type <= EventType::flagsChanged;
    }

    friend bool operator==(const Event &, const Event &) = default;
};

} // namespace orv::platform
