#include "session/AnnotationManager.h"

#include "annotations/FigureAnnotations.h"
#include "canvas/AnnotationRegistry.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/ports/Applications.h"
#include "platform/ports/Files.h"
#include "platform/ports/Platform.h"
#include "session/DataFolders.h"
#include "session/ToolSettings.h"

#include <fmt/format.h>

// How a session begins and ends; how it opens and closes is in AnnotationManagerOpening.cpp.

namespace orv {

namespace {

constexpr double kDebugTextMargin = 10.0;

platform::Displays &displays()
{
    return platform::Platform::current().displays();
}

} // namespace

AnnotationManager::AnnotationManager(std::uint32_t appActUniqueID)
    : debugSetting_(std::make_unique<OrvAnnotationDebugSetting>())
{
    debugSetting_->setOffset(kDebugTextMargin);
    registerStrokeAnnotations(AnnotationRegistry::shared());
    registerFigureAnnotations(AnnotationRegistry::shared());
    AppConstants::instance().setAppActUniqueID(appActUniqueID);
    initializeDefaultPathSetting();
    displayScreenRequested_ = displays().screen(displays().mainDisplayID());
    checkWhiteboardDataFolder();
}

AnnotationManager::~AnnotationManager() = default;

std::int32_t AnnotationManager::appActPid() const
{
    return AppConstants::instance().AppActPid();
}

std::uint32_t AnnotationManager::appActUniqueID() const
{
    return AppConstants::instance().AppActUniqueID();
}

std::shared_ptr<AnnotationsView> AnnotationManager::annotationsView() const
{
    return outlets_.overlayWindow ? outlets_.overlayWindow->annotationsView() : nullptr;
}

bool AnnotationManager::isSupportMultiScreen() const
{
    return AppConstants::instance().isSupportMultiScreen();
}

std::string AnnotationManager::description() const
{
    return fmt::format("<AnnotationManager: {}>", static_cast<const void *>(this));
}

void AnnotationManager::setDeviceName(const std::optional<std::string> &name)
{
    AppConstants &constants = AppConstants::instance();
    logLine(1, fmt::format("-[AnnotationManager setDeviceName:] [{}][{}]", name.value_or("(null)"),
                           name ? AppConstants::SanitizeName(*name) : "(null)"));
    constants.setDeviceName(name);
    constants.AppUserDataPath = constants.AppDataPath + constants.SanitizeDeviceName();
    if (makeUserFolder()) {
        platform::Platform::current().mainThread().post([] { moveDefaultDataToUserFolder(); });
    }
}

void AnnotationManager::setDisplayID(platform::DisplayID displayID)
{
    displayScreenRequested_ = displays().screen(displayID);
}

void AnnotationManager::setDimension(platform::Size dimension, platform::Size scaled)
{
    clientPicture_ = {dimension, scaled};
}

std::optional<platform::Screen> AnnotationManager::displayScreenRequested() const
{
    return displayScreenRequested_;
}

void AnnotationManager::showWindow()
{
    if (!outlets_.toolboxWindow) {
        outlets_ =
            loadSessionOutlets([this](platform::Button &sender) { selectTool(sender); },
                               [this](platform::Button &sender) { selectOthersToolMenu(sender); });
        windowDidLoad();
    }
    outlets_.toolboxWindow->orderFront();
    setFront(*outlets_.toolboxWindow);
}

void AnnotationManager::setFront(platform::Window &window)
{
    platform::Platform::current().applications().activateOwn();
    window.orderFrontRegardless();
    window.makeKeyWindow();
}

void AnnotationManager::windowDidLoad()
{
    outlets_.toolboxWindow->setAnnotationManager(this);
    outlets_.toolboxWindow->resetDisplay();
    outlets_.toolboxWindow->setHasShadow(false);
    outlets_.overlayWindow->setHasShadow(false);
    outlets_.overlayWindow->setAnnotationManager(this);
    outlets_.overlayWindow->setToolboxWindow(outlets_.toolboxWindow.get());
    if (!canvasHandler_) {
        canvasHandler_ = std::make_unique<AnnotationCanvasHandler>(outlets_.overlayWindow);
        canvasHandler_->supportMultiScreen(isSupportMultiScreen());
    }
    buildTools();
    canvasHandler_->loadDefaultAnnotationData();
}

void AnnotationManager::buildTools()
{
    const auto canvas = annotationsView();
    TransientActions actions;
    actions["undo"] = [canvas] { canvas->undoAnnotation(); };
    actions["redo"] = [canvas] {
        if (canvas->hasHistoryAnnotations()) {
            canvas->redoAnnotation();
        }
    };
    actions["snapshot"] = [this] { saveNewSnapshot(); };
    actions["eraseall"] = [canvas] { canvas->clearAnnotationsWithSqueegee(); };
    ToolSettingsReader reader;
    tools_ = buildToolTable(outlets_, canvas, actions, [&reader](const std::string &title) {
        return reader.savedSettingsForTool(title);
    });
}

bool AnnotationManager::isResetDisplay() const
{
    const auto frameOf = [](const std::optional<platform::Screen> &screen) {
        return screen ? screen->frame : platform::Rect{};
    };
    const platform::Rect requested = frameOf(displayScreenRequested_);
    const auto canvas = annotationsView();
    const platform::Rect window =
        outlets_.overlayWindow ? outlets_.overlayWindow->frame() : platform::Rect{};
    const platform::Size size = canvas ? canvas->frame().size : platform::Size{};
    return displayScreen_ != displayScreenRequested_ || !(window == requested) ||
           !(size == requested.size);
}

void AnnotationManager::resetAllDisplayWindow()
{
    if (canvasHandler_) {
        canvasHandler_->resetDisplay();
        outlets_.toolboxWindow->resetDisplay();
    }
}

void AnnotationManager::resetEventWindow()
{
    remoteInput_.resetEventWindow();
}

void AnnotationManager::terminate()
{
    logLine(1, fmt::format("-[AnnotationManager terminate] Window={}",
                           static_cast<const void *>(outlets_.toolboxWindow.get())));
    const auto release = [this] {
        tools_.clear();
        currentTool_.reset();
        lastSelectedTool_.reset();
        AppConstants::destroy();
        remoteInput_.resetEventWindow();
        canvasHandler_.reset();
        outlets_ = {};
        displayScreen_.reset();
        displayScreenRequested_.reset();
        debugSetting_.reset();
    };
    platform::guarded(release, [](const std::string &description) { logLine(1, description); });
    logLine(1, "-[AnnotationManager terminate] finally");
}

} // namespace orv
