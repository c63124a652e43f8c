#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/values/Event.h"
#include "platform/values/Geometry.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orv::platform {

/// The door through which a surface calls its window. Main thread only.
class WindowEvents {
public:
    /// A mouse event at a place in the window, or a key event for the key window.
    virtual void sendEvent(const Event &event) = 0;
    /// Paint the content into a transparent context whose origin is the window's bottom left
    /// corner. `dirty` is what must be right afterwards; painting outside it does no harm.
    virtual void draw(GraphicsContext &context, const Rect &dirty) = 0;
    /// The class name by which a listing of windows shows this one.
    [[nodiscard]] virtual std::string className() const = 0;

protected:
    virtual ~WindowEvents() = default;
};

/// Named styles of a window.
namespace style {
/// A window that neither activates its application nor takes the keyboard when clicked.
constexpr std::uint32_t nonactivatingPanel = 128;
} // namespace style

/// The pointer's look over a part of a window, in window coordinates.
struct CursorRect {
    Rect rect;
    /// Null for the desktop's arrow.
    ImagePtr image;
    /// The point of the picture that points, from its top left corner.
    Point hotSpot;

    /// Pictures are the same when they are one object.
    friend bool operator==(const CursorRect &, const CursorRect &) = default;
};

/// What a window looks like to the window system: one frameless translucent area of the screen.
///
/// Units    frames in global points, origin bottom left of the main display, y up.
/// Thread   main thread only.
/// Owner    the window that asked for it; destroying it takes the area off the screen.
class WindowSurface {
public:
    virtual ~WindowSurface() = default;

    /// Positive and unique in this process.
    [[nodiscard]] virtual int windowNumber() const = 0;

    virtual void setFrame(const Rect &frame) = 0;
    /// Windows of a higher level are above all of a lower one.
    virtual void setLevel(int level) = 0;
    virtual void setTitle(const std::string &title) = 0;
    virtual void setStyleMask(std::uint32_t mask) = 0;
    virtual void setHasShadow(bool hasShadow) = 0;
    virtual void setAlpha(double alpha) = 0;
    /// True: input goes to what lies below, of whatever application.
    virtual void setIgnoresMouseEvents(bool ignores) = 0;

    /// Replaces all of them; where several overlap, the last one holds. Elsewhere it is the arrow.
    virtual void setCursorRects(const std::vector<CursorRect> &rects) = 0;

    /// Shows it, as the frontmost of its level.
    virtual void orderFront() = 0;
    virtual void orderOut() = 0;
    /// Gives it the keyboard. Has no effect while it is not shown.
    virtual void makeKey() = 0;
    [[nodiscard]] virtual bool isKey() const = 0;

    /// Asks for `WindowEvents::draw` before the loop next waits; `rect` is in window coordinates.
    /// Several calls make one draw. Nothing is drawn while it is not shown.
    virtual void setNeedsDisplay(const Rect &rect) = 0;
    /// Draws what is asked for now, without waiting for the loop.
    virtual void displayIfNeeded() = 0;
};

/// A window of this process as a listing shows it.
struct WindowInfo {
    int number = 0;
    std::string title;
    int level = 0;
};

/// The window system: makes surfaces and knows their order.
class WindowServer {
public:
    virtual ~WindowServer() = default;

    /// `events` outlives the surface.
    [[nodiscard]] virtual std::unique_ptr<WindowSurface> createSurface(WindowEvents &events) = 0;
    /// Numbers of the shown surfaces of this process, from the frontmost to the rearmost.
    [[nodiscard]] virtual std::vector<int> orderedWindows() const = 0;
    /// The same windows in the same order, with what is known of them.
    [[nodiscard]] virtual std::vector<WindowInfo> windows() const = 0;
};

} // namespace orv::platform
