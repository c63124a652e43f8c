#pragma once

#include "platform/values/Event.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace orv::platform {

class MainThread;
class VirtualDisplays;
class VirtualWindowServer;

/// The mouse and the keyboard of a virtual desk.
///
/// Thread   main thread only. An exception that leaves a window goes to the error sink.
class VirtualInput {
public:
    /// All three outlive this.
    VirtualInput(MainThread &mainThread, VirtualDisplays &displays, VirtualWindowServer &windows);

    /// Moves the pointer to `global` (y up) and sends the event to the topmost shown window that
    /// takes the mouse there; while a button is held, its drags and its release go to the window
    /// that took the press. Answers the number of the window that got it, 0 for none.
    int sendMouse(EventType type, Point global, std::uint64_t modifierFlags = 0,
                  MouseButton button = MouseButton::left);
    /// Sends a key event to the key window. Answers its number, 0 for none.
    int sendKey(EventType type, std::uint16_t keyCode, const std::u16string &characters,
                std::uint64_t modifierFlags = 0);

private:
    [[nodiscard]] int mouseTarget(EventType type, Point global, MouseButton button);
    void deliver(const Event &event);

    static constexpr std::size_t kButtons = 3;

    MainThread &mainThread_;
    VirtualDisplays &displays_;
    VirtualWindowServer &windows_;
    /// By button while it is held: the window that took the press, 0 for none.
    std::array<std::optional<int>, kButtons> pressed_;
    std::int32_t eventNumber_ = 0;
};

} // namespace orv::platform
