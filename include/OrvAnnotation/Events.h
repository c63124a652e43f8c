#pragma once

#include "OrvAnnotation/Export.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orv {

/// What an event carries: signed 32-bit numbers, and data, by key.
using EventDictionary =
    std::map<std::string, std::variant<std::int32_t, std::vector<std::uint8_t>>, std::less<>>;

/// Posts the event with this short name, such as "toolboxEvent", under the active plug-in's name
/// for it. Its observers run on the calling thread, before this returns.
ORV_EXPORT void sendNotifyMeesage(std::string_view name, std::uint32_t wParam,
                                  std::uint32_t lParam);

/// The same with private data, which the observers find under "rParam"; null for none.
ORV_EXPORT void sendNotifyMeesageRes(std::string_view name, std::uint32_t wParam,
                                     std::uint32_t lParam, const std::vector<std::uint8_t> *rParam);

/// Posts "switchModeEvent": a mode of the session has changed. `ackFlag` says that the change
/// answers a request of the client. `sub` is carried only for the modes 1 and 2.
ORV_EXPORT void sendSwitchModeAckInfo(std::uint32_t mode, std::uint32_t sub, std::uint32_t toolbar,
                                      std::uint32_t show, bool extFlag, bool ackFlag);

/// 0 when the dictionary or the key is missing, or the value is no number.
[[nodiscard]] ORV_EXPORT std::int32_t getDictIntByKey(const EventDictionary *dictionary,
                                                      std::string_view key);
/// A copy; nothing when the dictionary or the key is missing, or the value is no data.
[[nodiscard]] ORV_EXPORT std::optional<std::vector<std::uint8_t>>
getDictDataByKey(const EventDictionary *dictionary, std::string_view key);
/// The value under "lParam".
[[nodiscard]] ORV_EXPORT std::int32_t getNotifyParam(const EventDictionary *dictionary);

} // namespace orv
