#include "canvas/AnnotationCanvasHandler.h"

#include "platform/ports/Platform.h"

// Which canvas a request to the set is for: every one of them, or the main one.

namespace orv {

void AnnotationCanvasHandler::setIsChange(bool isChange)
{
    forEachCanvas([isChange](AnnotationsView &view) { view.setIsChange(isChange); });
}

void AnnotationCanvasHandler::setIsEditMode(bool isEditMode)
{
    forEachCanvas([isEditMode](AnnotationsView &view) { view.setIsEditMode(isEditMode); });
}

void AnnotationCanvasHandler::setCurrentTool(const std::shared_ptr<CanvasTool> &tool)
{
    forEachCanvas([&tool](AnnotationsView &view) { view.setCurrentTool(tool); });
}

void AnnotationCanvasHandler::setCurrentCursor(const std::optional<platform::Cursor> &cursor)
{
    forEachCanvas([&cursor](AnnotationsView &view) { view.setCurrentCursor(cursor); });
}

void AnnotationCanvasHandler::refreshCursor()
{
    forEachCanvas([](AnnotationsView &view) { view.refreshCursor(); });
}

void AnnotationCanvasHandler::refreshButtonEnabledStates()
{
    forEachCanvas([](AnnotationsView &view) { view.refreshButtonEnabledStates(); });
}

void AnnotationCanvasHandler::clearForNewAnnotations()
{
    forEachCanvas([](AnnotationsView &view) { view.clearForNewAnnotations(); });
}

void AnnotationCanvasHandler::clearAnnotations(const platform::Button *sender)
{
    forEachCanvas([sender](AnnotationsView &view) { view.clearAnnotations(sender); });
}

void AnnotationCanvasHandler::enterStandardAnnotationMode()
{
    forEachCanvas([](AnnotationsView &view) { view.enterStandardAnnotationMode(); });
}

void AnnotationCanvasHandler::loadDefaultAnnotationData()
{
    forEachCanvas([](AnnotationsView &view) { view.loadDefaultAnnotationData(); });
}

void AnnotationCanvasHandler::saveDefaultAnnotationData()
{
    forEachCanvas([](AnnotationsView &view) { view.saveDefaultAnnotationData(); });
}

void AnnotationCanvasHandler::setStyleMask(std::uint32_t mask)
{
    const platform::Monitor::Hold lock(monitor_);
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        window->setStyleMask(mask);
    }
}

bool AnnotationCanvasHandler::isHidden() const
{
    const AnnotationsView *view = mainView();
    return view != nullptr && view->isHidden();
}

bool AnnotationCanvasHandler::isChange() const
{
    const AnnotationsView *view = mainView();
    return view != nullptr && view->isChange();
}

bool AnnotationCanvasHandler::isEditMode() const
{
    const AnnotationsView *view = mainView();
    return view != nullptr && view->isEditMode();
}

std::string AnnotationCanvasHandler::annotationModeKey() const
{
    const AnnotationsView *view = mainView();
    return view == nullptr ? std::string() : view->annotationModeKey();
}

std::int32_t AnnotationCanvasHandler::currentBackdrop() const
{
    const AnnotationsView *view = mainView();
    return view == nullptr ? 0 : view->currentBackdrop();
}

std::int32_t AnnotationCanvasHandler::currentAnnotationMode() const
{
    const AnnotationsView *view = mainView();
    return view == nullptr ? 0 : view->currentAnnotationMode();
}

bool AnnotationCanvasHandler::hasAnnotations() const
{
    const AnnotationsView *view = mainView();
    return view != nullptr && view->hasAnnotations();
}

bool AnnotationCanvasHandler::hasHistoryAnnotations() const
{
    const AnnotationsView *view = mainView();
    return view != nullptr && view->hasHistoryAnnotations();
}

void AnnotationCanvasHandler::requestHelp()
{
    if (AnnotationsView *view = mainView()) {
        view->requestHelp();
    }
}

void AnnotationCanvasHandler::ShowOrHideToolBar(bool show)
{
    if (AnnotationsView *view = mainView()) {
        view->ShowOrHideToolBar(show);
    }
}

void AnnotationCanvasHandler::undoAnnotation()
{
    if (AnnotationsView *view = mainView()) {
        view->refreshButtonEnabledStates();
    }
}

void AnnotationCanvasHandler::redoAnnotation()
{
    undoAnnotation();
}

void AnnotationCanvasHandler::clearAnnotationsWithSqueegee()
{
    const platform::Monitor::Hold lock(monitor_);
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        const auto view = window->annotationsView();
        if (view->hasAnnotations()) {
            platform::Platform::current().mainThread().post(
                [view] { view->clearAnnotationsWithSqueegee(); });
        }
    }
}

std::optional<bool> AnnotationCanvasHandler::isPressed(const AnnotationOverlayWindow * /*window*/)
{
    return isPressed_;
}

void AnnotationCanvasHandler::mouseStatus(const AnnotationOverlayWindow * /*window*/, bool pressed)
{
    isPressed_ = pressed;
}

} // namespace orv
