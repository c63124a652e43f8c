#pragma once

#include "platform/values/Event.h"

#include <QPointF>
#include <Qt>

#include <cstdint>

namespace orv::platform {

/// One step of the pointer in a window of ours, from whichever route it came.
struct PointerInput {
    enum class Action { press, release, move };

    Action action = Action::move;
    /// What is pressed or released: left or right; other buttons make no input.
    MouseButton button = MouseButton::left;
    /// Held after this step.
    bool leftHeld = false;
    bool rightHeld = false;
    /// Device pixels from the window's top left corner.
    QPointF position;
    /// Bits of `modifier`.
    std::uint64_t modifierFlags = 0;
    float pressure = 0.0F;
};

/// What takes the pointer over a window of ours. Main thread only.
class PointerReceiver {
public:
    virtual void pointer(const PointerInput &input) = 0;
    /// The pointer came over the window, or the window came below the pointer; device pixels from
    /// the window's top left corner.
    virtual void pointerEntered(const QPointF &position) = 0;

protected:
    ~PointerReceiver() = default;
};

/// Shift, control, option and command; the caps lock is none of the toolkit's modifiers.
[[nodiscard]] std::uint64_t modifierFlags(Qt::KeyboardModifiers modifiers);
/// The same of a core event's state, caps lock included.
[[nodiscard]] std::uint64_t modifierFlagsOfState(std::uint32_t state);

[[nodiscard]] EventType eventType(const PointerInput &input);

/// Counts the clicks that follow each other at one place: 1, 2, 3, …
class ClickCounter {
public:
    /// The count of a press at `seconds`.
    std::int32_t press(MouseButton button, const QPointF &position, double seconds);
    /// The count that moves and the release of this press carry.
    [[nodiscard]] std::int32_t present() const { return count_; }

private:
    std::int32_t count_ = 0;
    MouseButton button_ = MouseButton::left;
    QPointF position_;
    double seconds_ = 0.0;
};

} // namespace orv::platform
