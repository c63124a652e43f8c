#include "OrvAnnotation/Events.h"
#include "canvas/AnnotationOverlayWindow.h"
#include "canvas/AnnotationsView.h"

// The modes of a canvas and what lies behind its ink in each of them.

namespace orv {

namespace {

void hideControl(platform::View *view, bool hidden)
{
    if (view != nullptr) {
        view->setHidden(hidden);
    }
}

} // namespace

void AnnotationsView::setCurrentBackdrop(std::int32_t backdrop)
{
    constexpr std::int32_t whiteSheet = 1;
    currentBackdrop_ = backdrop;
    if (backdrop == 0) {
        paths_.flipchartImageFilePath.clear();
    }
    setBackdropColor(backdrop == whiteSheet ? platform::Color::white() : platform::Color::clear());
}

void AnnotationsView::setBackdropColor(const platform::Color &color)
{
    if (overlayWindow_ != nullptr) {
        overlayWindow_->setBackgroundColor(color);
    }
}

void AnnotationsView::enterStandardAnnotationMode()
{
    setAnnotationModeKey(annotationModeKeyStandard);
    setCurrentBackdrop(0);
    document_.removeLists(annotationModeKeySnapshot);
    paths_.snapshotImageFilePath.clear();
    document_.removeLists(annotationModeKeyFlipchart);
    paths_.flipchartImageFilePath.clear();
    setIsChange(false);
    setIsPressed(false);
    refreshToolbarBasedOnAnnotationModeKeySelection();
    refreshButtonEnabledStates();
    enterStandardAnnotationModeNotify();
}

void AnnotationsView::enterFlipchartEditingMode(std::int32_t backdrop)
{
    CanvasSession *session = annotationManager();
    const bool erasing = currentTool_ && currentTool_->annotationType() == annotation_type::eraser;
    if (erasing && session != nullptr) {
        session->selectDefaultTool();
    }
    setCurrentBackdrop(backdrop);
    setAnnotationModeKey(annotationModeKeyFlipchart);
    document_.removeLists(annotationModeKeySnapshot);
    refreshToolbarBasedOnAnnotationModeKeySelection();
    document_.addLists(annotationModeKeyFlipchart);
    enterFlipchartEditingModeNotify();
    refreshButtonEnabledStates();
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
    constexpr std::int32_t flipchartMode = 2;
    if (currentAnnotationMode() == 0) {
        enterStandardAnnotationModeNotify();
    } else if (currentAnnotationMode() == flipchartMode) {
        enterFlipchartEditingModeNotify();
    }
}

void AnnotationsView::enterStandardAnnotationModeNotify()
{
    sendSwitchModeAckInfo(0, 0, 1, 1, true, false);
}

void AnnotationsView::enterFlipchartEditingModeNotify()
{
    constexpr std::uint32_t editable = 1;
    constexpr std::uint32_t fixed = 4;
    sendSwitchModeAckInfo(1, 0, isEditMode_ ? editable : fixed, 1, true, false);
}

void AnnotationsView::resetDisplay()
{
    if (currentBackdrop_ != 0) {
        setCurrentBackdrop(currentBackdrop_);
    }
}

} // namespace orv
