#include "session/AnnotationManager.h"

#include "OrvAnnotation/Events.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/ports/Applications.h"
#include "platform/ports/Platform.h"
#include "session/ToolSettings.h"

// The exact orders in which a session opens and closes: clients and hosts rely on them.

namespace orv {

namespace {

constexpr double kAutosaveSeconds = 60.0;
// A second-generation client needs this long before it can take button states.
constexpr double kSecondGenerationRefreshSeconds = 2.0;
constexpr double kMinimizeSeconds = 0.3;
constexpr std::uint32_t kAutoHideDock = 1;
constexpr std::uint32_t kNormalDock = 0;

platform::MainThread &mainThread()
{
    return platform::Platform::current().mainThread();
}

platform::Applications &applications()
{
    return platform::Platform::current().applications();
}

bool isAnnotation2()
{
    return AppConstants::instance().isAnnotation2();
}

} // namespace

void AnnotationManager::openAnnotationToolbox()
{
    if (!canvasHandler_) {
        return;
    }
    logLine(1, "-[AnnotationManager openAnnotationToolbox]");
    canvasHandler_->supportMultiScreen(isSupportMultiScreen());
    if (isIgnoreMouseEvent_ == 0) {
        applications().setPresentationOptions(kAutoHideDock);
    }
    pidFrontmostApplication_ = applications().frontProcess();
    if (isAnnotation2()) {
        if (AppConstants::instance().isIAP()) {
            completeMinimizingAnnotationToolbox();
        } else {
            outlets_.toolboxWindow->hideToolboxWindow(false);
        }
    }
    if (isResetDisplay()) {
        outlets_.toolboxWindow->resetDisplay();
    }
    outlets_.toolboxWindow->orderFront();
    applyStyleForFrontmostApplication();
    sendSwitchModeAckInfo(0, 0, 1, 1, true, true);
    mainThread().postAndWait([this] { enterAnnotationMode(); });
    sendNotifyMeesage("toolboxEvent", 1, 1);
    const double delay = isAnnotation2() ? kSecondGenerationRefreshSeconds : 0.0;
    lateRefresh_ = mainThread().after(delay, [self = weak_from_this()] {
        const auto manager = self.lock();
        if (manager && manager->canvasHandler_) {
            manager->canvasHandler_->refreshButtonEnabledStates();
        }
    });
    controlMouseAndKeyboardEvent(true);
    displayScreen_ = displayScreenRequested_;
    getApplictionLanuchStatus();
}

void AnnotationManager::applyStyleForFrontmostApplication()
{
    canvasHandler_->setStyleMask(
        frontmostApplicationDemandsFocus_ ? platform::style::nonactivatingPanel : 0);
}

void AnnotationManager::enterAnnotationMode()
{
    if (!canvasHandler_) {
        return;
    }
    enteringAnnotationMode_ = true;
    if (currentTool_ && currentTool_->button()) {
        const auto button = currentTool_->button();
        selectTool(*button);
    } else {
        selectDefaultTool();
    }
    canvasHandler_->refreshButtonEnabledStates();
    if (isResetDisplay()) {
        resetAllDisplayWindow();
    }
    canvasHandler_->showCanvas();
    autosaveTimer_ = mainThread().every(kAutosaveSeconds, [self = weak_from_this()] {
        const auto manager = self.lock();
        if (manager && manager->canvasHandler_) {
            manager->canvasHandler_->saveDefaultAnnotationData();
        }
    });
    annotationsView()->enterCurrentEditingModeNotify();
}

void AnnotationManager::closeAnnotationToolbox()
{
    if (!canvasHandler_) {
        return;
    }
    logLine(1, "-[AnnotationManager closeAnnotationToolbox]");
    applications().setPresentationOptions(kNormalDock);
    if (isEnterSpecialMode_ != 0 || isAnnotation2()) {
        mainThread().postAndWait([this] { canvasHandler_->recoveryScreenShade(); });
    }
    outlets_.toolboxWindow->orderOut();
    mainThread().postAndWait([this] { exitAnnotationMode(); });
    applications().setFrontProcess(pidFrontmostApplication_);
    controlMouseAndKeyboardEvent(false);
    sendNotifyMeesage("toolboxEvent", 0, 1);
    sendSwitchModeAckInfo(0, 0, 0, 0, true, true);
}

void AnnotationManager::exitAnnotationMode()
{
    if (!canvasHandler_) {
        return;
    }
    if (lastSelectedTool_) {
        lastSelectedTool_->hideMenu();
    }
    if (currentTool_) {
        currentTool_->deselect();
    }
    canvasHandler_->hiddenCanvas();
    autosaveTimer_.reset();
    canvasHandler_->saveDefaultAnnotationDataAndWait();
    // A second-generation client sets its tools with every request; nothing is kept for it.
    if (!isAnnotation2()) {
        saveToolSettings(tools_);
    }
}

void AnnotationManager::toggleAnnotationMode()
{
    if (!canvasHandler_) {
        return;
    }
    if (canvasHandler_->isHidden()) {
        enterAnnotationMode();
    } else {
        exitAnnotationMode();
    }
}

void AnnotationManager::minimizeAnnotationToolbox()
{
    if (isAnnotation2()) {
        return;
    }
    if (lastSelectedTool_) {
        mainThread().postAndWait([tool = lastSelectedTool_] { tool->hideMenu(); });
    }
    lateMinimize_ = mainThread().after(kMinimizeSeconds, [self = weak_from_this()] {
        if (const auto manager = self.lock()) {
            manager->completeMinimizingAnnotationToolbox();
        }
    });
}

void AnnotationManager::completeMinimizingAnnotationToolbox()
{
    mainThread().post([self = weak_from_this()] {
        const auto manager = self.lock();
        if (manager && manager->outlets_.toolboxWindow) {
            manager->outlets_.toolboxWindow->hideToolboxWindow();
        }
    });
}

void AnnotationManager::maximizeAnnotationToolbox()
{
    if (isAnnotation2()) {
        return;
    }
    mainThread().post([self = weak_from_this()] {
        const auto manager = self.lock();
        if (manager && manager->outlets_.toolboxWindow) {
            manager->outlets_.toolboxWindow->showToolboxWindow();
        }
    });
}

void AnnotationManager::controlMouseAndKeyboardEvent(bool welcome)
{
    sendNotifyMeesage("mouseEventHandle", welcome ? 1 : 0, 0);
    sendNotifyMeesage("keyboardEventHandle", welcome ? 1 : 0, 0);
}

void AnnotationManager::getApplictionLanuchStatus()
{
    constexpr std::uint32_t accessibilityWanted = 1;
    constexpr std::uint32_t keynoteRunning = 2;
    std::uint32_t flags = 0;
    if (applications().isRunning("com.microsoft.Powerpoint") &&
        !applications().isAccessibilityEnabled()) {
        flags |= accessibilityWanted;
    }
    if (applications().isRunning("com.apple.iWork.Keynote")) {
        flags |= keynoteRunning;
    }
    if (flags != 0) {
        constexpr std::uint32_t openSettingsCommand = 20;
        sendNotifyMeesage("sendCommandHandle", openSettingsCommand, flags);
    }
}

} // namespace orv
