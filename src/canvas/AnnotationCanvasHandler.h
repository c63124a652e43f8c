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
    /// Always true; null gets nothing. A laser pointer that is dragged over to another canvas is
    /// let go on the old one and pressed on the new one first.
    bool sendCanvas(AnnotationOverlayWindow *window, const platform::Event &mouseEvent);

    // To every canvas.
    void setIsHidden(bool hidden);
    void setIsChange(bool isChange);
    void setIsEditMode(bool isEditMode);
    void setIsEditModePendingSet(bool pending);
    void setAnnotationModeKey(const std::string &key);
    void setCurrentBackdrop(std::int32_t backdrop);
    void setSnapshotImageFilePath(const std::string &path);
    void setSnapshotImageFilePathPendingLoad(const std::string &path);
    void setIsComfirmMode(bool isComfirmMode);
    void setFlipchartImageFilePath(const std::string &path);
    void setFlipchartImageFilePathPendingLoad(const std::string &path);
    void setBackdropImageFilePath(const std::string &path);
    void setCurrentTool(const std::shared_ptr<CanvasTool> &tool);
    void setCurrentCursor(const std::optional<platform::Cursor> &cursor);
    void resetCursorRects();
    void refreshCursor();
    void refreshButtonEnabledStates();
    void clearForNewAnnotations();
    void clearAnnotations(const platform::Button *sender);
    void enterFlipchartEditingMode(std::int32_t backdrop);
    void enterStandardAnnotationMode();
    void loadDefaultAnnotationData();
    void saveDefaultAnnotationData();
    void saveDefaultAnnotationDataAndWait();
    void handleSpotlightPichAct(bool begin);
    void handleSpotlightPichMove(std::int32_t length);
    void recoveryScreenShade();
    void doSpotLight(bool on);
    void doScreenCover(bool on);
    void doLaserPointer(bool on);
    void toggleSpotlight();
    void toggleScreenCover();
    /// To every window, not to its canvas.
    void setStyleMask(std::uint32_t mask);

    // Answers of the main canvas; without one, what an empty canvas would answer.
    [[nodiscard]] bool isHidden() const;
    [[nodiscard]] bool isChange() const;
    [[nodiscard]] bool isEditMode() const;
    [[nodiscard]] bool isEditModePendingSet() const;
    [[nodiscard]] std::string annotationModeKey() const;
    [[nodiscard]] std::int32_t currentBackdrop() const;
    [[nodiscard]] std::string snapshotImageFilePath() const;
    [[nodiscard]] std::string snapshotImageFilePathPendingLoad() const;
    [[nodiscard]] bool isComfirmMode() const;
    [[nodiscard]] std::string flipchartImageFilePath() const;
    [[nodiscard]] std::string flipchartImageFilePathPendingLoad() const;
    [[nodiscard]] std::string backdropImageFilePath() const;
    [[nodiscard]] std::int32_t currentAnnotationMode() const;
    [[nodiscard]] bool hasAnnotations() const;
    [[nodiscard]] bool hasHistoryAnnotations() const;
    [[nodiscard]] bool isLaserPointer() const;
    /// Of the main window.
    [[nodiscard]] std::uint32_t styleMask() const;
    void requestHelp();
    void ShowOrHideToolBar(bool show);
    void fileTransferController(bool show);
    void updateFileTransferStatusDlg(const std::string &text);

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
    void forEachEffects(const std::function<void(CanvasEffects &)> &visit) const;
    /// Null without a main canvas, and while that has no effects.
    [[nodiscard]] CanvasEffects *mainEffects() const;
    void handLaserOver(AnnotationOverlayWindow &window, const platform::Event &mouseEvent);
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
    /// The canvas that got the last mouse event, and that event.
    AnnotationOverlayWindow *lastActiveCanvas_ = nullptr;
    std::optional<platform::Event> lastActiveEvent_;
};

} // namespace orv
