#include "channels/controller/SessionSwitch.h"

#include "platform/ports/Displays.h"
#include "platform/ports/Platform.h"
#include "platform/ports/Processes.h"

#include <fmt/format.h>

namespace orv {

namespace {

constexpr std::uint32_t kLogAll = 0;
constexpr std::uint32_t kLogErrors = 4;
constexpr std::uint32_t kStopRecording = 0;

} // namespace

void SessionSwitch::subscribe()
{
    if (!state_.m_bNotificationsSubscribed) {
        receivers_.RegisterForNotifications();
        state_.m_bNotificationsSubscribed = true;
    }
}

void SessionSwitch::ToggleAnnotationMode()
{
    subscribe();
    AnnotationMode(!state_.m_bInAnnotationMode);
}

void SessionSwitch::AnnotationMode(bool show)
{
    state_.m_bInAnnotationMode = show;
    subscribe();
    if (!show) {
        if (const auto manager = state_.m_annotationManager) {
            manager->closeAnnotationToolbox();
        }
        RecoveryDesktop();
        return;
    }
    makeSession();
    const auto manager = state_.m_annotationManager;
    manager->showWindow();
    setAnnotationDispID();
    applyDebugSettings();
    manager->leaveOthersMode();
    manager->openAnnotationToolbox();
}

void SessionSwitch::makeSession()
{
    auto &manager = state_.m_annotationManager;
    if (manager && manager->appActUniqueID() != state_.m_dwActUniqueID) {
        logLine(1, fmt::format("-[AnnotationController AnnotationMode:] change plug-in ID : "
                               "[{}][{}]",
                               manager->appActUniqueID(), state_.m_dwActUniqueID));
        manager.reset();
    }
    if (!manager) {
        manager = std::make_shared<AnnotationManager>(state_.m_dwActUniqueID);
        manager->setIsIgnoreMouseEvent(state_.isIgnoreMouseEvent);
        manager->setClientDimensionInfo(
            {state_.m_clientDimension.width, state_.m_clientDimension.height});
        manager->setDeviceName(state_.DeviceName);
    }
}

void SessionSwitch::setAnnotationDispID()
{
    const auto &manager = state_.m_annotationManager;
    manager->setDisplayID(state_.m_dpID);
    const platform::Rect bounds = platform::Platform::current().displays().bounds(state_.m_dpID);
    state_.m_curDimension = {bounds.size.width, bounds.size.height};
    manager->setDimension(bounds.size,
                          {state_.m_clientDimension.width, state_.m_clientDimension.height});
}

void SessionSwitch::applyDebugSettings()
{
    const auto &manager = state_.m_annotationManager;
    OrvFrameworkLogger::shared().setLevel(OrvAnnotation::className,
                                          state_.debug ? kLogAll : kLogErrors);
    manager->setDebug(state_.debug);
    OrvAnnotationDebugSetting *setting = manager->debugSetting();
    if (!state_.debugDict || setting == nullptr) {
        return;
    }
    const auto valueOf = [this](const char *key) {
        const auto found = state_.debugDict->find(key);
        return found == state_.debugDict->end() ? std::string() : found->second;
    };
    setting->setPBorderColorHex(valueOf("pBorderColorHex"));
    setting->setPDebugInfoColorHex(valueOf("pDebugInfoColorHex"));
}

void SessionSwitch::RecoveryDesktop()
{
    if (const auto manager = state_.m_annotationManager) {
        if (state_.m_bInAnnotationMode) {
            manager->closeAnnotationToolbox();
        }
        manager->handleVideoRecording(kStopRecording);
        state_.m_bInAnnotationMode = false;
    }
    receivers_.UnregisterForNotifications();
    state_.m_bNotificationsSubscribed = false;
}

void SessionSwitch::Createkillmefile()
{
    logLine(1, "-[AnnotationController Createkillmefile]");
    if (state_.m_annotationManager) {
        platform::Platform::current().processes().start("/usr/bin/touch",
                                                        {"/tmp/.OrvWhiteboardStatus"});
    }
}

} // namespace orv
