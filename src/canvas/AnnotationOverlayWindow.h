#pragma once

#include "canvas/AnnotationsView.h"
#include "canvas/CanvasSession.h"
#include "canvas/CanvasToolbox.h"
#include "platform/ports/Displays.h"
#include "platform/views/Window.h"

#include <memory>
#include <optional>

namespace orv {

/// The transparent window that covers one display and holds its canvas.
///
/// Owns     its canvas. Borrows the session and the toolbox; each may be null.
/// Thread   main thread, or the host's under the monitor.
class AnnotationOverlayWindow : public platform::Window {
public:
    /// No display: all bits set, -1 as a signed number.
    static constexpr platform::DisplayID unsetDisplayID = 0xFFFFFFFF;
    /// Above all ordinary windows; the toolbox stands one higher.
    static constexpr int windowLevel = 998;

    /// With the frame of the main display, whatever a layout says.
    explicit AnnotationOverlayWindow(std::uint32_t styleMask);
    /// For a display and its canvas; an unknown display gives an empty frame.
    AnnotationOverlayWindow(platform::DisplayID displayID,
                            const std::shared_ptr<AnnotationsView> &view);

    [[nodiscard]] std::string className() const override { return "AnnotationOverlayWindow"; }
    [[nodiscard]] bool canBecomeKeyWindow() const override { return true; }

    /// Puts the canvas into the window and makes it the first to get keys.
    void setAnnotationsView(const std::shared_ptr<AnnotationsView> &view);
    [[nodiscard]] const std::shared_ptr<AnnotationsView> &annotationsView() const
    {
        return annotationsView_;
    }
    void setAnnotationManager(CanvasSession *manager) { annotationManager_ = manager; }
    [[nodiscard]] CanvasSession *annotationManager() const { return annotationManager_; }
    void setToolboxWindow(CanvasToolbox *toolbox) { toolboxWindow_ = toolbox; }
    [[nodiscard]] CanvasToolbox *toolboxWindow() const { return toolboxWindow_; }

    /// False while its display is gone.
    [[nodiscard]] bool enable() const { return enable_; }
    void setEnable(bool enable) { enable_ = enable; }
    [[nodiscard]] platform::DisplayID displayID() const { return displayID_; }
    void setDisplayID(platform::DisplayID displayID) { displayID_ = displayID; }
    /// On the main display, or without a display of its own.
    [[nodiscard]] bool isMain() const;
    /// Its own display in multi-screen use, else the one that the host wants.
    [[nodiscard]] std::optional<platform::Screen> displayScreen() const;
    /// Takes the frame of its display; empty without one.
    void resetDisplay();

private:
    std::shared_ptr<AnnotationsView> annotationsView_;
    CanvasSession *annotationManager_ = nullptr;
    CanvasToolbox *toolboxWindow_ = nullptr;
    platform::DisplayID displayID_ = unsetDisplayID;
    bool enable_ = true;
};

} // namespace orv
