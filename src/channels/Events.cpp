#include "OrvAnnotation/Events.h"

#include "channels/AppConstants.h"
#include "channels/EventNames.h"
#include "platform/foundation/Monitor.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/ports/Applications.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

#include <type_traits>

namespace orv {

static_assert(std::is_same_v<EventDictionary, platform::UserInfo>,
              "an event's dictionary travels as a notification's user info");

namespace {

constexpr std::size_t kModeSwitchBytes = 52;
constexpr std::uint32_t kFlipchartMode = 1;
constexpr std::uint32_t kSnapshotMode = 2;

std::int32_t asSigned(std::uint32_t value)
{
    return static_cast<std::int32_t>(value);
}

} // namespace

std::string eventName(std::string_view shortName, std::uint32_t pluginID)
{
    const std::string bundle = platform::Platform::current().applications().mainBundleIdentifier();
    return fmt::format("{}.OrvAppAnnotation.{}.{:06d}", bundle, shortName, pluginID);
}

void sendNotifyMeesage(std::string_view name, std::uint32_t wParam, std::uint32_t lParam)
{
    sendNotifyMeesageRes(name, wParam, lParam, nullptr);
}

void sendNotifyMeesageRes(std::string_view name, std::uint32_t wParam, std::uint32_t lParam,
                          const std::vector<std::uint8_t> *rParam)
{
    const platform::Monitor::Hold hold;
    const AppConstants &constants = AppConstants::instance();
    EventDictionary dictionary{{"wParam", asSigned(wParam)},
                               {"lParam", asSigned(lParam)},
                               {"pidParam", constants.AppActPid()},
                               {"pluginIDParam", asSigned(constants.AppActUniqueID())}};
    if (rParam != nullptr) {
        dictionary.emplace("rParam", *rParam);
    }
    platform::NotificationCenter::local().post(eventName(name, constants.AppActUniqueID()),
                                               dictionary);
}

void sendSwitchModeAckInfo(std::uint32_t mode, std::uint32_t sub, std::uint32_t toolbar,
                           std::uint32_t show, bool extFlag, bool ackFlag)
{
    std::vector<std::uint8_t> bytes(kModeSwitchBytes);
    bytes[0] = static_cast<std::uint8_t>(show);
    if (mode == kFlipchartMode || mode == kSnapshotMode) {
        bytes[1] = static_cast<std::uint8_t>(sub);
    }
    bytes[2] = static_cast<std::uint8_t>(toolbar);
    const std::uint32_t flags = (show != 0 ? 4U : 0U) + (extFlag ? 1U : 0U) + (ackFlag ? 2U : 0U);
    sendNotifyMeesageRes("switchModeEvent", mode, flags, &bytes);
}

std::int32_t getDictIntByKey(const EventDictionary *dictionary, std::string_view key)
{
    if (dictionary == nullptr) {
        return 0;
    }
    const auto found = dictionary->find(key);
    const auto *number =
        found == dictionary->end() ? nullptr : std::get_if<std::int32_t>(&found->second);
    return number == nullptr ? 0 : *number;
}

std::optional<std::vector<std::uint8_t>> getDictDataByKey(const EventDictionary *dictionary,
                                                          std::string_view key)
{
    if (dictionary == nullptr) {
        return std::nullopt;
    }
    const auto found = dictionary->find(key);
    const auto *data = found == dictionary->end()
                           ? nullptr
                           : std::get_if<std::vector<std::uint8_t>>(&found->second);
    return data == nullptr ? std::nullopt : std::optional(*data);
}

std::int32_t getNotifyParam(const EventDictionary *dictionary)
{
    return getDictIntByKey(dictionary, "lParam");
}

} // namespace orv
