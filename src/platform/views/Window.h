#pragma once

#include "platform/ports/WindowServer.h"
#include "platform/values/Color.h"
#include "platform/views/View.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orv::platform {

/// A top-level area of the screen with a view tree in it.
///
/// Owns     its surface and its content view.
/// Thread   main thread, or another one under the monitor: what the surface needs of the main
///          thread is done there, and waited for.
/// Units    frames in global points, origin bottom left of the main display, y up.
class Window : public WindowEvents {
public:
    /// Makes the surface; the window is not shown yet.
    Window(const Rect &contentRect, std::uint32_t styleMask);
    virtual ~Window();
    Window(const Window &) = delete;
    Window &operator=(const Window &) = delete;

    [[nodiscard]] std::string className() const override { return "Window"; }
    /// The name under which a layout bound it to its owner; empty for none.
    [[nodiscard]] const std::string &outlet() const { return outlet_; }
    void setOutlet(std::string outlet) { outlet_ = std::move(outlet); }

    [[nodiscard]] int windowNumber() const { return windowNumber_; }
    [[nodiscard]] const Rect &frame() const { return frame_; }
    /// Moves and sizes it; the content view takes the new size. `display` draws at once.
    void setFrame(const Rect &frame, bool display);
    /// With `animate`, glides there in `animationResizeTime` and blocks for that long.
    void setFrame(const Rect &frame, bool display, bool animate);
    /// Seconds of an animated `setFrame`.
    [[nodiscard]] virtual double animationResizeTime(const Rect &frame) const;

    [[nodiscard]] const std::string &title() const { return title_; }
    void setTitle(const std::string &title);
    [[nodiscard]] int level() const { return level_; }
    void setLevel(int level);
    [[nodiscard]] std::uint32_t styleMask() const { return styleMask_; }
    void setStyleMask(std::uint32_t mask);
    [[nodiscard]] double alpha() const { return alpha_; }
    void setAlpha(double alpha);
    [[nodiscard]] bool hasShadow() const { return hasShadow_; }
    void setHasShadow(bool hasShadow);
    [[nodiscard]] bool ignoresMouseEvents() const { return ignoresMouseEvents_; }
    void setIgnoresMouseEvents(bool ignores);
    [[nodiscard]] const Color &backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(const Color &color);
    /// A picture that is tiled from the window's bottom left corner; the colour is then clear. Null
    /// for none, as after `setBackgroundColor`.
    [[nodiscard]] const ImagePtr &backgroundPattern() const { return backgroundPattern_; }
    void setBackgroundPattern(ImagePtr pattern);

    [[nodiscard]] bool isVisible() const { return isVisible_; }
    void setIsVisible(bool visible);
    void orderFront();
    /// The same even when the application is not active.
    void orderFrontRegardless() { orderFront(); }
    void orderOut();
    void makeKeyWindow();
    void makeKeyAndOrderFront();
    [[nodiscard]] bool isKeyWindow() const;
    [[nodiscard]] virtual bool canBecomeKeyWindow() const { return false; }
    /// Off the screen for good.
    void close() { orderOut(); }

    /// Fills the window; sized to it at once.
    void setContentView(const std::shared_ptr<View> &view);
    [[nodiscard]] const std::shared_ptr<View> &contentView() const { return contentView_; }
    /// Where key events go first; null for nowhere.
    void makeFirstResponder(const std::shared_ptr<View> &view) { firstResponder_ = view; }
    [[nodiscard]] std::shared_ptr<View> firstResponder() const { return firstResponder_.lock(); }

    /// `rect` in window coordinates.
    void setNeedsDisplayInRect(const Rect &rect);
    [[nodiscard]] Point convertPointToScreen(Point p) const { return p + frame_.origin; }
    [[nodiscard]] Point convertPointFromScreen(Point p) const { return p - frame_.origin; }

    /// Tells the surface what its visible views registered; they call it when that changes.
    void updateCursorRects();
    /// Hands the event to the view it belongs to. A mouse event that carries another window's
    /// number is not this window's and does nothing. A press is held: drags and the release go to
    /// the view that took it, wherever the pointer is.
    void sendEvent(const Event &event) override;
    void draw(GraphicsContext &context, const Rect &dirty) override;

    /// What no view took.
    virtual void mouseDown(const Event &event);
    virtual void mouseDragged(const Event &event);
    virtual void mouseUp(const Event &event);

private:
    void sendMouseEvent(const Event &event);
    void sendKeyEvent(const Event &event);

    std::unique_ptr<WindowSurface> surface_;
    int windowNumber_ = 0;
    Rect frame_;
    std::string title_;
    std::string outlet_;
    int level_ = 0;
    std::uint32_t styleMask_;
    double alpha_ = 1.0;
    bool hasShadow_ = true;
    bool ignoresMouseEvents_ = false;
    bool isVisible_ = false;
    Color backgroundColor_ = Color::white();
    ImagePtr backgroundPattern_;
    std::vector<CursorRect> cursorRects_;
    std::shared_ptr<View> contentView_;
    std::weak_ptr<View> firstResponder_;
    std::weak_ptr<View> pressedView_;
};

} // namespace orv::platform
