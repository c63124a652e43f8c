#include "orv-replay/ReplayCommands.h"

#include "OrvAnnotation/Events.h"
#include "common/Arguments.h"
#include "common/ClientRecords.h"
#include "common/Folders.h"
#include "common/ScriptError.h"
#include "common/TypedText.h"
#include "orv-replay/ControllerCalls.h"
#include "orv-replay/InputCommands.h"
#include "orv-replay/ReplaySession.h"
#include "orv-replay/StateReport.h"
#include "platform/raster/Pictures.h"

#include <fmt/format.h>

#include <cstring>
#include <filesystem>
#include <map>
#include <string_view>

namespace orv::apps {

namespace {

// Longer waits would never end: something fires every minute.
constexpr double kLongestWait = 1e7;

void runHost(ReplaySession &session, const Json &line)
{
    session.begin(line.at("host"));
}

void runRecord(ReplaySession &session, const Json &line)
{
    ReplayHost &host = session.host();
    const stCommand_mgs record = clientRecord(line.at("record"), host.plugin());
    if (AnnotationController *controller = host.controller()) {
        controller->CommandClient2App(record);
    }
}

void handOver(ReplayHost &host, const std::vector<TimedRecord> &records)
{
    platform::VirtualMainThread &mainThread = host.platform().mainThread();
    const double start = mainThread.now();
    for (const TimedRecord &timed : records) {
        mainThread.advance(start + timed.seconds - mainThread.now());
        if (AnnotationController *controller = host.controller()) {
            controller->CommandClient2App(timed.record);
        }
    }
}

void runStroke(ReplaySession &session, const Json &line)
{
    ReplayHost &host = session.host();
    handOver(host, strokeRecords(line.at("stroke"), host.plugin()));
}

void runType(ReplaySession &session, const Json &line)
{
    ReplayHost &host = session.host();
    handOver(host, typedRecords(line.at("type"), host.plugin()));
}

void runPacket(ReplaySession &session, const Json &line)
{
    stDataPacket packet;
    const auto bytes = asBytes(line.at("packet"), "packet", sizeof packet);
    std::memcpy(&packet, bytes.data(), bytes.size());
    if (AnnotationController *controller = session.host().controller()) {
        controller->DataClient2App(packet);
    }
}

void runWait(ReplaySession &session, const Json &line)
{
    ReplayHost &host = session.host();
    const double seconds = asNumber(line.at("wait"), "wait");
    if (!(seconds >= 0.0 && seconds <= kLongestWait)) {
        throw ScriptError(fmt::format("\"wait\" is outside 0 to {}: {}", kLongestWait, seconds));
    }
    host.platform().mainThread().advance(seconds);
}

void runPost(ReplaySession & /*session*/, const Json &line)
{
    const Json &argument = line.at("post");
    checkKeys(argument, "post", {"event", "wParam", "lParam"});
    const auto word = [&argument](const char *key) {
        const Json *value = member(argument, key);
        return value == nullptr ? 0U : asWord(*value, fmt::format("post.{}", key));
    };
    const std::string event = asText(required(argument, "event", "post.event"), "post.event");
    sendNotifyMeesage(event, word("wParam"), word("lParam"));
}

void runDisplays(ReplaySession &session, const Json &line)
{
    session.host().platform().displays().setDisplays(
        screens(scriptDisplays(line.at("displays"), "displays")));
}

void runFront(ReplaySession &session, const Json &line)
{
    const ScriptApplication front = scriptApplication(line.at("front"), "front");
    session.host().platform().applications().setFront({front.pid, front.bundle});
}

void runRunning(ReplaySession &session, const Json &line)
{
    session.host().platform().applications().setRunning(asTexts(line.at("running"), "running"));
}

void runAccessibility(ReplaySession &session, const Json &line)
{
    session.host().platform().applications().setAccessibility(
        asBool(line.at("accessibility"), "accessibility"));
}

void runFreeBytes(ReplaySession &session, const Json &line)
{
    session.host().platform().files().setFreeBytes(byteCount(line.at("freeBytes"), "freeBytes"));
}

void runAge(ReplaySession &session, const Json &line)
{
    ReplayHost &host = session.host();
    const Json &argument = line.at("age");
    checkKeys(argument, "age", {"file", "seconds"});
    const std::string file = asText(required(argument, "file", "age.file"), "age.file");
    const double seconds = asNumber(required(argument, "seconds", "age.seconds"), "age.seconds");
    const std::string path = pathBelow(host.folders().home, file);
    if (path.empty()) {
        throw ScriptError(fmt::format(R"("age.file" is not below the home folder: "{}")", file));
    }
    if (!host.platform().files().setAge(path, seconds)) {
        throw ScriptError(fmt::format(R"("age.file" cannot be given that age: "{}")", file));
    }
}

void runScreenshot(ReplaySession &session, const Json &line)
{
    ReplayHost &host = session.host();
    const std::string file = asText(line.at("screenshot"), "screenshot");
    const Json *display = member(line, "display");
    const platform::DisplayID id = display != nullptr ? asWord(*display, "display")
                                                      : host.platform().displays().mainDisplayID();
    const std::string path = pathBelow(host.folders().out, file);
    if (path.empty()) {
        throw ScriptError(
            fmt::format(R"("screenshot" is not below the output folder: "{}")", file));
    }
    const platform::ImagePtr picture = host.platform().desktop().composePicture(id);
    if (!picture) {
        throw ScriptError(fmt::format("there is no display {}", id));
    }
    const std::string folder = std::filesystem::path(path).parent_path().string();
    if (!host.platform().files().createFolder(folder) || !platform::writePng(path, *picture)) {
        throw ScriptError(fmt::format("\"screenshot\" cannot be written as {}", path));
    }
}

void runState(ReplaySession &session, const Json &line)
{
    ReplayHost &host = session.host();
    if (!asBool(line.at("state"), "state")) {
        throw ScriptError("\"state\" is not true");
    }
    session.output().write("state", stateReport(host));
}

void runNote(ReplaySession &session, const Json &line)
{
    session.output().write("note", asText(line.at("note"), "note"));
}

const std::map<std::string, ReplayCommand, std::less<>> &commands()
{
    static const std::map<std::string, ReplayCommand, std::less<>> table{
        {"host", runHost},           {"record", runRecord},   {"stroke", runStroke},
        {"type", runType},           {"packet", runPacket},   {"wait", runWait},
        {"mouse", runMouse},         {"key", runKey},         {"click", runClick},
        {"call", runCall},           {"post", runPost},       {"displays", runDisplays},
        {"front", runFront},         {"running", runRunning}, {"accessibility", runAccessibility},
        {"freeBytes", runFreeBytes}, {"age", runAge},         {"screenshot", runScreenshot},
        {"state", runState},         {"note", runNote},
    };
    return table;
}

} // namespace

ReplayCommand replayCommand(const std::string &name)
{
    const auto found = commands().find(name);
    if (found == commands().end()) {
        throw ScriptError(fmt::format("unknown command \"{}\"", name));
    }
    return found->second;
}

} // namespace orv::apps
