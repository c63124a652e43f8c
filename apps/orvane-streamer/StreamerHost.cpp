#include "orvane-streamer/StreamerHost.h"

#include <fmt/format.h>

#include <atomic>
#include <cstring>
#include <utility>

namespace orv::apps {

namespace {

std::atomic<StreamerHost *> running = nullptr;

constexpr std::int32_t kWarning = 3;

} // namespace

StreamerHost::StreamerHost(const HostSettings &settings, ScreenLog &log) : log_(log), platform_({})
{
    running = this;
    if (settings.senders) {
        controller_.SetClientCommandCHSender(&StreamerHost::sendCommand);
        controller_.SetClientDataCHSender(&StreamerHost::sendData);
    }
    if (settings.delegate) {
        controller_.setDelegate(this);
    }
    const DesktopPlatform::Display display = platform_.mainDisplay();
    applyHostSettings(settings, controller_, display.displayID, {display.width, display.height});
}

StreamerHost::~StreamerHost()
{
    controller_.setDelegate(nullptr);
    running = nullptr;
}

void StreamerHost::setListener(Listener listener)
{
    const std::lock_guard lock(listenerMutex_);
    listener_ = std::move(listener);
}

void StreamerHost::end()
{
    platform_.post([this] {
        controller_.RecoveryDesktop();
        platform_.quit(0);
    });
}

int StreamerHost::sendCommand(const void *bytes, std::size_t length, std::uint32_t /*pluginID*/)
{
    if (StreamerHost *host = running) {
        host->commandSent(bytes, length);
    }
    return 0;
}

int StreamerHost::sendData(const void *bytes, std::size_t length, std::uint32_t /*pluginID*/)
{
    if (StreamerHost *host = running) {
        host->dataSent(bytes, length);
    }
    return 0;
}

void StreamerHost::commandSent(const void *bytes, std::size_t length)
{
    stCommand_mgs record;
    if (length != sizeof record) {
        log_.write(fmt::format("a command of {} bytes, which is no record", length));
        return;
    }
    std::memcpy(&record, bytes, sizeof record);
    const std::lock_guard lock(listenerMutex_);
    if (listener_.record) {
        listener_.record(record);
    }
}

void StreamerHost::dataSent(const void *bytes, std::size_t length)
{
    const std::lock_guard lock(listenerMutex_);
    if (listener_.package) {
        listener_.package({static_cast<const std::uint8_t *>(bytes), length});
    }
}

void StreamerHost::annotation(AnnotationController & /*controller*/, std::int32_t level,
                              const std::string &outputLog)
{
    if (level >= kWarning) {
        log_.write("log: " + outputLog);
    }
}

} // namespace orv::apps
