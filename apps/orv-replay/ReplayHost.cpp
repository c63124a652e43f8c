#include "orv-replay/ReplayHost.h"

#include "common/ClientRecords.h"
#include "common/Folders.h"
#include "common/ScriptError.h"
#include "platform/foundation/AtomicFile.h"

#include <fmt/format.h>

#include <span>

namespace orv::apps {

namespace {

ReplayHost *running = nullptr;

platform::VirtualSettings virtualSettings(const HostSettings &settings, const std::string &home)
{
    platform::VirtualSettings desk;
    desk.home = home;
    desk.resources = resourceFolder();
    desk.displays = screens(settings.displays);
    const auto clock = platform::wallClockFromText(settings.clock);
    if (!clock) {
        throw ScriptError(fmt::format(
            R"("host.clock" is no moment such as "2026-01-02 03:04:05": "{}")", settings.clock));
    }
    desk.wallClock = *clock;
    desk.bundleIdentifier = settings.bundle;
    desk.front = {settings.front.pid, settings.front.bundle};
    desk.running = settings.running;
    desk.accessibility = settings.accessibility;
    desk.freeBytes = settings.freeBytes;
    desk.desktop = settings.desktop;
    return desk;
}

ScreenDimension mainSize(const HostSettings &settings)
{
    if (settings.displays.empty()) {
        return {};
    }
    return {settings.displays.front().width, settings.displays.front().height};
}

} // namespace

std::vector<platform::Screen> screens(const std::vector<ScriptDisplay> &displays)
{
    std::vector<platform::Screen> result;
    result.reserve(displays.size());
    for (const ScriptDisplay &display : displays) {
        result.push_back({display.id,
                          platform::Rect::make(display.x, display.y, display.width, display.height),
                          1.0});
    }
    return result;
}

ReplayHost::ReplayHost(const HostSettings &settings, ReplayFolders folders, bool quietLog,
                       OutputLines &output)
    : folders_(std::move(folders)), output_(output), quietLog_(quietLog),
      plugin_(static_cast<std::uint16_t>(settings.plugin)),
      platform_(virtualSettings(settings, folders_.home))
{
    output_.setClock([this] { return platform_.mainThread().now(); });
    connectHooks();
    platform::Platform::install(&platform_);
    running = this;
    controller_ = std::make_unique<AnnotationController>();
    if (settings.senders) {
        controller_->SetClientCommandCHSender(&ReplayHost::sendCommand);
        controller_->SetClientDataCHSender(&ReplayHost::sendData);
    }
    if (settings.delegate) {
        controller_->setDelegate(this);
    }
    applyHostSettings(settings, *controller_, platform_.displays().mainDisplayID(),
                      mainSize(settings));
}

ReplayHost::~ReplayHost()
{
    controller_.reset();
    running = nullptr;
    output_.setClock(nullptr);
}

int ReplayHost::sendCommand(const void *bytes, std::size_t length, std::uint32_t /*pluginID*/)
{
    if (running != nullptr) {
        running->output_.write(
            "sent", hexText(std::span(static_cast<const std::uint8_t *>(bytes), length)));
    }
    return 0;
}

int ReplayHost::sendData(const void *bytes, std::size_t length, std::uint32_t /*pluginID*/)
{
    if (running != nullptr) {
        running->writeData(bytes, length);
    }
    return 0;
}

void ReplayHost::writeData(const void *bytes, std::size_t length)
{
    const std::string name = fmt::format("data-{}.bin", ++dataFiles_);
    const std::string path = platform::joinPath(folders_.out, name);
    const std::span data(static_cast<const std::uint8_t *>(bytes), length);
    if (!platform_.files().createFolder(folders_.out) ||
        !platform::writeFileAtomically(path, data)) {
        failure_ = fmt::format("{} cannot be written", path);
        return;
    }
    output_.write("data", {{"bytes", length}, {"file", name}});
}

void ReplayHost::annotation(AnnotationController & /*controller*/, std::int32_t level,
                            const std::string &outputLog)
{
    if (!quietLog_) {
        output_.write("log", {{"level", level}, {"text", outputLog}});
    }
}

void ReplayHost::connectHooks()
{
    platform::VirtualHooks &hooks = platform_.hooks();
    hooks.systemLog = [this](const std::string &line) { output_.write("systemLog", line); };
    hooks.process = [this](const std::vector<std::string> &command) {
        output_.write("process", command);
    };
    hooks.script = [this](const std::string &text) { output_.write("script", text); };
    hooks.activate = [this](std::int32_t pid) { output_.write("activate", pid); };
    hooks.presentation = [this](std::uint32_t options) { output_.write("presentation", options); };
}

} // namespace orv::apps
