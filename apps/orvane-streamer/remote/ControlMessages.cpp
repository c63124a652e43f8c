#include "orvane-streamer/remote/ControlMessages.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstddef>
#include <limits>
#include <utility>

namespace orv::apps {

namespace {

using Json = nlohmann::json;
using Event = Json::parse_event_t;

constexpr std::size_t kLongestName = 64;

// Characters of Unicode, or those of Latin-1 as UTF-8 has them.
constexpr unsigned char kFirstVisible = 0x20;
constexpr unsigned char kDelete = 0x7F;
constexpr unsigned char kFollowingMask = 0xC0;
constexpr unsigned char kFollowing = 0x80;

/// Counts in valid UTF-8.
std::size_t charactersIn(std::string_view text)
{
    std::size_t count = 0;
    for (const char byte : text) {
        count += (static_cast<unsigned char>(byte) & kFollowingMask) != kFollowing ? 1 : 0;
    }
    return count;
}

/// Controls, or separators of lines: what would break a line of the log.
bool breaksLines(std::string_view text)
{
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte < kFirstVisible || byte == kDelete) {
            return true;
        }
    }
    constexpr std::array<std::string_view, 2> separators{"\xE2\x80\xA8", "\xE2\x80\xA9"};
    for (const std::string_view separator : separators) {
        if (text.find(separator) != std::string_view::npos) {
            return true;
        }
    }
    for (std::size_t at = text.find('\xC2'); at != std::string_view::npos;
         at = text.find('\xC2', at + 1)) {
        constexpr unsigned char lastControl = 0x9F;
        if (at + 1 < text.size() && static_cast<unsigned char>(text[at + 1]) <= lastControl) {
            return true;
        }
    }
    return false;
}

/// An object of plain values, none of its keys twice; nothing for any other text.
std::optional<Json> plainObject(std::string_view text)
{
    // A zero byte would end the text for the parser.
    bool isPlain = text.find('\0') == std::string_view::npos;
    std::size_t keys = 0;
    const auto watch = [&](int depth, Event event, const Json & /*value*/) {
        isPlain = isPlain &&
                  (depth == 0 || (event != Event::object_start && event != Event::array_start));
        keys += event == Event::key ? 1 : 0;
        return isPlain;
    };
    Json object = Json::parse(text, watch, false);
    if (!isPlain || !object.is_object() || object.size() != keys) {
        return std::nullopt;
    }
    return object;
}

/// A number of 1 to 32 bits that is not 0.
std::optional<std::uint32_t> numberIn(const Json &object, const char *key)
{
    const auto number = object.find(key);
    if (number == object.end() || !number->is_number_unsigned()) {
        return std::nullopt;
    }
    const auto value = number->get<std::uint64_t>();
    if (value == 0 || value > std::numeric_limits<std::uint32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(value);
}

std::optional<ControlMessage> hello(const Json &object)
{
    const auto name = object.find("name");
    if (name == object.end() || !name->is_string()) {
        return std::nullopt;
    }
    const auto &text = name->get_ref<const std::string &>();
    if (text.empty() || charactersIn(text) > kLongestName || breaksLines(text)) {
        return std::nullopt;
    }
    return control::Hello{text};
}

std::optional<ControlMessage> withNumber(const std::string &type, const Json &object)
{
    if (type == "shown") {
        const auto frame = numberIn(object, "frame");
        return frame ? std::optional<ControlMessage>(control::Shown{*frame}) : std::nullopt;
    }
    const auto to = numberIn(object, "to");
    if (to && type == "givePen") {
        return control::GivePen{*to};
    }
    if (to && type == "refusePen") {
        return control::RefusePen{*to};
    }
    return std::nullopt;
}

Json displayObject(const char *type, const RemoteDisplay &display)
{
    return {{"type", type},
            {"width", display.width},
            {"height", display.height},
            {"scale", display.scale}};
}

} // namespace

std::optional<ControlMessage> controlMessage(std::string_view text)
{
    const auto object = plainObject(text);
    const auto type = object ? object->find("type") : Json::const_iterator();
    if (!object || type == object->end() || !type->is_string()) {
        return std::nullopt;
    }
    const auto &name = type->get_ref<const std::string &>();
    if (object->size() == 1) {
        if (name == "askPen") {
            return control::AskPen{};
        }
        return name == "dropPen" ? std::optional<ControlMessage>(control::DropPen{}) : std::nullopt;
    }
    if (object->size() != 2) {
        return std::nullopt;
    }
    return name == "hello" ? hello(*object) : withNumber(name, *object);
}

std::string welcomeText(ClientID client, std::uint16_t plugin, const RemoteDisplay &display)
{
    Json object = displayObject("welcome", display);
    object["id"] = client;
    object["plugin"] = plugin;
    return object.dump();
}

std::string displayText(const RemoteDisplay &display)
{
    return displayObject("display", display).dump();
}

std::string clientsText(const PenHolder &people)
{
    Json list = Json::array();
    for (const RemotePerson &person : people.people()) {
        list.push_back({{"id", person.id}, {"name", person.name}});
    }
    return Json{{"type", "clients"}, {"pen", people.holder()}, {"list", std::move(list)}}.dump();
}

std::string penAskedText(const RemotePerson &asker)
{
    return Json{{"type", "penAsked"}, {"by", asker.id}, {"name", asker.name}}.dump();
}

std::string penRefusedText()
{
    return Json{{"type", "penRefused"}}.dump();
}

} // namespace orv::apps
