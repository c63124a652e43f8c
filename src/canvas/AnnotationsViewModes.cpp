#include "OrvAnnotation/Events.h"
#include "canvas/AnnotationsView.h"
#include "canvas/RawDataFiles.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/ports/Files.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

// The modes of a canvas: the live screen, a snapshot, a flipchart page. Each has lists of its own;
// those of the live screen outlast the others.

namespace orv {

namespace {

constexpr std::int32_t kStandardMode = 0;
constexpr std::int32_t kSnapshotMode = 1;
constexpr std::int32_t kUserImageBackdrop = 7;

// Ways in which a page's picture slides off.
constexpr std::int32_t kToAnotherMode = 2;
constexpr std::int32_t kToConfirm = 3;

void hideControl(platform::View *view, bool hidden)
{
    if (view != nullptr) {
        view->setHidden(hidden);
    }
}

bool exists(const std::string &path)
{
    return platform::Platform::current().files().exists(path);
}

} // namespace

void AnnotationsView::enterStandardAnnotationMode()
{
    setAnnotationModeKey(annotationModeKeyStandard);
    setCurrentBackdrop(0);
    dropSnapshot();
    document_.removeLists(annotationModeKeyFlipchart);
    paths_.flipchartImageFilePath.clear();
    setIsChange(false);
    setIsPressed(false);
    refreshToolbarBasedOnAnnotationModeKeySelection();
    refreshButtonEnabledStates();
    enterStandardAnnotationModeNotify();
}

void AnnotationsView::dropSnapshot()
{
    document_.removeLists(annotationModeKeySnapshot);
    paths_.snapshotImageFilePath.clear();
}

void AnnotationsView::leaveEraser()
{
    CanvasSession *session = annotationManager();
    const bool erasing = currentTool_ && currentTool_->annotationType() == annotation_type::eraser;
    if (erasing && session != nullptr) {
        session->selectDefaultTool();
    }
}

bool AnnotationsView::asksBeforeChange(const std::string &modeKey, bool withConfirmation)
{
    const bool drawn = document_.clearedScreenCount(annotationModeKeySnapshot) != 0 ||
                       document_.annotationCount(annotationModeKeySnapshot) != 0;
    if (!withConfirmation || currentAnnotationMode() != kSnapshotMode || !drawn || !isChange_) {
        return false;
    }
    if (CanvasSession *session = annotationManager()) {
        session->showChangeConfirm(modeKey);
    }
    return true;
}

bool AnnotationsView::savePageOnTheWayOut()
{
    CanvasSession *session = annotationManager();
    if (session == nullptr) {
        return true;
    }
    if (annotationModeKey_ == annotationModeKeyFlipchart && hasAnnotations()) {
        session->saveCurrentFlipchart(kToAnotherMode, true);
    }
    return session->isEnterSpecialMode() == 0;
}

void AnnotationsView::enterSnapshotEditingModeWithImageFile(const std::string &path)
{
    logLine(1, fmt::format("-[AnnotationsView enterSnapshotEditingModeWithImageFile:] [{}]", path));
    const bool withConfirmation = savePageOnTheWayOut();
    enterSnapshotEditingModeWithImageFile(path, withConfirmation);
}

void AnnotationsView::enterSnapshotEditingModeWithImageFile(const std::string &path,
                                                            bool withConfirmation)
{
    paths_.snapshotImageFilePathPendingLoad = path;
    if (!asksBeforeChange(annotationModeKeySnapshot, withConfirmation)) {
        enterSnapshotEditingModeWithImageFilePendingLoad();
    }
}

void AnnotationsView::enterSnapshotEditingModeWithImageFilePendingLoad()
{
    leaveEraser();
    const std::string picture = paths_.snapshotImageFilePathPendingLoad;
    const RawDataFiles raw(picture);
    document_.removeLists(annotationModeKeyFlipchart);
    bool loaded = false;
    if (exists(raw.data) && exists(raw.background)) {
        loaded = loadRawData(raw.data);
    }
    if (!loaded) {
        setAnnotationModeKey(annotationModeKeySnapshot);
        refreshToolbarBasedOnAnnotationModeKeySelection();
        paths_.snapshotImageFilePath = picture;
        document_.addLists(annotationModeKeySnapshot);
        setCurrentBackdropUsingImageFile(picture);
    }
    enterSnapshotEditingModeNotify();
}

bool AnnotationsView::loadRawData(const std::string &path)
{
    bool loaded = false;
    platform::guarded([&] { loaded = loadAnnotationData(path, false); },
                      [&path](const std::string &why) {
                          logLine(4, fmt::format("{} can't be read: {}", path, why));
                      });
    return loaded;
}

bool AnnotationsView::exitSnapshotEditingModeWithoutConfirmation()
{
    if (isChange_) {
        return false;
    }
    enterStandardAnnotationMode();
    return true;
}

void AnnotationsView::enterFlipchartEditingModeWithImageFile(const std::string &path)
{
    const bool withConfirmation = savePageOnTheWayOut();
    enterFlipchartEditingModeWithImageFile(path, withConfirmation);
}

void AnnotationsView::enterFlipchartEditingModeWithImageFile(const std::string &path,
                                                             bool withConfirmation)
{
    paths_.flipchartImageFilePathPendingLoad = path;
    if (!asksBeforeChange(annotationModeKeyFlipchart, withConfirmation)) {
        enterFlipchartEditingModeWithImageFilePendingLoad();
    }
}

void AnnotationsView::enterFlipchartEditingModeWithImageFilePendingLoad()
{
    leaveEraser();
    const std::string page = paths_.flipchartImageFilePathPendingLoad;
    const RawDataFiles raw(page);
    setAnnotationModeKey(annotationModeKeyFlipchart);
    dropSnapshot();
    refreshToolbarBasedOnAnnotationModeKeySelection();
    document_.addLists(annotationModeKeyFlipchart);
    if (exists(raw.data) && !loadRawData(raw.data)) {
        // The page can be looked at and drawn on, though its ink is part of the picture now.
        setCurrentBackdropUsingImageFile(page);
    }
    paths_.flipchartImageFilePath = page;
    enterFlipchartEditingModeNotify();
}

void AnnotationsView::enterFlipchartEditingMode(std::int32_t backdrop)
{
    leaveEraser();
    setCurrentBackdrop(backdrop);
    setAnnotationModeKey(annotationModeKeyFlipchart);
    if (backdrop == kUserImageBackdrop) {
        setCurrentBackdropUsingImageFile(paths_.backdropImageFilePath, backdrop);
    }
    dropSnapshot();
    refreshToolbarBasedOnAnnotationModeKeySelection();
    document_.addLists(annotationModeKeyFlipchart);
    enterFlipchartEditingModeNotify();
    refreshButtonEnabledStates();
}

void AnnotationsView::confirmSaveFlipchart()
{
    CanvasSession *session = annotationManager();
    if (session != nullptr && hasAnnotations()) {
        session->saveCurrentFlipchart(kToConfirm, true);
    }
}

void AnnotationsView::refreshToolbarBasedOnAnnotationModeKeySelection()
{
    const bool snapshot = annotationModeKey_ == annotationModeKeySnapshot;
    if (const CanvasToolbox *toolbox = toolboxWindow()) {
        hideControl(toolbox->standardAnnotationModeToolbarView(), snapshot);
        hideControl(toolbox->snapshotButton(), snapshot);
        hideControl(toolbox->flipchartButton(), snapshot);
        hideControl(toolbox->snapshotEditingModeToolbarView(), !snapshot);
        hideControl(toolbox->saveSSButton(), !snapshot);
        hideControl(toolbox->closeSSButton(), !snapshot);
    }
    if (CanvasSession *session = annotationManager()) {
        session->setEditModeToolMenu(isEditMode_);
    }
}

void AnnotationsView::enterCurrentEditingModeNotify()
{
    if (currentAnnotationMode() == kStandardMode) {
        enterStandardAnnotationModeNotify();
    } else if (currentAnnotationMode() == kSnapshotMode) {
        enterSnapshotEditingModeNotify();
    } else {
        enterFlipchartEditingModeNotify();
    }
}

void AnnotationsView::leaveCurrentEditingModeNotify()
{
    constexpr std::uint32_t flipchart = 1;
    constexpr std::uint32_t snapshot = 2;
    if (currentAnnotationMode() != kStandardMode) {
        sendSwitchModeAckInfo(currentAnnotationMode() == kSnapshotMode ? snapshot : flipchart, 0, 1,
                              0, true, true);
    }
}

void AnnotationsView::enterStandardAnnotationModeNotify()
{
    sendSwitchModeAckInfo(0, 0, 1, 1, true, false);
}

void AnnotationsView::enterSnapshotEditingModeNotify()
{
    constexpr std::uint32_t editable = 2;
    constexpr std::uint32_t fixed = 3;
    sendSwitchModeAckInfo(2, 1, isEditMode_ ? editable : fixed, 1, true, true);
}

void AnnotationsView::enterFlipchartEditingModeNotify()
{
    constexpr std::uint32_t editable = 1;
    constexpr std::uint32_t fixed = 4;
    sendSwitchModeAckInfo(1, 0, isEditMode_ ? editable : fixed, 1, true, false);
}

} // namespace orv
