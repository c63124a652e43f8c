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

ToolSettings decodeToolSettings(const platform::Data &bytes, const ToolTable &tools)
{
    const platform::ClassTable noClasses;
    platform::KeyedUnarchiver unarchiver(bytes, noClasses);
    ToolSettings settings;
    for (const auto &[title, tool] : tools) {
        if (const auto saved = unarchiver.decodeNode(title)) {
            settings[title] = {indexOf(*saved, "color"), indexOf(*saved, "size"),
                               indexOf(*saved, "style")};
        }
    }
    return settings;
}

void restoreToolSettings(const ToolTable &tools)
{
    platform::Files &files = platform::Platform::current().files();
    files.createFolder(AppConstants::instance().DefaultAppDataPath);
    const auto bytes = files.read(settingsPath(), kLargestSettings);
    if (!bytes) {
        return;
    }
    platform::guarded(
        [&] {
            for (const auto &[title, traits] : decodeToolSettings(*bytes, tools)) {
                applyTraits(traits, *tools.at(title));
            }
        },
        [](const std::string &why) {
            logLine(4, fmt::format("{} can't be read: {}", settingsPath(), why));
        });
}

void saveToolSettings(const ToolTable &tools)
{
    if (!platform::Platform::current().files().writeAtomically(settingsPath(),
                                                               encodeToolSettings(tools))) {
        logLine(4, fmt::format("{} was not written", settingsPath()));
    }
}

} // namespace orv
