#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace orv::platform {

using Data = std::vector<std::uint8_t>;

/// What a notification carries: numbers and data by key.
using UserInfo = std::map<std::string, std::variant<std::int32_t, Data>, std::less<>>;

} // namespace orv::platform
