#include "session/AnnotationManager.h"

#include "OrvAnnotation/Events.h"
#include "platform/ports/Platform.h"

// What the client, the toolbox and the canvases ask the session for.

namespace orv {

namespace {

constexpr double kScaleBaseWidth = 1024.0;
constexpr double kScaleBaseHeight = 768.0;

} // namespace

void AnnotationManager::selectTool(const platform::Button &sender)
{
    const auto found = tools_.find(sender.title());
    const std::shared_ptr<AnnotationTool> tool = found == tools_.end() ? nullptr : found->second;
    if (isAnimating_ && tool && tool->transient()) {
        return;
    }
    if (lastSelectedTool_ && lastSelectedTool_ != tool) {
        lastSelectedTool_->hideMenu();
    }
    const bool transient = tool && tool->transient();
    if (currentTool_ != tool && !transient) {
        if (currentTool_) {
            currentTool_->deselect();
        }
        currentTool_ = tool;
        canvasHandler_->setCurrentTool(tool);
    }
    const bool toggleMenu = !std::exchange(enteringAnnotationMode_, false);
    if (tool) {
        tool->selectAndToggleMenu(toggleMenu);
    }
    lastSelectedTool_ = tool;
}

void AnnotationManager::selectOthersToolMenu(const platform::Button &sender)
{
    constexpr int leaveSnapshot = 100;
    constexpr int takeSnapshot = 101;
    if (sender.tag() == leaveSnapshot && canvasHandler_) {
        canvasHandler_->setIsEditMode(true);
        setEditModeToolMenu(canvasHandler_->isEditMode());
    } else if (sender.tag() == takeSnapshot) {
        saveNewSnapshot();
    }
}

void AnnotationManager::selectToolOfOutlet(const std::string &outlet)
{
    if (const auto button = outlets_.button(outlet)) {
        selectTool(*button);
    }
}

void AnnotationManager::selectDefaultTool()
{
    enteringAnnotationMode_ = true;
    selectToolOfOutlet("penButton");
}

void AnnotationManager::handleSetToolRequest(const ToolRequest &request)
{
    enteringAnnotationMode_ = true;
    const char *outlet = buttonForDrawType(request.type);
    if (!canvasHandler_) {
        return;
    }
    if (outlet == nullptr) {
        canvasHandler_->doLaserPointer(true);
        return;
    }
    selectToolOfOutlet(outlet);
    canvasHandler_->doLaserPointer(false);
    if (currentTool_) {
        applyToolRequest(request, *currentTool_);
    }
}

std::uint32_t AnnotationManager::getCurrentToolType() const
{
    constexpr std::uint32_t unknown = 65535;
    switch (currentTool_ ? currentTool_->annotationType() : annotation_type::none) {
    case annotation_type::pen:
        return 0;
    case annotation_type::highlighter:
        return 1;
    case annotation_type::eraser:
        return 2;
    case annotation_type::rectangle:
        return 3;
    case annotation_type::ellipse:
        return 4;
    case annotation_type::text:
        return 5;
    case annotation_type::stamp:
        return 6;
    case annotation_type::line:
        return 7;
    default:
        return unknown;
    }
}

std::uint32_t AnnotationManager::getCurrentToolSize() const
{
    return currentTool_ ? static_cast<std::uint32_t>(currentTool_->annotationSize()) : 0;
}

std::uint32_t AnnotationManager::getCurrentToolColor() const
{
    if (!currentTool_) {
        return 0;
    }
    const platform::Color &color = currentTool_->annotationColor();
    const auto green = static_cast<std::uint32_t>(color.greenComponent() * 255.0);
    const auto blue = static_cast<std::uint32_t>(color.blue() * 255.0);
    return (green << 24U) + blue;
}

void AnnotationManager::handleUndoRequest()
{
    const auto view = annotationsView();
    if (view && view->hasAnnotations()) {
        platform::Platform::current().mainThread().post([view] { view->undoAnnotation(); });
    }
}

void AnnotationManager::handleRedoRequest()
{
    const auto view = annotationsView();
    if (view && view->hasHistoryAnnotations()) {
        platform::Platform::current().mainThread().post([view] { view->redoAnnotation(); });
    }
}

void AnnotationManager::handleEraseAllRequest()
{
    if (canvasHandler_) {
        canvasHandler_->clearAnnotationsWithSqueegee();
    }
}

void AnnotationManager::handlePrevPageRequest() {}
void AnnotationManager::handleNextPageRequest() {}
void AnnotationManager::handleVideoRecording(std::uint32_t /*action*/) {}
void AnnotationManager::updateFileTransferStatusDlg(std::uint32_t /*status*/) {}
void AnnotationManager::closeFileTransferStatusDlg() {}
void AnnotationManager::hideToolMenuToggle()
{
    if (lastSelectedTool_ && !lastSelectedTool_->getToolMenuIsHidden()) {
        lastSelectedTool_->selectAndToggleMenu(true);
    }
}

void AnnotationManager::handleSpotlightPichAct(bool begin)
{
    if (canvasHandler_) {
        canvasHandler_->handleSpotlightPichAct(begin);
    }
}

void AnnotationManager::handleSpotlightPichMove(std::int32_t length)
{
    if (canvasHandler_) {
        canvasHandler_->handleSpotlightPichMove(length);
    }
}

RemoteInputDesk AnnotationManager::remoteInputDesk() const
{
    RemoteInputDesk desk;
    desk.toolbox = outlets_.toolboxWindow.get();
    desk.overlay = outlets_.overlayWindow.get();
    desk.toolMenuView = outlets_.toolMenuView.get();
    desk.menuTool = lastSelectedTool_.get();
    desk.canvasHandler = canvasHandler_.get();
    desk.isSupportMultiScreen = isSupportMultiScreen();
    desk.displayScreen = displayScreen_;
    desk.requestedDisplay = displayScreenRequested_ ? displayScreenRequested_->displayID : 0;
    desk.picture = clientPicture_;
    return desk;
}

void AnnotationManager::handleControlMouseEvent(const ControlEvent &event)
{
    remoteInput_.handleControlMouseEvent(event, remoteInputDesk());
}

void AnnotationManager::handleControlKeyboardEvent(const ControlEvent &event)
{
    remoteInput_.handleControlKeyboardEvent(event, remoteInputDesk());
}

void AnnotationManager::requestHelp()
{
    sendNotifyMeesage("helpRequested", 1, 0);
}

void AnnotationManager::requestChangeTool() {}

void AnnotationManager::setEditModeToolMenu(bool isEditMode)
{
    if (outlets_.editToolMenuView && outlets_.fixedToolMenuView) {
        outlets_.editToolMenuView->setHidden(!isEditMode);
        outlets_.fixedToolMenuView->setHidden(isEditMode);
    }
}

float AnnotationManager::getScreenScale(std::int32_t axis, platform::Size size, float base) const
{
    const double length = axis == 0 ? size.width : size.height;
    const double reference = axis == 0 ? kScaleBaseWidth : kScaleBaseHeight;
    return length > reference ? base * static_cast<float>(length / reference) : base;
}

} // namespace orv
