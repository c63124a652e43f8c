#include "canvas/AnnotationCanvasHandler.h"

#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/ports/Platform.h"

#include <set>

namespace orv {

namespace {

using platform::DisplayID;
using platform::Event;
using platform::EventType;
using Lock = platform::Monitor::Hold;

// Several announcements of one change come within this time.
constexpr double kScreenChangeSeconds = 0.3;

platform::Displays &displays()
{
    return platform::Platform::current().displays();
}

} // namespace

AnnotationCanvasHandler::AnnotationCanvasHandler(
    const std::shared_ptr<AnnotationOverlayWindow> &window)
    : annotationManager_(window->annotationManager()), toolboxWindow_(window->toolboxWindow())
{
    if (window->displayID() == AnnotationOverlayWindow::unsetDisplayID) {
        window->setDisplayID(displays().mainDisplayID());
    }
    canvasDict_[window->displayID()] = window;
    window->annotationsView()->setDelegate(this);
    platform::NotificationCenter::local().addObserver(
        this, platform::NSApplicationDidChangeScreenParametersNotification,
        [this](std::string_view, const platform::UserInfo &) {
            ApplicationDidChangeScreenParameters();
        });
}

AnnotationCanvasHandler::~AnnotationCanvasHandler()
{
    platform::NotificationCenter::local().removeObserver(this);
    changeScreenTimer_.reset();
    hiddenCanvas();
    lastActiveCanvas_ = nullptr;
    lastActiveEvent_.reset();
    const Lock lock(monitor_);
    while (!canvasDict_.empty()) {
        const auto window = canvasDict_.begin()->second;
        canvasDict_.erase(canvasDict_.begin());
        window->annotationsView()->setDelegate(nullptr);
        window->close();
    }
}

AnnotationOverlayWindow *AnnotationCanvasHandler::mainCanvas() const
{
    const Lock lock(monitor_);
    AnnotationOverlayWindow *found = nullptr;
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        if (window->isMain()) {
            found = window.get();
        }
    }
    return found;
}

AnnotationsView *AnnotationCanvasHandler::mainView() const
{
    const AnnotationOverlayWindow *window = mainCanvas();
    return window == nullptr ? nullptr : window->annotationsView().get();
}

void AnnotationCanvasHandler::forEachCanvas(
    const std::function<void(AnnotationsView &)> &visit) const
{
    const Lock lock(monitor_);
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        visit(*window->annotationsView());
    }
}

std::shared_ptr<AnnotationOverlayWindow>
AnnotationCanvasHandler::createNewCanvas(const platform::Screen &screen)
{
    const auto view =
        std::make_shared<AnnotationsView>(platform::Rect{{0.0, 0.0}, screen.frame.size});
    auto window = std::make_shared<AnnotationOverlayWindow>(screen.displayID, view);
    if (const AnnotationsView *main = mainView()) {
        view->setAutoresizingMask(main->autoresizingMask());
    }
    window->setAnnotationManager(annotationManager_);
    window->setToolboxWindow(toolboxWindow_);
    view->setDelegate(this);
    window->setEnable(true);
    window->orderFrontRegardless();
    window->resetDisplay();
    view->resetDisplay();
    return window;
}

void AnnotationCanvasHandler::resetMultiScreen()
{
    if (!isSupportMultiScreen_) {
        return;
    }
    const auto screens = displays().screens();
    std::set<DisplayID> present;
    for (const auto &screen : screens) {
        present.insert(screen.displayID);
    }
    {
        const Lock lock(monitor_);
        const AnnotationOverlayWindow *main = mainCanvas();
        for (const auto &[id, window] : CanvasDict(canvasDict_)) {
            if (window.get() != main && !present.contains(id)) {
                window->setEnable(false);
                window->setIsVisible(false);
                window->orderOut();
            }
        }
        for (const auto &screen : screens) {
            const auto found = canvasDict_.find(screen.displayID);
            if (found == canvasDict_.end()) {
                canvasDict_.emplace(screen.displayID, createNewCanvas(screen));
                continue;
            }
            const auto window = found->second;
            window->setEnable(true);
            window->setIsVisible(true);
            window->orderFrontRegardless();
            window->annotationsView()->enterStandardAnnotationMode();
        }
    }
    if (annotationManager_ != nullptr) {
        annotationManager_->resetEventWindow();
    }
}

void AnnotationCanvasHandler::supportMultiScreen(bool support)
{
    isSupportMultiScreen_ = support;
    if (support) {
        resetMultiScreen();
        return;
    }
    const Lock lock(monitor_);
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        if (!window->isMain()) {
            window->setIsVisible(false);
            window->orderOut();
        }
    }
}

void AnnotationCanvasHandler::showCanvas()
{
    isEnable_ = true;
    const Lock lock(monitor_);
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        if (!window->enable()) {
            continue;
        }
        window->setIsVisible(true);
        window->annotationsView()->setIsHidden(false);
        window->setIgnoresMouseEvents(annotationManager_ != nullptr &&
                                      annotationManager_->isIgnoreMouseEvent() != 0);
        window->orderFrontRegardless();
        window->makeKeyAndOrderFront();
    }
}

void AnnotationCanvasHandler::hiddenCanvas()
{
    isEnable_ = false;
    const Lock lock(monitor_);
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        window->setIsVisible(false);
        window->annotationsView()->setIsHidden(true);
        window->annotationsView()->setCurrentCursor(std::nullopt);
        window->setIgnoresMouseEvents(true);
        window->orderOut();
    }
}

void AnnotationCanvasHandler::resetDisplay()
{
    const Lock lock(monitor_);
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        if (window->enable()) {
            window->resetDisplay();
            window->annotationsView()->resetDisplay();
        }
    }
}

void AnnotationCanvasHandler::ApplicationDidChangeScreenParameters()
{
    if (isEnable_) {
        changeScreenTimer_ = platform::Platform::current().mainThread().after(kScreenChangeSeconds,
                                                                              [this] { onTick(); });
    }
}

void AnnotationCanvasHandler::onTick()
{
    if (!isEnable_) {
        return;
    }
    platform::guarded(
        [this] {
            resetMultiScreen();
            if (annotationManager_ != nullptr) {
                annotationManager_->resetAllDisplayWindow();
            }
        },
        [](const std::string &description) { logLine(1, description); });
}

AnnotationOverlayWindow *AnnotationCanvasHandler::testHitCanvas(platform::Point fromTopLeft) const
{
    const auto mainScreen = displays().screen(displays().mainDisplayID());
    const platform::Point point = mainScreen ? mainScreen->flipPoint(fromTopLeft) : fromTopLeft;
    if (const auto screen = displays().testHitScreen(point)) {
        const Lock lock(monitor_);
        for (const auto &[id, window] : CanvasDict(canvasDict_)) {
            if (window->isVisible() && id == screen->displayID) {
                return window.get();
            }
        }
    }
    return mainCanvas();
}

bool AnnotationCanvasHandler::sendCanvas(AnnotationOverlayWindow *window,
                                         const platform::Event &mouseEvent)
{
    if (window == nullptr) {
        return true;
    }
    handLaserOver(*window, mouseEvent);
    lastActiveCanvas_ = window;
    lastActiveEvent_ = mouseEvent;
    window->sendEvent(mouseEvent);
    return true;
}

void AnnotationCanvasHandler::handLaserOver(AnnotationOverlayWindow &window,
                                            const Event &mouseEvent)
{
    if (lastActiveCanvas_ == nullptr || lastActiveCanvas_ == &window || !isLaserPointer()) {
        return;
    }
    Event released = *lastActiveEvent_;
    released.type = released.type == EventType::rightMouseDown ? EventType::rightMouseUp
                                                               : EventType::leftMouseUp;
    Event pressed = mouseEvent;
    pressed.type = pressed.type == EventType::rightMouseDragged ? EventType::rightMouseDown
                                                                : EventType::leftMouseDown;
    lastActiveCanvas_->sendEvent(released);
    window.sendEvent(pressed);
}

} // namespace orv
