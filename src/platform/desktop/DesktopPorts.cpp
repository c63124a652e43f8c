#include "platform/desktop/DesktopPorts.h"

namespace orv::platform {

DesktopPorts::DesktopPorts(const std::string &bundleIdentifier, const std::string &resourceFolder)
    : files_(resourceFolder),
      mainThread_([this](const std::string &error) { systemLog_.write(error); }),
      displays_(x_, mainThread_), front_(x_), applications_(x_, front_, bundleIdentifier),
      windowServer_(x_, mainThread_, displays_, front_, bundleIdentifier),
      screenCapture_(x_, displays_, windowServer_)
{
    displays_.setChanged([this] { windowServer_.displaysChanged(); });
    mainThread_.setBeforeBlock([this] { windowServer_.displayIfNeeded(); });
}

} // namespace orv::platform
