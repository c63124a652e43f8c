#include "common/HostSettings.h"

#include "common/Arguments.h"
#include "common/ScriptError.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace orv::apps {

namespace {

constexpr double kMostBytes = 9e18;

void readHostKeys(const Json &argument, HostSettings &settings)
{
    constexpr auto largest = std::numeric_limits<std::uint16_t>::max();
    if (const Json *plugin = member(argument, "plugin")) {
        settings.plugin = static_cast<std::uint32_t>(asInteger(*plugin, "host.plugin", 0, largest));
    }
    if (const Json *device = member(argument, "device")) {
        settings.device = asText(*device, "host.device");
    }
    if (const Json *displayID = member(argument, "displayID")) {
        settings.displayID = asWord(*displayID, "host.displayID");
    }
    if (const Json *client = member(argument, "client")) {
        settings.client = screenDimension(*client, "host.client");
    }
    if (const Json *ignoreMouse = member(argument, "ignoreMouse")) {
        settings.ignoreMouse = static_cast<std::int32_t>(asWord(*ignoreMouse, "host.ignoreMouse"));
    }
    if (const Json *debugDict = member(argument, "debugDict")) {
        settings.debugDict = textDictionary(*debugDict, "host.debugDict");
    }
}

void readFlags(const Json &argument, HostSettings &settings)
{
    const auto flag = [&argument](const char *key, bool &place) {
        if (const Json *value = member(argument, key)) {
            place = asBool(*value, fmt::format("host.{}", key));
        }
    };
    flag("debug", settings.debug);
    flag("delegate", settings.delegate);
    flag("senders", settings.senders);
    flag("accessibility", settings.accessibility);
}

void readDesk(const Json &argument, HostSettings &settings)
{
    const auto text = [&argument](const char *key, std::string &place) {
        if (const Json *value = member(argument, key)) {
            place = asText(*value, fmt::format("host.{}", key));
        }
    };
    text("bundle", settings.bundle);
    text("clock", settings.clock);
    text("desktop", settings.desktop);
    if (const Json *displays = member(argument, "displays")) {
        settings.displays = scriptDisplays(*displays, "host.displays");
    }
    if (const Json *front = member(argument, "front")) {
        settings.front = scriptApplication(*front, "host.front");
    }
    if (const Json *running = member(argument, "running")) {
        settings.running = asTexts(*running, "host.running");
    }
    if (const Json *freeBytes = member(argument, "freeBytes")) {
        settings.freeBytes = byteCount(*freeBytes, "host.freeBytes");
    }
}

} // namespace

HostSettings hostSettings(const Json &argument)
{
    checkKeys(argument, "host",
              {"plugin", "device", "displays", "displayID", "client", "ignoreMouse", "debug",
               "debugDict", "delegate", "senders", "bundle", "front", "running", "accessibility",
               "clock", "freeBytes", "desktop"});
    HostSettings settings;
    readHostKeys(argument, settings);
    readFlags(argument, settings);
    readDesk(argument, settings);
    return settings;
}

std::vector<ScriptDisplay> scriptDisplays(const Json &value, const std::string &name)
{
    // All bits set stands for a window without a display.
    constexpr std::int64_t largestID = 0xFFFFFFFE;
    if (!value.is_array()) {
        throw ScriptError(fmt::format("\"{}\" is not a list of displays", name));
    }
    std::vector<ScriptDisplay> displays;
    for (const Json &item : value) {
        checkKeys(item, name, {"id", "frame"});
        const auto frame = asNumbers(required(item, "frame", name + ".frame"), name + ".frame", 4);
        if (!(frame[2] >= 1.0 && frame[3] >= 1.0 && frame[2] <= 16384.0 && frame[3] <= 16384.0)) {
            throw ScriptError(fmt::format("\"{}.frame\" has a side outside 1 to 16384", name));
        }
        const auto id = static_cast<std::uint32_t>(
            asInteger(required(item, "id", name + ".id"), name + ".id", 1, largestID));
        if (std::any_of(displays.begin(), displays.end(),
                        [id](const ScriptDisplay &other) { return other.id == id; })) {
            throw ScriptError(fmt::format("\"{}\" has two displays of the id {}", name, id));
        }
        displays.push_back({id, frame[0], frame[1], frame[2], frame[3]});
    }
    return displays;
}

ScriptApplication scriptApplication(const Json &value, const std::string &name)
{
    checkKeys(value, name, {"pid", "bundle"});
    ScriptApplication application;
    application.pid =
        static_cast<std::int32_t>(asInteger(required(value, "pid", name + ".pid"), name + ".pid", 0,
                                            std::numeric_limits<std::int32_t>::max()));
    if (const Json *bundle = member(value, "bundle")) {
        application.bundle = asText(*bundle, name + ".bundle");
    }
    return application;
}

std::uint64_t byteCount(const Json &value, const std::string &name)
{
    const double bytes = asNumber(value, name);
    if (!(bytes >= 0.0 && bytes <= kMostBytes)) {
        throw ScriptError(fmt::format("\"{}\" is outside 0 to {}: {}", name, kMostBytes, bytes));
    }
    return static_cast<std::uint64_t>(bytes);
}

std::map<std::string, std::string> textDictionary(const Json &value, const std::string &name)
{
    if (!value.is_object()) {
        throw ScriptError(fmt::format("\"{}\" is not an object of texts", name));
    }
    std::map<std::string, std::string> dictionary;
    for (const auto &[key, text] : value.items()) {
        dictionary[key] = asText(text, fmt::format("{}.{}", name, key));
    }
    return dictionary;
}

ScreenDimension screenDimension(const Json &value, const std::string &name)
{
    const auto size = asNumbers(value, name, 2);
    return {size[0], size[1]};
}

void applyHostSettings(const HostSettings &settings, AnnotationController &controller,
                       std::uint32_t mainDisplay, ScreenDimension mainSize)
{
    controller.SetActiveOpt(0, settings.plugin);
    if (settings.device) {
        controller.setDeviceName(*settings.device);
    }
    controller.setM_dpID(settings.displayID.value_or(mainDisplay));
    controller.setM_clientDimension(settings.client.value_or(mainSize));
    controller.setIsIgnoreMouseEvent(settings.ignoreMouse);
    controller.setDebug(settings.debug);
    if (!settings.debugDict.empty()) {
        controller.setDebugDict(&settings.debugDict);
    }
}

} // namespace orv::apps
