#pragma once

#include "platform/ports/Platform.h"
#include "platform/raster/PictureFiles.h"
#include "platform/virtual/VirtualApplications.h"
#include "platform/virtual/VirtualDesktop.h"
#include "platform/virtual/VirtualDisplays.h"
#include "platform/virtual/VirtualFiles.h"
#include "platform/virtual/VirtualInput.h"
#include "platform/virtual/VirtualMainThread.h"
#include "platform/virtual/VirtualProcesses.h"
#include "platform/virtual/VirtualScreenCapture.h"
#include "platform/virtual/VirtualSettings.h"
#include "platform/virtual/VirtualSystemLog.h"
#include "platform/virtual/VirtualWindowServer.h"

namespace orv::platform {

/// A whole desk in memory: the same script gives the same pixels, times and answers every time.
///
/// Owner    the program or the test, which installs it; it outlives the controller.
/// Thread   the thread that makes it is the main thread.
/// Fails    the constructor throws `Exception` when the home folder cannot be used or the desktop
///          picture cannot be read.
class VirtualPlatform final : public Platform {
public:
    explicit VirtualPlatform(const VirtualSettings &settings);
    /// Ends the main thread's loop; an installed one is taken away.
    ~VirtualPlatform() override;
    VirtualPlatform(const VirtualPlatform &) = delete;
    VirtualPlatform &operator=(const VirtualPlatform &) = delete;

    VirtualMainThread &mainThread() override { return mainThread_; }
    VirtualDisplays &displays() override { return displays_; }
    VirtualWindowServer &windowServer() override { return windowServer_; }
    VirtualApplications &applications() override { return applications_; }
    VirtualFiles &files() override { return files_; }
    PictureFiles &pictures() override { return pictures_; }
    VirtualProcesses &processes() override { return processes_; }
    VirtualScreenCapture &screenCapture() override { return screenCapture_; }
    VirtualSystemLog &systemLog() override { return systemLog_; }

    VirtualInput &input() { return input_; }
    VirtualDesktop &desktop() { return desktop_; }
    /// What the library does to its surroundings is told here.
    VirtualHooks &hooks() { return hooks_; }

private:
    VirtualHooks hooks_;
    VirtualSystemLog systemLog_;
    VirtualMainThread mainThread_;
    VirtualDisplays displays_;
    VirtualWindowServer windowServer_;
    VirtualApplications applications_;
    VirtualFiles files_;
    PictureFiles pictures_;
    VirtualProcesses processes_;
    VirtualInput input_;
    VirtualDesktop desktop_;
    VirtualScreenCapture screenCapture_;
};

} // namespace orv::platform
