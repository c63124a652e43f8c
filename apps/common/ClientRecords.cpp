#include "common/ClientRecords.h"

#include "common/Arguments.h"
#include "common/ScriptError.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace orv::apps {

namespace {

constexpr double kMoveSeconds = 0.016;
constexpr double kLongestStroke = 60.0;
constexpr std::size_t kMostPoints = 10'000;
constexpr double kLargestCoordinate = 65535.0;

// Numbers of mouse records and of what the mouse did.
constexpr std::uint32_t kMouse1 = 1;
constexpr std::uint32_t kMouse2 = 0xEFFD;
constexpr std::uint32_t kPress = 5;
constexpr std::uint32_t kRelease = 6;
constexpr std::uint32_t kMove = 10;

constexpr std::uint16_t kFirstOfSecondGeneration = 16;
constexpr std::uint16_t kLastOfSecondGeneration = 18;

struct ClientPoint {
    double x = 0.0;
    double y = 0.0;
};

stCommand_mgs mouseRecord(std::uint16_t pluginID, std::uint32_t action, ClientPoint point)
{
    constexpr unsigned halfWord = 16;
    const auto x = static_cast<std::uint32_t>(std::lround(point.x));
    const auto y = static_cast<std::uint32_t>(std::lround(point.y));
    stCommand_mgs record;
    record.pluginID = pluginID;
    record.wparam = isSecondGeneration(pluginID) ? kMouse2 : kMouse1;
    record.lparam = action;
    // A first word of 0 says that the second one carries both coordinates.
    putBigEndian32(record, 0, x);
    putBigEndian32(record, 4, x == 0 ? y << halfWord : y);
    return record;
}

std::vector<ClientPoint> strokePoints(const Json &list)
{
    const std::string name = "stroke.points";
    if (!list.is_array() || list.size() < 2 || list.size() > kMostPoints) {
        throw ScriptError(fmt::format("\"{}\" is not a list of 2 to {} points", name, kMostPoints));
    }
    std::vector<ClientPoint> points;
    for (const Json &item : list) {
        const auto xy = asNumbers(item, name, 2);
        for (const double value : xy) {
            if (!(value >= 0.0 && value <= kLargestCoordinate)) {
                throw ScriptError(fmt::format("\"{}\" has a coordinate outside 0 to {}: {}", name,
                                              kLargestCoordinate, value));
            }
        }
        points.push_back({xy[0], xy[1]});
    }
    return points;
}

double length(ClientPoint from, ClientPoint to)
{
    return std::hypot(to.x - from.x, to.y - from.y);
}

} // namespace

bool isSecondGeneration(std::uint16_t pluginID)
{
    return pluginID >= kFirstOfSecondGeneration && pluginID <= kLastOfSecondGeneration;
}

void putBigEndian32(stCommand_mgs &record, std::size_t offset, std::uint32_t value)
{
    constexpr unsigned bitsOfAByte = 8;
    for (unsigned i = 0; i < sizeof value; ++i) {
        record.ext.at(offset + i) =
            static_cast<std::uint8_t>(value >> (bitsOfAByte * (sizeof value - 1 - i)));
    }
}

stCommand_mgs clientRecord(const Json &argument, std::uint16_t defaultPluginID)
{
    if (argument.is_string()) {
        const auto bytes = asBytes(argument, "record", sizeof(stCommand_mgs));
        if (argument.get_ref<const std::string &>().size() != 2 * bytes.size()) {
            throw ScriptError("\"record\" is not 128 hexadecimal digits");
        }
        return recordFromBytes(
            std::span<const std::uint8_t, sizeof(stCommand_mgs)>(bytes.data(), bytes.size()));
    }
    checkKeys(argument, "record", {"pluginID", "wparam", "lparam", "ext"});
    stCommand_mgs record;
    record.pluginID = defaultPluginID;
    if (const Json *pluginID = member(argument, "pluginID")) {
        record.pluginID = static_cast<std::uint16_t>(
            asInteger(*pluginID, "record.pluginID", 0, std::numeric_limits<std::uint16_t>::max()));
    }
    record.wparam = asWord(required(argument, "wparam", "record.wparam"), "record.wparam");
    record.lparam = asWord(required(argument, "lparam", "record.lparam"), "record.lparam");
    if (const Json *ext = member(argument, "ext")) {
        const auto bytes = asBytes(*ext, "record.ext", record.ext.size());
        std::copy(bytes.begin(), bytes.end(), record.ext.begin());
    }
    return record;
}

stCommand_mgs recordFromBytes(std::span<const std::uint8_t, sizeof(stCommand_mgs)> bytes)
{
    stCommand_mgs record;
    std::memcpy(&record, bytes.data(), bytes.size());
    return record;
}

std::string hexText(std::span<const std::uint8_t> bytes)
{
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        fmt::format_to(std::back_inserter(text), "{:02x}", byte);
    }
    return text;
}

std::string hexText(const stCommand_mgs &record)
{
    std::array<std::uint8_t, sizeof record> bytes{};
    std::memcpy(bytes.data(), &record, bytes.size());
    return hexText(std::span<const std::uint8_t>(bytes));
}

std::vector<TimedRecord> strokeRecords(const Json &argument, std::uint16_t pluginID)
{
    checkKeys(argument, "stroke", {"points", "seconds"});
    const auto points = strokePoints(required(argument, "points", "stroke.points"));
    const double seconds =
        asNumber(required(argument, "seconds", "stroke.seconds"), "stroke.seconds");
    if (!(seconds >= 0.0 && seconds <= kLongestStroke)) {
        throw ScriptError(
            fmt::format("\"stroke.seconds\" is outside 0 to {}: {}", kLongestStroke, seconds));
    }
    double whole = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        whole += length(points[i - 1], points[i]);
    }
    std::vector<TimedRecord> records{{0.0, mouseRecord(pluginID, kPress, points.front())}};
    double before = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double own = length(points[i - 1], points[i]);
        const double share =
            whole > 0.0 ? own / whole : 1.0 / static_cast<double>(points.size() - 1);
        const long steps = std::max(1L, std::lround(share * seconds / kMoveSeconds));
        for (long step = 1; step <= steps; ++step) {
            const double part = static_cast<double>(step) / static_cast<double>(steps);
            const ClientPoint at{std::lerp(points[i - 1].x, points[i].x, part),
                                 std::lerp(points[i - 1].y, points[i].y, part)};
            records.push_back(
                {(before + share * part) * seconds, mouseRecord(pluginID, kMove, at)});
        }
        before += share;
    }
    records.push_back({seconds, mouseRecord(pluginID, kRelease, points.back())});
    return records;
}

} // namespace orv::apps
