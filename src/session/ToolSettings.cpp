#include "session/ToolSettings.h"

#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"
#include "platform/ports/Files.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

namespace orv {

namespace {

// Seventeen tools of three numbers each are far below this.
constexpr std::uint64_t kLargestSettings = 1U << 20U;

std::string settingsPath()
{
    return platform::joinPath(AppConstants::instance().DefaultAppDataPath, "defaults.dat");
}

std::int32_t indexOf(const platform::ArchiveNode &dictionary, const char *key)
{
    const auto number = dictionary.find(key);
    return number ? static_cast<std::int32_t>(number->asInt()) : 0;
}

void logUnreadable(const std::string &why)
{
    logLine(4, fmt::format("{} can't be read: {}", settingsPath(), why));
}

} // namespace

platform::Data encodeToolSettings(const ToolTable &tools)
{
    platform::KeyedArchiver archiver;
    for (const auto &[title, tool] : tools) {
        if (tool->transient()) {
            continue;
        }
        archiver.encodeDictionary(title, [&tool = tool](platform::ArchiveDictionary &dictionary) {
            dictionary.setInt("color", tool->primaryTraitIndex());
            dictionary.setInt("size", tool->secondaryTraitIndex());
            dictionary.setInt("style", tool->tertiaryTraitIndex());
        });
    }
    return archiver.finishEncoding();
}

ToolSettingsReader::ToolSettingsReader()
{
    platform::Files &files = platform::Platform::current().files();
    files.createFolder(AppConstants::instance().DefaultAppDataPath);
    if (auto bytes = files.read(settingsPath(), kLargestSettings)) {
        platform::guarded(
            [&] {
                unarchiver_ =
                    std::make_unique<platform::KeyedUnarchiver>(std::move(*bytes), noClasses_);
            },
            logUnreadable);
    }
}

std::optional<ToolTraits> ToolSettingsReader::savedSettingsForTool(const std::string &title)
{
    std::optional<ToolTraits> traits;
    if (unarchiver_) {
        platform::guarded(
            [&] {
                if (const auto saved = unarchiver_->decodeNode(title)) {
                    traits = {indexOf(*saved, "color"), indexOf(*saved, "size"),
                              indexOf(*saved, "style")};
                }
            },
            logUnreadable);
    }
    return traits;
}

void saveToolSettings(const ToolTable &tools)
{
    if (!platform::Platform::current().files().writeAtomically(settingsPath(),
                                                               encodeToolSettings(tools))) {
        logLine(4, fmt::format("{} was not written", settingsPath()));
    }
}

} // namespace orv
