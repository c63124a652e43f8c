#pragma once

#include "canvas/CanvasDocument.h"
#include "canvas/CanvasEffects.h"
#include "canvas/CanvasPaths.h"
#include "canvas/CanvasSession.h"
#include "canvas/CanvasTool.h"
#include "canvas/CanvasToolbox.h"
#include "platform/ports/MainThread.h"
#include "platform/views/Cursor.h"
#include "platform/views/View.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace orv {

class AnnotationOverlayWindow;
struct SavedCanvas;
struct SavedLists;

/// The mouse state that the canvases of a set share. A canvas asks for it only in multi-screen use.
class AnnotationsViewDelegate {
public:
    /// Nothing: does not answer.
    [[nodiscard]] virtual std::optional<bool> isPressed(const AnnotationOverlayWindow *window) = 0;
    virtual void mouseStatus(const AnnotationOverlayWindow *window, bool pressed) = 0;

protected:
    virtual ~AnnotationsViewDelegate() = default;
};

/// The drawing surface of one display: takes input, keeps the documents, repaints them whole.
///
/// Owns      its document of each mode, its tool and its cursor. Borrows the window, which outlives
///           it, the delegate, and through the window the session and the toolbox; each may be
///           null, and what needs it then does nothing.
/// Thread    main thread, or the host's under the monitor where the session says so.
/// Units     canvas points, doubles; origin bottom left of the display, y up; never scaled.
/// Fails     an operation that cannot go on does nothing or answers false.
/// Invariant the last annotation of the active list is the only one that takes input.
class AnnotationsView : public platform::View {
public:
    static constexpr const char *annotationModeKeyStandard = "AnnotationModeStandard";
    static constexpr const char *annotationModeKeySnapshot = "AnnotationModeSnapshot";
    static constexpr const char *annotationModeKeyFlipchart = "AnnotationModeFlipchart";

    explicit AnnotationsView(const platform::Rect &frame);

    [[nodiscard]] std::string className() const override { return "AnnotationsView"; }

    void setOverlayWindow(AnnotationOverlayWindow *window) { overlayWindow_ = window; }
    [[nodiscard]] AnnotationOverlayWindow *overlayWindow() const { return overlayWindow_; }
    void setDelegate(AnnotationsViewDelegate *delegate) { delegate_ = delegate; }
    [[nodiscard]] AnnotationOverlayWindow *getWindow() const { return overlayWindow_; }
    [[nodiscard]] platform::Size getFrameSize() const { return frame().size; }

    [[nodiscard]] const std::string &annotationModeKey() const { return annotationModeKey_; }
    void setAnnotationModeKey(const std::string &key) { annotationModeKey_ = key; }
    [[nodiscard]] const CanvasDocument &document() const { return document_; }
    /// 0 standard, 1 snapshot, 2 flipchart; any other key counts as 0.
    [[nodiscard]] std::int32_t currentAnnotationMode() const;

    [[nodiscard]] bool isHidden() const { return isHidden_; }
    void setIsHidden(bool hidden);
    [[nodiscard]] bool isChange() const { return isChange_; }
    void setIsChange(bool isChange) { isChange_ = isChange; }
    [[nodiscard]] bool isEditMode() const { return isEditMode_; }
    void setIsEditMode(bool isEditMode) { isEditMode_ = isEditMode; }
    [[nodiscard]] bool isEditModePendingSet() const { return isEditModePendingSet_; }
    void setIsEditModePendingSet(bool pending) { isEditModePendingSet_ = pending; }
    [[nodiscard]] bool isComfirmMode() const { return isComfirmMode_; }
    void setIsComfirmMode(bool isComfirmMode) { isComfirmMode_ = isComfirmMode; }
    [[nodiscard]] const CanvasPaths &paths() const { return paths_; }
    void setSnapshotImageFilePath(const std::string &path) { paths_.snapshotImageFilePath = path; }
    void setSnapshotImageFilePathPendingLoad(const std::string &path)
    {
        paths_.snapshotImageFilePathPendingLoad = path;
    }
    void setFlipchartImageFilePath(const std::string &path)
    {
        paths_.flipchartImageFilePath = path;
    }
    void setFlipchartImageFilePathPendingLoad(const std::string &path)
    {
        paths_.flipchartImageFilePathPendingLoad = path;
    }
    void setBackdropImageFilePath(const std::string &path) { paths_.backdropImageFilePath = path; }
    /// In multi-screen use the delegate's answer, one for all canvases.
    [[nodiscard]] bool isPressed() const;
    void setIsPressed(bool pressed);
    /// The canvas's own field, whatever the delegate says.
    [[nodiscard]] bool ownIsPressed() const { return isPressed_; }

    [[nodiscard]] const std::shared_ptr<CanvasTool> &currentTool() const { return currentTool_; }
    /// Ends what is pending, even when the tool stays the same.
    void setCurrentTool(const std::shared_ptr<CanvasTool> &tool);
    void setCurrentCursor(const std::optional<platform::Cursor> &cursor);
    [[nodiscard]] const std::optional<platform::Cursor> &currentCursor() const
    {
        return currentCursor_;
    }
    void refreshCursor();
    void resetCursorRects() override;
    void noiftyToolChenage();

    [[nodiscard]] bool hasAnnotations() const;
    [[nodiscard]] bool hasHistoryAnnotations() const;
    /// Sets the toolbox's buttons and tells the client the counts of both lists.
    void refreshButtonEnabledStates();
    void undoAnnotation();
    /// Callers see to it that there is something to redo; on an empty stack nothing happens.
    void redoAnnotation();
    /// The wipe itself. Only with the toolbox's `squeegeeButton` as sender does the redo stack go.
    void clearAnnotations(const platform::Button *sender);
    void clearAnnotationsWithSqueegee();
    /// Drops the whole document of the active mode.
    void clearForNewAnnotations();
    /// Asks the last annotation whether it stays, unless it is active and the argument is false.
    void finalizeLastAnnotationIgnoringActiveStatus(bool ignoringActiveStatus);

    [[nodiscard]] std::int32_t currentBackdrop() const { return currentBackdrop_; }
    /// 0 none, 1 white, 2 lines, 3 squares, 4 and 5 circles, 6 axes, 7 the user's picture (clear
    /// until that is set), 8 three columns; any other number is none too.
    void setCurrentBackdrop(std::int32_t backdrop);
    /// A picture as the backdrop: fitted, centred on white, never enlarged. One that can't be read
    /// leaves it white.
    void setCurrentBackdropUsingImageFile(const std::string &path);
    void setCurrentBackdropUsingImageFile(const std::string &path, std::int32_t type);
    void enterStandardAnnotationMode();
    /// Saves a flipchart that has ink, then asks before a changed snapshot is given up, unless a
    /// special mode is on.
    void enterSnapshotEditingModeWithImageFile(const std::string &path);
    void enterSnapshotEditingModeWithImageFile(const std::string &path, bool withConfirmation);
    /// What was put off goes on: the picture that `snapshotImageFilePathPendingLoad` names.
    void enterSnapshotEditingModeWithImageFilePendingLoad();
    /// False, with nothing done, when there are changes.
    bool exitSnapshotEditingModeWithoutConfirmation();
    void enterFlipchartEditingModeWithImageFile(const std::string &path);
    void enterFlipchartEditingModeWithImageFile(const std::string &path, bool withConfirmation);
    void enterFlipchartEditingModeWithImageFilePendingLoad();
    /// A new page on this backdrop; what the flipchart held is gone.
    void enterFlipchartEditingMode(std::int32_t backdrop);
    /// A page with ink is saved, sliding upward.
    void confirmSaveFlipchart();
    void enterCurrentEditingModeNotify();
    void leaveCurrentEditingModeNotify();
    void enterStandardAnnotationModeNotify();
    void enterSnapshotEditingModeNotify();
    void enterFlipchartEditingModeNotify();
    void refreshToolbarBasedOnAnnotationModeKeySelection();
    void resetDisplay();

    /// The name of this canvas's default file, without a folder.
    [[nodiscard]] std::string annoDefaultDataFileName() const;
    void loadDefaultAnnotationData();
    /// False when the file is missing, or `check` is set and it is too old to go on with. Throws
    /// `platform::Exception` for a file that is no archive; the document is then untouched.
    bool loadAnnotationData(const std::string &path, bool check);
    /// Encodes and writes on a worker; a later save of this canvas never loses to an earlier one.
    void saveDefaultAnnotationData();
    /// The same at once: the file is written when it returns.
    void saveDefaultAnnotationDataAndWait();
    /// The lists of the present mode as a snapshot's, and beside it the backdrop of a flipchart.
    void saveSanpshotData(const std::string &path);
    void saveFlipchartData(const std::string &path);

    /// Null while nothing gives it effects.
    [[nodiscard]] CanvasEffects *effects() const { return effects_.get(); }
    void setEffects(std::unique_ptr<CanvasEffects> effects) { effects_ = std::move(effects); }

    void requestHelp();
    /// First generation only: brings the toolbox back, or puts it away for a dialog.
    void ShowOrHideToolBar(bool show);

    void drawRect(platform::GraphicsContext &context, const platform::Rect &dirty) override;
    void mouseDown(const platform::Event &event) override;
    void mouseDragged(const platform::Event &event) override;
    void mouseUp(const platform::Event &event) override;
    void keyDown(const platform::Event &event) override;
    void keyUp(const platform::Event &event) override;
    void flagsChanged(const platform::Event &event) override;
    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    [[nodiscard]] bool acceptsFirstMouse() const override { return true; }

private:
    void initSetting();
    [[nodiscard]] CanvasSession *annotationManager() const;
    [[nodiscard]] CanvasToolbox *toolboxWindow() const;
    /// The delegate in multi-screen use, else null.
    [[nodiscard]] AnnotationsViewDelegate *sharedMouseState() const;
    [[nodiscard]] bool toolCreates() const;
    /// The last annotation while the tool creates and it takes input, else null.
    [[nodiscard]] std::shared_ptr<Annotation> activeAnnotation() const;
    void enableToolboxButtons() const;
    void scheduleWipe(double seconds, bool fromSqueegeeButton);
    void replayClearAnnotationsWithSqueegee();
    [[nodiscard]] float wipeSeconds() const;
    void setBackdropColor(const platform::Color &color);
    void setBackdropPattern(const platform::ImagePtr &pattern);
    /// The lists of the snapshot mode go, and with them its picture.
    void dropSnapshot();
    /// An eraser would have nothing to erase on a fresh page: the default tool takes its place.
    void leaveEraser();
    /// True when the change has to wait for an answer.
    bool asksBeforeChange(const std::string &modeKey, bool withConfirmation);
    /// True when a change is to be confirmed, that is in no special mode.
    bool savePageOnTheWayOut();
    /// False for a file that is missing or damaged; the latter is logged.
    bool loadRawData(const std::string &path);
    /// Each list that the file has replaces that of the mode.
    void restoreLists(const std::string &modeKey, const SavedLists &lists);
    /// `dataPath` is the file that it was saved in, `folder` that file's user folder or else this
    /// device's, `fixName` the folder that stored paths are moved to, empty for none.
    void restoreFlipchart(const SavedCanvas &saved, const std::string &dataPath,
                          const std::string &folder, const std::string &fixName);
    void restoreSnapshot(const SavedCanvas &saved, const std::string &fixName);
    [[nodiscard]] bool isBroder() const;
    void drawBorder(platform::GraphicsContext &context, const platform::Rect &rect) const;
    void drawDebugInfo(platform::GraphicsContext &context, const platform::Rect &rect) const;

    CanvasDocument document_;
    std::string annotationModeKey_;
    std::shared_ptr<CanvasTool> currentTool_;
    std::optional<platform::Cursor> currentCursor_;
    bool isPressed_ = false;
    bool isHidden_ = true;
    bool isChange_ = false;
    bool isEditMode_ = true;
    bool isEditModePendingSet_ = true;
    bool isComfirmMode_ = false;
    std::int32_t currentBackdrop_ = 0;
    CanvasPaths paths_;
    std::unique_ptr<CanvasEffects> effects_;
    AnnotationsViewDelegate *delegate_ = nullptr;
    AnnotationOverlayWindow *overlayWindow_ = nullptr;
    platform::TaskHandle lateRedraw_;
};

} // namespace orv
