#pragma once

#include "platform/foundation/KeyedUnarchiver.h"
#include "platform/foundation/UserInfo.h"
#include "session/ToolTable.h"

#include <memory>
#include <optional>
#include <string>

namespace orv {

/// Reads "defaults.dat" of the application's private folder while the tools are built.
///
/// Thread   main thread, or the host's under the monitor.
/// Fails    a file that is missing, or can't be read, has no settings; the latter is logged.
class ToolSettingsReader {
public:
    /// Makes the folder if it is missing.
    ToolSettingsReader();

    /// Nothing for a tool without an entry.
    [[nodiscard]] std::optional<ToolTraits> savedSettingsForTool(const std::string &title);

private:
    platform::ClassTable noClasses_;
    std::unique_ptr<platform::KeyedUnarchiver> unarchiver_;
};

/// One keyed archive: a dictionary of the three indexes for each drawing tool.
[[nodiscard]] platform::Data encodeToolSettings(const ToolTable &tools);

/// Writes it. A file that can't be written is logged.
void saveToolSettings(const ToolTable &tools);

} // namespace orv
