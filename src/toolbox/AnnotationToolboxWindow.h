#pragma once

#include "canvas/CanvasSession.h"
#include "canvas/CanvasToolbox.h"
#include "platform/views/Window.h"

#include <memory>
#include <optional>

namespace orv {

/// The floating strip of tool buttons; lies above the overlays and can slide away over the top.
///
/// Borrows  the session. Holds the controls that a canvas reaches weakly: the view tree owns them.
/// Thread   main thread, or the host's under the monitor.
class AnnotationToolboxWindow : public platform::Window, public CanvasToolbox {
public:
    static constexpr int windowLevel = 999;

    /// A panel that activates nobody, whatever style a layout asks for.
    explicit AnnotationToolboxWindow(const platform::Rect &contentRect);

    [[nodiscard]] std::string className() const override { return "AnnotationToolboxWindow"; }
    [[nodiscard]] double animationResizeTime(const platform::Rect &frame) const override;

    void setAnnotationManager(DisplaySession *manager) { annotationManager_ = manager; }
    [[nodiscard]] std::optional<platform::Screen> displayScreen() const;
    void setToolSelectionView(const std::shared_ptr<platform::View> &view);
    [[nodiscard]] bool isIconized() const { return isIconized_; }

    /// Puts the panel home: centred, flush with the top of its screen.
    void resetDisplay();
    void showToolboxWindow() { showToolboxWindow(true); }
    void hideToolboxWindow() { hideToolboxWindow(true); }
    /// Both travel by way of the top centre, and block while they move.
    void showToolboxWindow(bool animate);
    void hideToolboxWindow(bool animate);

    /// The controls, in the words of the canvas; what is not set answers null.
    struct Controls {
        std::weak_ptr<platform::Button> eraserButton;
        std::weak_ptr<platform::Button> undoButton;
        std::weak_ptr<platform::Button> redoButton;
        std::weak_ptr<platform::Button> squeegeeButton;
        std::weak_ptr<platform::Button> saveSSButton;
        std::weak_ptr<platform::Button> closeSSButton;
        std::weak_ptr<platform::Button> snapshotButton;
        std::weak_ptr<platform::Button> flipchartButton;
        std::weak_ptr<platform::View> standardAnnotationModeToolbarView;
        std::weak_ptr<platform::View> snapshotEditingModeToolbarView;
    };
    void setControls(Controls controls) { controls_ = std::move(controls); }

    [[nodiscard]] platform::Button *eraserButton() const override;
    [[nodiscard]] platform::Button *undoButton() const override;
    [[nodiscard]] platform::Button *redoButton() const override;
    [[nodiscard]] platform::Button *squeegeeButton() const override;
    [[nodiscard]] platform::Button *saveSSButton() const override;
    [[nodiscard]] platform::Button *closeSSButton() const override;
    [[nodiscard]] platform::Button *snapshotButton() const override;
    [[nodiscard]] platform::Button *flipchartButton() const override;
    [[nodiscard]] platform::View *standardAnnotationModeToolbarView() const override;
    [[nodiscard]] platform::View *snapshotEditingModeToolbarView() const override;

private:
    [[nodiscard]] double secondsFromHome() const;
    void glideTo(const platform::Rect &frame, double seconds, bool animate);

    DisplaySession *annotationManager_ = nullptr;
    std::shared_ptr<platform::View> toolSelectionView_;
    Controls controls_;
    platform::Rect windowFrameCenteredAtTopEdge_;
    platform::Rect windowFrameOffScreenTopEdge_;
    platform::Rect windowFrameLastMoved_;
    bool isIconized_ = false;
    double duration_ = 0.0;
};

} // namespace orv
