#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/values/Event.h"
#include "platform/values/Geometry.h"
#include "platform/views/Cursor.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orv::platform {

class Window;

/// A rectangle of a window that draws itself and takes events; the node of the view tree.
///
/// Owns     its subviews. Borrows its superview and its window, which clear the link when they go.
/// Thread   main thread, or another one under the monitor.
/// Units    a frame is in the superview's points, bounds in its own; origin bottom left, y up.
class View : public std::enable_shared_from_this<View> {
public:
    View() = default;
    explicit View(const Rect &frame) : frame_(frame) {}
    virtual ~View();
    View(const View &) = delete;
    View &operator=(const View &) = delete;

    /// The class name by which listings show it.
    [[nodiscard]] virtual std::string className() const { return "View"; }
    /// The name under which a layout bound it to its owner; empty for none.
    [[nodiscard]] const std::string &outlet() const { return outlet_; }
    void setOutlet(std::string outlet) { outlet_ = std::move(outlet); }

    [[nodiscard]] const Rect &frame() const { return frame_; }
    void setFrame(const Rect &frame);
    /// The frame's size at the origin (0, 0).
    [[nodiscard]] Rect bounds() const { return {{0.0, 0.0}, frame_.size}; }
    /// Degrees, counter-clockwise about the frame's origin.
    [[nodiscard]] double frameRotation() const { return frameRotation_; }
    void setFrameRotation(double degrees);
    [[nodiscard]] bool isHidden() const { return isHidden_; }
    void setHidden(bool hidden);
    /// True when neither it nor a view above it is hidden.
    [[nodiscard]] bool isVisible() const;
    [[nodiscard]] double alpha() const { return alpha_; }
    void setAlpha(double alpha);
    /// How it follows its superview's size, in the window system's bits; copied, not interpreted.
    [[nodiscard]] std::uint32_t autoresizingMask() const { return autoresizingMask_; }
    void setAutoresizingMask(std::uint32_t mask) { autoresizingMask_ = mask; }

    /// Puts it above its siblings, out of its former superview.
    void addSubview(const std::shared_ptr<View> &view);
    void removeFromSuperview();
    [[nodiscard]] View *superview() const { return superview_; }
    /// From the rearmost to the frontmost.
    [[nodiscard]] const std::vector<std::shared_ptr<View>> &subviews() const { return subviews_; }
    [[nodiscard]] Window *window() const { return window_; }

    /// Asks for a redraw of the whole view; false asks for nothing.
    void setNeedsDisplay(bool needsDisplay);
    /// Paints this view alone, in its own coordinates; `dirty` is what must be right afterwards.
    virtual void drawRect(GraphicsContext &context, const Rect &dirty);
    /// Paints this view and those below it; `context` is in the superview's coordinates.
    void drawTree(GraphicsContext &context, const Rect &dirtyInSuperview);

    [[nodiscard]] Point convertToSuperview(Point p) const;
    [[nodiscard]] Point convertFromSuperview(Point p) const;
    [[nodiscard]] Point convertToWindow(Point p) const;
    [[nodiscard]] Point convertFromWindow(Point p) const;
    /// The box of its bounds in window coordinates.
    [[nodiscard]] Rect frameInWindow() const;
    /// The frontmost visible view at a point of the superview; null when there is none.
    [[nodiscard]] View *hitTest(Point inSuperview);

    /// The base hands mouse and key events on to the superview, and the last one to its window.
    virtual void mouseDown(const Event &event);
    virtual void mouseDragged(const Event &event);
    virtual void mouseUp(const Event &event);
    virtual void mouseMoved(const Event &event);
    virtual void rightMouseDown(const Event &event);
    virtual void rightMouseDragged(const Event &event);
    virtual void rightMouseUp(const Event &event);
    virtual void keyDown(const Event &event);
    virtual void keyUp(const Event &event);
    virtual void flagsChanged(const Event &event);
    [[nodiscard]] virtual bool acceptsFirstResponder() const { return false; }
    /// True: the click that brings its window forward counts as a click too.
    [[nodiscard]] virtual bool acceptsFirstMouse() const { return false; }

    /// Registers cursors anew; the base registers none.
    virtual void resetCursorRects() {}
    /// Shows `cursor` while the pointer is in `rect` of the bounds, until the next reset.
    void addCursorRect(const Rect &rect, const Cursor &cursor);
    /// Drops the registered rectangles and runs `resetCursorRects`.
    void invalidateCursorRects();
    [[nodiscard]] const std::vector<std::pair<Rect, Cursor>> &cursorRects() const
    {
        return cursorRects_;
    }

private:
    friend class Window;
    void setWindow(Window *window);
    void updateCursorRects() const;
    [[nodiscard]] AffineTransform toSuperview() const;

    Rect frame_;
    double frameRotation_ = 0.0;
    double alpha_ = 1.0;
    bool isHidden_ = false;
    std::uint32_t autoresizingMask_ = 0;
    std::string outlet_;
    View *superview_ = nullptr;
    Window *window_ = nullptr;
    std::vector<std::shared_ptr<View>> subviews_;
    std::vector<std::pair<Rect, Cursor>> cursorRects_;
};

} // namespace orv::platform
