#include "canvas/AnnotationsView.h"

// How mouse and keyboard events become annotations. Local events and those made from a client's
// records arrive here alike.

namespace orv {

using platform::Event;

bool AnnotationsView::toolCreates() const
{
    return currentTool_ && currentTool_->createsAnnotations();
}

std::shared_ptr<Annotation> AnnotationsView::activeAnnotation() const
{
    if (!toolCreates()) {
        return nullptr;
    }
    auto last = document_.lastAnnotation(annotationModeKey_);
    return last && last->isActive() ? last : nullptr;
}

void AnnotationsView::mouseDown(const Event &event)
{
    if (!isEditMode_ || !toolCreates()) {
        return;
    }
    if (CanvasSession *session = annotationManager()) {
        session->hideToolMenuToggle();
    }
    finalizeLastAnnotationIgnoringActiveStatus(true);
    document_.emptyUndoHistory(annotationModeKey_);
    refreshButtonEnabledStates();
    const auto annotation = currentTool_->createAnnotationInView(shared_from_this());
    annotation->mouseDownEventAtPoint(event.location);
    document_.append(annotationModeKey_, annotation);
    setNeedsDisplay(true);
    setIsChange(true);
    setIsPressed(true);
}

void AnnotationsView::mouseDragged(const Event &event)
{
    const auto active = isEditMode_ ? activeAnnotation() : nullptr;
    if (active) {
        active->mouseDraggedEventAtPoint(event.location);
        setNeedsDisplay(true);
    }
}

void AnnotationsView::mouseUp(const Event &event)
{
    const auto active = isEditMode_ ? activeAnnotation() : nullptr;
    // A kind that never goes active, such as a stamp, leaves the button counted as held.
    if (!active) {
        return;
    }
    active->mouseUpEventAtPoint(event.location);
    finalizeLastAnnotationIgnoringActiveStatus(false);
    setNeedsDisplay(true);
    setIsPressed(false);
}

void AnnotationsView::keyDown(const Event &event)
{
    if (const auto active = activeAnnotation()) {
        if (event.keyCode == platform::key::escape) {
            document_.removeLastAnnotation(annotationModeKey_);
            refreshButtonEnabledStates();
            setNeedsDisplay(true);
        } else if (active->shouldRedrawWithKeyDownEvent(event)) {
            setNeedsDisplay(true);
            setIsChange(true);
        }
        return;
    }
    CanvasSession *session = annotationManager();
    if (event.keyCode == platform::key::escape && session != nullptr) {
        session->closeAnnotationToolbox();
    }
}

void AnnotationsView::keyUp(const Event &event)
{
    const auto active = activeAnnotation();
    if (active && active->shouldRedrawWithKeyUpEvent(event)) {
        setNeedsDisplay(true);
    }
}

void AnnotationsView::flagsChanged(const Event &event)
{
    const auto active = activeAnnotation();
    if (active && active->shouldRedrawWithFlagsChangedEvent(event)) {
        setNeedsDisplay(true);
    }
}

} // namespace orv
