#pragma once

#include <string>
#include <string_view>

namespace orv::platform {

/// A key as it stands in an object of the file: one that begins as the archive's own keys do gets
/// a second sign in front.
[[nodiscard]] inline std::string archiveKey(std::string_view key)
{
    return (key.starts_with('$') ? "$" : "") + std::string(key);
}

} // namespace orv::platform
