#include "platform/ports/Platform.h"

#include "platform/foundation/Exception.h"

#include <atomic>

namespace orv::platform {

namespace {

std::atomic<Platform *> &installed()
{
    static std::atomic<Platform *> platform{nullptr};
    return platform;
}

} // namespace

Platform &Platform::current()
{
    Platform *platform = installed().load();
    if (platform == nullptr) {
        throw Exception("no platform is installed: Platform::install comes before anything else");
    }
    return *platform;
}

bool Platform::isInstalled()
{
    return installed().load() != nullptr;
}

void Platform::install(Platform *platform)
{
    installed().store(platform);
}

} // namespace orv::platform
