#pragma once

#include "canvas/AnnotationOverlayWindow.h"
#include "canvas/AnnotationsView.h"
#include "platform/foundation/Monitor.h"
#include "platform/ports/MainThread.h"
#include "platform/values/Event.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace orv {

/// The canvases of all displays, presented to the session as if they were one.
///
/// Owns      a window with its canvas for each display, also for one that is gone: it may return.
/// Borrows   the session and the toolbox.
/// Thread    main thread, or the host's under the monitor. Each traversal of the set holds the
///           set's own re-entrant monitor, so a canvas may call back; it goes over a copy, since a
///           host's thread lets go of the monitor while it waits for the main thread.
/// Order     a fan-out goes through the displays by rising ID.
class AnnotationCanvasHandler : public AnnotationsViewDelegate {
public:
    /// `window` belongs to the main display unless it says otherwise.
    explicit AnnotationCanvasHandler(const std::shared_ptr<AnnotationOverlayWindow> &window);
    virtual ~AnnotationCanvasHandler();
    AnnotationCanvasHandler(const AnnotationCanvasHandler &) = delete;
    AnnotationCanvasHandler &operator=(const AnnotationCanvasHandler &) = delete;

    using CanvasDict = std::map<platform::DisplayID, std::shared_ptr<AnnotationOverlayWindow>>;
    [[nodiscard]] const CanvasDict &canvasDict() const { return canvasDict_; }
    [[nodiscard]] bool isEnable() const { return isEnable_; }
    /// Null while the main display has no window in the set.
    [[nodiscard]] AnnotationOverlayWindow *mainCanvas() const;

    /// More than the main canvas, or only that.
    void supportMultiScreen(bool support);
    void resetMultiScreen();
    void showCanvas();
    void hiddenCanvas();
    void resetDisplay();
    /// The window under a point that is measured from the top left of the main display; the main
    /// canvas when there is none.
    [[nodiscard]] AnnotationOverlayWindow *testHitCanvas(platform::Point fromTopLeft) const;
    /// Always true; null gets nothing.
    bool sendCanvas(AnnotationOverlayWindow *window, const platform::Event &mouseEvent);

    // To every canvas.
    void setIsChange(bool isChange);
    void setIsEditMode(bool isEditMode);
    void setCurrentTool(const std::shared_ptr<CanvasTool> &tool);
    void setCurrentCursor(const std::optional<platform::Cursor> &cursor);
    void refreshCursor();
    void refreshButtonEnabledStates();
    void clearForNewAnnotations();
    void clearAnnotations(const platform::Button *sender);
    void enterStandardAnnotationMode();
    void loadDefaultAnnotationData();
    void saveDefaultAnnotationData();
    /// To every window, not to its canvas.
    void setStyleMask(std::uint32_t mask);

    // Answers of the main canvas; without one, what an empty canvas would answer.
    [[nodiscard]] bool isHidden() const;
    [[nodiscard]] bool isChange() const;
    [[nodiscard]] bool isEditMode() const;
    [[nodiscard]] std::string annotationModeKey() const;
    [[nodiscard]] std::int32_t currentBackdrop() const;
    [[nodiscard]] std::int32_t currentAnnotationMode() const;
    [[nodiscard]] bool hasAnnotations() const;
    [[nodiscard]] bool hasHistoryAnnotations() const;
    void requestHelp();
    void ShowOrHideToolBar(bool show);

    /// Undo nothing: they only refresh the main canvas's buttons. Undo and redo reach one canvas
    /// directly.
    void undoAnnotation();
    void redoAnnotation();
    /// On each canvas that has something on it, each on the main thread's next turn.
    void clearAnnotationsWithSqueegee();

    [[nodiscard]] std::optional<bool> isPressed(const AnnotationOverlayWindow *window) override;
    void mouseStatus(const AnnotationOverlayWindow *window, bool pressed) override;

    void ApplicationDidChangeScreenParameters();

private:
    void forEachCanvas(const std::function<void(AnnotationsView &)> &visit) const;
    [[nodiscard]] AnnotationsView *mainView() const;
    std::shared_ptr<AnnotationOverlayWindow> createNewCanvas(const platform::Screen &screen);
    void onTick();

    mutable platform::Monitor monitor_;
    CanvasDict canvasDict_;
    CanvasSession *annotationManager_;
    CanvasToolbox *toolboxWindow_;
    bool isEnable_ = false;
    bool isSupportMultiScreen_ = false;
    bool isPressed_ = false;
    platform::TaskHandle changeScreenTimer_;
};

} // namespace orv
