#include "platform/virtual/VirtualPlatform.h"

#include "platform/raster/GuiApplication.h"

namespace orv::platform {

VirtualPlatform::VirtualPlatform(const VirtualSettings &settings)
    : systemLog_(hooks_), mainThread_(settings.wallClock),
      displays_(mainThread_, settings.displays), windowServer_(mainThread_, displays_),
      applications_(settings, hooks_),
      files_(mainThread_, settings.home, settings.resources, settings.freeBytes),
      processes_(hooks_), input_(mainThread_, displays_, windowServer_),
      desktop_(displays_, windowServer_, settings.desktop),
      screenCapture_(displays_, windowServer_, desktop_)
{
    ensureGuiApplication();
    mainThread_.setErrorSink([this](const std::string &text) { systemLog_.write(text); });
}

VirtualPlatform::~VirtualPlatform()
{
    mainThread_.shutdown();
    if (Platform::isInstalled() && &Platform::current() == this) {
        Platform::install(nullptr);
    }
}

} // namespace orv::platform
