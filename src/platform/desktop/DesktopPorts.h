#pragma once

#include "platform/desktop/DesktopApplications.h"
#include "platform/desktop/DesktopDisplays.h"
#include "platform/desktop/DesktopFiles.h"
#include "platform/desktop/DesktopMainThread.h"
#include "platform/desktop/DesktopScreenCapture.h"
#include "platform/desktop/DesktopSystemLog.h"
#include "platform/desktop/DesktopWindowServer.h"
#include "platform/desktop/FrontWindow.h"
#include "platform/desktop/XConnection.h"
#include "platform/ports/Platform.h"
#include "platform/posix/PosixProcesses.h"
#include "platform/raster/PictureFiles.h"

#include <string>

namespace orv::platform {

/// All ports of this desktop, made in the order in which they need each other.
///
/// Thread   made and destroyed on the main thread, while the GUI application lives.
class DesktopPorts final : public Platform {
public:
    DesktopPorts(const std::string &bundleIdentifier, const std::string &resourceFolder);

    DesktopMainThread &mainThread() override { return mainThread_; }
    DesktopDisplays &displays() override { return displays_; }
    DesktopWindowServer &windowServer() override { return windowServer_; }
    DesktopApplications &applications() override { return applications_; }
    DesktopFiles &files() override { return files_; }
    PictureFiles &pictures() override { return pictures_; }
    PosixProcesses &processes() override { return processes_; }
    DesktopScreenCapture &screenCapture() override { return screenCapture_; }
    DesktopSystemLog &systemLog() override { return systemLog_; }

    [[nodiscard]] const XConnection &x() const { return x_; }

private:
    DesktopSystemLog systemLog_;
    DesktopFiles files_;
    PictureFiles pictures_;
    PosixProcesses processes_;
    XConnection x_;
    DesktopMainThread mainThread_;
    DesktopDisplays displays_;
    FrontWindow front_;
    DesktopApplications applications_;
    DesktopWindowServer windowServer_;
    DesktopScreenCapture screenCapture_;
};

} // namespace orv::platform
