#include "orv-replay/InputCommands.h"

#include "common/Arguments.h"
#include "common/ScriptError.h"
#include "orv-replay/ReplaySession.h"
#include "orv-replay/ViewFinder.h"
#include "platform/foundation/TextConversion.h"

#include <fmt/format.h>

#include <limits>
#include <map>
#include <string>

namespace orv::apps {

namespace {

using platform::EventType;
using Kinds = std::map<std::string, EventType, std::less<>>;

EventType kindOf(const Json &value, const std::string &name, const Kinds &kinds)
{
    const std::string kind = asText(value, name);
    const auto found = kinds.find(kind);
    if (found == kinds.end()) {
        throw ScriptError(fmt::format(R"("{}" has the unknown kind "{}")", name, kind));
    }
    return found->second;
}

std::uint64_t flagsOf(const Json &line)
{
    const Json *flags = member(line, "flags");
    return flags == nullptr ? 0
                            : static_cast<std::uint64_t>(asInteger(
                                  *flags, "flags", 0, std::numeric_limits<std::int64_t>::max()));
}

} // namespace

void runMouse(ReplaySession &session, const Json &line)
{
    static const Kinds kinds{
        {"down", EventType::leftMouseDown},       {"drag", EventType::leftMouseDragged},
        {"up", EventType::leftMouseUp},           {"move", EventType::mouseMoved},
        {"rightdown", EventType::rightMouseDown}, {"rightdrag", EventType::rightMouseDragged},
        {"rightup", EventType::rightMouseUp},
    };
    ReplayHost &host = session.host();
    const EventType kind = kindOf(line.at("mouse"), "mouse", kinds);
    const auto at = asNumbers(required(line, "at", "at"), "at", 2);
    host.platform().input().sendMouse(kind, {at[0], at[1]}, flagsOf(line));
}

void runKey(ReplaySession &session, const Json &line)
{
    static const Kinds kinds{
        {"down", EventType::keyDown}, {"up", EventType::keyUp}, {"flags", EventType::flagsChanged}};
    ReplayHost &host = session.host();
    const EventType kind = kindOf(line.at("key"), "key", kinds);
    const auto code = asInteger(required(line, "code", "code"), "code", 0,
                                std::numeric_limits<std::uint16_t>::max());
    const Json *characters = member(line, "characters");
    const std::string text = characters == nullptr ? "" : asText(*characters, "characters");
    host.platform().input().sendKey(kind, static_cast<std::uint16_t>(code),
                                    platform::utf16FromUtf8(text), flagsOf(line));
}

void runClick(ReplaySession &session, const Json &line)
{
    ReplayHost &host = session.host();
    const platform::Point middle = middleOfView(host, asText(line.at("click"), "click"));
    host.platform().input().sendMouse(EventType::leftMouseDown, middle);
    host.platform().mainThread().drain();
    host.platform().input().sendMouse(EventType::leftMouseUp, middle);
}

} // namespace orv::apps
