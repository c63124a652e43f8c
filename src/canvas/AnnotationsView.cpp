#include "canvas/AnnotationsView.h"

#include "OrvAnnotation/Events.h"
#include "canvas/AnnotationOverlayWindow.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/ports/Platform.h"

namespace orv {

namespace {

using platform::Point;
using platform::Rect;

// A redraw that the window system may have swallowed is asked for again after this.
constexpr double kLateRedrawSeconds = 0.3;
// The wipe's length on a display of up to 768 points in height.
constexpr float kWipeBaseSeconds = 0.5F;
constexpr std::int32_t kHeightAxis = 1;
// A first wipe is quick, whatever the display; only its replay takes the scaled time.
constexpr double kQuickWipeSeconds = 0.01;
constexpr double kAfterWipeSeconds = 0.05;

void enableControl(platform::Button *button, bool enabled)
{
    if (button != nullptr) {
        button->setEnabled(enabled);
    }
}

} // namespace

AnnotationsView::AnnotationsView(const Rect &frame) : View(frame)
{
    initSetting();
}

void AnnotationsView::initSetting()
{
    document_.addLists(annotationModeKeyStandard);
    setCurrentBackdrop(0);
}

CanvasSession *AnnotationsView::annotationManager() const
{
    return overlayWindow_ == nullptr ? nullptr : overlayWindow_->annotationManager();
}

CanvasToolbox *AnnotationsView::toolboxWindow() const
{
    return overlayWindow_ == nullptr ? nullptr : overlayWindow_->toolboxWindow();
}

std::int32_t AnnotationsView::currentAnnotationMode() const
{
    if (annotationModeKey_ == annotationModeKeySnapshot) {
        return 1;
    }
    return annotationModeKey_ == annotationModeKeyFlipchart ? 2 : 0;
}

void AnnotationsView::setIsHidden(bool hidden)
{
    isHidden_ = hidden;
    setNeedsDisplay(true);
}

AnnotationsViewDelegate *AnnotationsView::sharedMouseState() const
{
    const CanvasSession *session = annotationManager();
    return session != nullptr && session->isSupportMultiScreen() ? delegate_ : nullptr;
}

bool AnnotationsView::isPressed() const
{
    if (AnnotationsViewDelegate *shared = sharedMouseState()) {
        if (const auto answer = shared->isPressed(overlayWindow_)) {
            return *answer;
        }
    }
    return isPressed_;
}

void AnnotationsView::setIsPressed(bool pressed)
{
    isPressed_ = pressed;
    if (AnnotationsViewDelegate *shared = sharedMouseState()) {
        shared->mouseStatus(overlayWindow_, pressed);
    }
}

void AnnotationsView::setCurrentTool(const std::shared_ptr<CanvasTool> &tool)
{
    finalizeLastAnnotationIgnoringActiveStatus(true);
    if (currentTool_ && currentTool_->annotationType() == annotation_type::text) {
        sendNotifyMeesage("textModeEvent", 0, 0);
    }
    // Setting the same tool again is how a menu ends a running text.
    if (tool == currentTool_) {
        return;
    }
    currentTool_ = tool;
    noiftyToolChenage();
}

void AnnotationsView::noiftyToolChenage()
{
    if (CanvasSession *session = annotationManager()) {
        session->requestChangeTool();
    }
}

void AnnotationsView::setCurrentCursor(const std::optional<platform::Cursor> &cursor)
{
    currentCursor_ = cursor;
    invalidateCursorRects();
}

void AnnotationsView::refreshCursor()
{
    if (currentTool_ && !currentTool_->transient()) {
        setCurrentCursor(currentTool_->cursor());
    }
}

void AnnotationsView::resetCursorRects()
{
    if (currentCursor_) {
        addCursorRect(bounds(), *currentCursor_);
    }
}

bool AnnotationsView::hasAnnotations() const
{
    return document_.annotationCount(annotationModeKey_) != 0;
}

bool AnnotationsView::hasHistoryAnnotations() const
{
    return document_.undoHistoryCount(annotationModeKey_) != 0;
}

void AnnotationsView::enableToolboxButtons() const
{
    const CanvasToolbox *toolbox = toolboxWindow();
    if (toolbox == nullptr) {
        return;
    }
    const bool drawn = hasAnnotations();
    const bool undoable = drawn || document_.clearedScreenCount(annotationModeKey_) != 0;
    enableControl(toolbox->eraserButton(), drawn);
    enableControl(toolbox->undoButton(), undoable);
    enableControl(toolbox->redoButton(), hasHistoryAnnotations());
    enableControl(toolbox->squeegeeButton(), drawn);
    enableControl(toolbox->saveSSButton(), undoable);
}

void AnnotationsView::refreshButtonEnabledStates()
{
    platform::guarded(
        [this] {
            enableToolboxButtons();
            const std::weak_ptr<View> self = weak_from_this();
            lateRedraw_ =
                platform::Platform::current().mainThread().after(kLateRedrawSeconds, [self] {
                    if (const auto view = self.lock()) {
                        view->setNeedsDisplay(true);
                    }
                });
        },
        [](const std::string &description) { logLine(1, description); });
    sendNotifyMeesage("undoreoEvent",
                      static_cast<std::uint32_t>(document_.annotationCount(annotationModeKey_)),
                      static_cast<std::uint32_t>(document_.undoHistoryCount(annotationModeKey_)));
}

void AnnotationsView::finalizeLastAnnotationIgnoringActiveStatus(bool ignoringActiveStatus)
{
    const auto last = document_.lastAnnotation(annotationModeKey_);
    if (!last || (!ignoringActiveStatus && last->isActive())) {
        return;
    }
    if (!last->shouldFinalize()) {
        document_.removeLastAnnotation(annotationModeKey_);
    }
    refreshButtonEnabledStates();
    setNeedsDisplay(true);
}

void AnnotationsView::undoAnnotation()
{
    finalizeLastAnnotationIgnoringActiveStatus(true);
    if (!document_.undo(annotationModeKey_)) {
        return;
    }
    refreshButtonEnabledStates();
    setNeedsDisplay(true);
    setIsChange(true);
}

void AnnotationsView::redoAnnotation()
{
    const auto entry = document_.redo(annotationModeKey_);
    if (!entry) {
        return;
    }
    if (entry->annotationType() == annotation_type::clearScreen) {
        replayClearAnnotationsWithSqueegee();
    }
    refreshButtonEnabledStates();
    setNeedsDisplay(true);
    setIsChange(true);
}

void AnnotationsView::clearAnnotations(const platform::Button *sender)
{
    finalizeLastAnnotationIgnoringActiveStatus(true);
    document_.wipe(annotationModeKey_);
    const CanvasToolbox *toolbox = toolboxWindow();
    platform::Button *squeegee = toolbox == nullptr ? nullptr : toolbox->squeegeeButton();
    if (sender != nullptr && sender == squeegee) {
        document_.emptyUndoHistory(annotationModeKey_);
    }
    refreshButtonEnabledStates();
    enableControl(squeegee, false);
    setNeedsDisplay(true);
    if (CanvasSession *session = annotationManager()) {
        session->setIsAnimating(false);
    }
    setIsChange(true);
}

float AnnotationsView::wipeSeconds() const
{
    const CanvasSession *session = annotationManager();
    return session == nullptr
               ? kWipeBaseSeconds
               : session->getScreenScale(kHeightAxis, getFrameSize(), kWipeBaseSeconds);
}

void AnnotationsView::clearAnnotationsWithSqueegee()
{
    double seconds = wipeSeconds();
    if (!AppConstants::instance().isViewOnly()) {
        if (CanvasSession *session = annotationManager()) {
            session->setIsAnimating(true);
        }
        seconds = kQuickWipeSeconds;
    }
    scheduleWipe(seconds + kAfterWipeSeconds, true);
}

void AnnotationsView::replayClearAnnotationsWithSqueegee()
{
    if (CanvasSession *session = annotationManager()) {
        session->setIsAnimating(true);
    }
    scheduleWipe(wipeSeconds() + kAfterWipeSeconds, false);
}

void AnnotationsView::scheduleWipe(double seconds, bool fromSqueegeeButton)
{
    const std::weak_ptr<View> self = weak_from_this();
    const auto wipe = [this, self, fromSqueegeeButton] {
        if (const auto keep = self.lock()) {
            const CanvasToolbox *toolbox = toolboxWindow();
            const bool asButton = fromSqueegeeButton && toolbox != nullptr;
            clearAnnotations(asButton ? toolbox->squeegeeButton() : nullptr);
        }
    };
    platform::Platform::current().mainThread().after(seconds, wipe).detach();
}

void AnnotationsView::clearForNewAnnotations()
{
    finalizeLastAnnotationIgnoringActiveStatus(true);
    document_.removeLists(annotationModeKey_);
    document_.addLists(annotationModeKey_);
    refreshButtonEnabledStates();
    setNeedsDisplay(true);
    if (CanvasSession *session = annotationManager()) {
        session->setIsAnimating(false);
    }
    setIsChange(false);
}

void AnnotationsView::requestHelp()
{
    sendNotifyMeesage("helpRequested", 1, 0);
}

void AnnotationsView::ShowOrHideToolBar(bool show)
{
    CanvasSession *session = annotationManager();
    if (session == nullptr || AppConstants::instance().isAnnotation2()) {
        return;
    }
    platform::Platform::current().mainThread().postAndWait([session, show] {
        if (show) {
            session->maximizeAnnotationToolbox();
        } else {
            session->minimizeAnnotationToolbox();
        }
    });
    session->setIsEnterSpecialMode(show ? 0 : 2);
}

} // namespace orv
