#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orv {

/// The full name of an event: the host's bundle identifier with ".OrvAppAnnotation", the short
/// name, and the plug-in ID in at least six digits. Built afresh at each use.
[[nodiscard]] std::string eventName(std::string_view shortName, std::uint32_t pluginID);

} // namespace orv
