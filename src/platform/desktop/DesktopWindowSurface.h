#pragma once

#include "platform/desktop/InputShield.h"
#include "platform/desktop/OverlayWindow.h"
#include "platform/desktop/PointerInput.h"
#include "platform/desktop/PointerLooks.h"
#include "platform/desktop/Presenter.h"
#include "platform/desktop/SurfaceHost.h"
#include "platform/ports/WindowServer.h"
#include "platform/raster/FramePainter.h"
#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <QRect>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace orv::platform {

/// One overlay window with its picture: draws into the picture what its events paint, presents what
/// changed, and turns the desktop's input into events.
///
/// Owns      the native window, made when it is first shown, and its picture.
/// Invariant where windows are not blended, the native window takes no input: the shield does.
class DesktopWindowSurface final : public WindowSurface, private OverlayWindowClient {
public:
    /// `events` and `host` outlive it.
    DesktopWindowSurface(SurfaceHost &host, WindowEvents &events, int number);
    ~DesktopWindowSurface() override;
    DesktopWindowSurface(const DesktopWindowSurface &) = delete;
    DesktopWindowSurface &operator=(const DesktopWindowSurface &) = delete;

    [[nodiscard]] int windowNumber() const override { return number_; }
    void setFrame(const Rect &frame) override;
    void setLevel(int level) override;
    void setTitle(const std::string &title) override;
    void setStyleMask(std::uint32_t mask) override { styleMask_ = mask; }
    /// A compositor's shadow follows the window's rectangle and not its ink, so there is none.
    void setHasShadow(bool) override {}
    void setAlpha(double alpha) override;
    void setIgnoresMouseEvents(bool ignores) override;
    void setCursorRects(const std::vector<CursorRect> &rects) override;
    void orderFront() override;
    void orderOut() override;
    void makeKey() override;
    [[nodiscard]] bool isKey() const override { return host_.isKey(*this); }
    void setNeedsDisplay(const Rect &rect) override;
    void displayIfNeeded() override;

    [[nodiscard]] const std::string &title() const { return title_; }
    [[nodiscard]] int level() const { return level_; }
    /// Of the native window; `XCB_NONE` before it is first shown.
    [[nodiscard]] xcb_window_t nativeWindow() const;
    /// What was drawn so far, without the window's alpha.
    [[nodiscard]] const Image &picture() const { return picture_; }
    [[nodiscard]] double alpha() const { return alpha_; }
    /// Where the picture lies, in device pixels from the top left corner of the X screen.
    [[nodiscard]] QRect pictureFrame() const;
    /// Puts it above all other windows of the display.
    void raise();
    /// A compositor came or went.
    void blendingChanged();
    /// The displays have moved.
    void applyFrame();
    /// Pixels sent to the display so far.
    [[nodiscard]] std::uint64_t pixelsSent() const;

private:
    struct DetachAndDeleteLater {
        void operator()(OverlayWindow *window) const;
    };

    void exposed(const QRegion &region) override;
    void pointer(const PointerInput &input) override;
    void pointerEntered(const QPointF &position) override;
    void key(const KeyInput &input) override;
    void keyboard(bool gained) override;

    [[nodiscard]] PixelGrid grid() const { return {frame_.size, host_.deviceSpace().scale}; }
    [[nodiscard]] Rect bounds() const { return {{}, frame_.size}; }
    void createNativeWindow();
    void setNativeOpacity() const;
    void updateInput();
    void draw();
    /// In window points of a place in device pixels.
    [[nodiscard]] Point pointAt(const QPointF &position) const;
    void showLook();
    /// When what is to be seen, or on which window, may be another than at the last look.
    void showOtherLook();
    [[nodiscard]] Event eventAt(const PointerInput &input);

    SurfaceHost &host_;
    WindowEvents &events_;
    int number_;
    std::string title_;
    int level_ = 0;
    Rect frame_;
    std::uint32_t styleMask_ = 0;
    double alpha_ = 1.0;
    bool ignoresMouse_ = false;
    bool shown_ = false;
    Rect dirty_;
    FramePainter painter_;
    Image picture_{1, 1};
    ClickCounter clicks_;
    PointerLooks looks_;
    /// Where the pointer was last seen over the window, in device pixels.
    std::optional<QPointF> pointer_;
    /// One of `looks_`; null when that has to be found anew.
    const QCursor *shownLook_ = nullptr;
    std::unique_ptr<OverlayWindow, DetachAndDeleteLater> window_;
    std::optional<Presenter> presenter_;
    std::optional<InputShield> shield_;
};

} // namespace orv::platform
