#pragma once

#include "platform/foundation/UserInfo.h"
#include "session/ToolTable.h"

#include <cstdint>
#include <map>
#include <string>

namespace orv {

/// What was chosen for each tool, by the title of its button.
using ToolSettings = std::map<std::string, ToolTraits>;

/// One keyed archive: a dictionary of the three indexes for each drawing tool.
[[nodiscard]] platform::Data encodeToolSettings(const ToolTable &tools);

/// The settings of these titles that the archive holds. Throws `platform::Exception` for bytes that
/// are no such archive.
[[nodiscard]] ToolSettings decodeToolSettings(const platform::Data &bytes, const ToolTable &tools);

/// Reads "defaults.dat" of the application's private folder onto the tools. A file that is missing
/// or can't be read leaves them as they are; the latter is logged.
void restoreToolSettings(const ToolTable &tools);

/// Writes it. A file that can't be written is logged.
void saveToolSettings(const ToolTable &tools);

} // namespace orv
