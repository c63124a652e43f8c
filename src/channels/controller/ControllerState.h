#pragma once

#include "OrvAnnotation/AnnotationController.h"
#include "channels/OrvFrameworkLogger.h"
#include "session/AnnotationManager.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace orv {

/// What the host has set and what the controller believes; shared by the controller's parts.
///
/// Thread   the host's and the main thread, each under the monitor.
struct ControllerState {
    /// Null while no session exists.
    std::shared_ptr<AnnotationManager> m_annotationManager;
    ChannelSender sendCommandCHData = nullptr;
    ChannelSender sendDataCHData = nullptr;
    /// The controller's belief that the session is showing.
    bool m_bInAnnotationMode = false;
    bool m_bNotificationsSubscribed = false;
    /// Kept for the host; nothing reads it.
    std::uint32_t m_dwActOpt = 0;
    std::uint32_t m_dwActUniqueID = 0;
    std::uint32_t m_dpID = 0;
    ScreenDimension m_clientDimension;
    ScreenDimension m_curDimension;
    std::optional<std::string> DeviceName;
    bool debug = false;
    std::int32_t isIgnoreMouseEvent = 0;
    std::optional<std::map<std::string, std::string>> debugDict;
    /// Not owned; null for none.
    OrvAnnotationDelegate *delegate = nullptr;

    [[nodiscard]] bool isPresenter() const { return m_dwActUniqueID == 12; }
    [[nodiscard]] bool isIAP() const { return m_dwActUniqueID == 16; }
    [[nodiscard]] bool isAnnotation2() const
    {
        return m_dwActUniqueID >= 16 && m_dwActUniqueID <= 18;
    }
};

} // namespace orv
