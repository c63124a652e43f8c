#pragma once

#include "canvas/AnnotationCanvasHandler.h"
#include "platform/values/Event.h"
#include "session/AnnotationTool.h"
#include "session/ClientPoint.h"
#include "session/SessionOutlets.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

namespace orv {

/// Mouse or keyboard input of the client: the event or action number and its two words.
using ControlEvent = std::array<std::uint32_t, 3>;

/// What remote input acts on, as it stands when a record arrives. Null members are not there.
struct RemoteInputDesk {
    AnnotationToolboxWindow *toolbox = nullptr;
    AnnotationOverlayWindow *overlay = nullptr;
    platform::View *toolMenuView = nullptr;
    /// The tool whose menu may be open.
    const AnnotationTool *menuTool = nullptr;
    AnnotationCanvasHandler *canvasHandler = nullptr;
    bool isSupportMultiScreen = false;
    std::optional<platform::Screen> displayScreen;
    platform::DisplayID requestedDisplay = 0;
    ClientPicture picture;
};

/// Turns the client's mouse and keyboard records into events for this library's own windows.
///
/// Nothing of it reaches other applications. A gesture that begins on the toolbox stays there.
/// Thread   main thread only.
/// Units    locations have their origin at the top left of the main display, until an event is
/// made.
class RemoteInput {
public:
    void handleControlMouseEvent(const ControlEvent &event, const RemoteInputDesk &desk);
    void handleControlKeyboardEvent(const ControlEvent &event, const RemoteInputDesk &desk);
    /// The target of the running gesture is forgotten.
    void resetEventWindow() { sendEventWindow_ = nullptr; }

    /// Bit 0: left button held; bit 1: right button held.
    [[nodiscard]] std::int32_t mouseButtonStatus() const { return mouseButtonStatus_; }
    /// Modifier flags in force.
    [[nodiscard]] std::uint64_t gFlag() const { return gFlag_; }
    /// The flag of the modifier key seen last.
    [[nodiscard]] std::uint64_t gMask() const { return gMask_; }
    /// Counts mouse events; never reset.
    [[nodiscard]] std::int32_t m_nEventNumber() const { return m_nEventNumber_; }

private:
    struct Kind {
        platform::EventType type;
        platform::MouseButton button;
    };
    /// Nothing for a number outside 4 to 10.
    [[nodiscard]] std::optional<Kind> translate(std::int32_t number);
    void sendMouseEventtoWindow(Kind kind, platform::Point location, const RemoteInputDesk &desk);
    [[nodiscard]] platform::Event createSendEvent(Kind kind, platform::Point location,
                                                  const RemoteInputDesk &desk) const;
    /// True when `vkey` is a modifier; its flags are then done.
    bool handleModifier(std::uint32_t vkey, bool down);
    void sendKey(platform::EventType type, std::uint32_t vkey, const RemoteInputDesk &desk) const;

    platform::Window *sendEventWindow_ = nullptr;
    std::int32_t m_nEventNumber_ = 0;
    std::int32_t mouseButtonStatus_ = 0;
    std::uint64_t gFlag_ = 0;
    std::uint64_t gMask_ = 0;
};

} // namespace orv
