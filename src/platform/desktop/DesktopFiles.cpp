#include "platform/desktop/DesktopFiles.h"

#include "platform/desktop/FolderIcon.h"

#include <QStandardPaths>

#include <dlfcn.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace orv::platform {

namespace {

constexpr std::string_view kInstalledBesideLibrary = "../share/OrvAnnotation";

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string withoutSlashAtEnd(std::string path)
{
    while (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    return path;
}

std::string standardFolder(QStandardPaths::StandardLocation location)
{
    return withoutSlashAtEnd(QStandardPaths::writableLocation(location).toStdString());
}

/// A relative path in the variable is to be ignored by the XDG rules.
std::string privateDataFolder()
{
    const std::string set = environment("XDG_DATA_HOME");
    return withoutSlashAtEnd(set.starts_with('/') ? set
                                                  : joinPath(environment("HOME"), ".local/share"));
}

std::string temporaryFolder()
{
    const std::string set = environment("TMPDIR");
    return set.starts_with('/') ? withoutSlashAtEnd(set) : std::string("/tmp");
}

std::string findResourceFolder()
{
    static const char inThisLibrary = 0;
    Dl_info library{};
    std::error_code error;
    if (dladdr(&inThisLibrary, &library) != 0 && library.dli_fname != nullptr) {
        const auto folder = std::filesystem::canonical(library.dli_fname, error).parent_path();
        // Some systems put libraries one folder deeper, one for each architecture.
        for (const auto &place : {folder, folder.parent_path()}) {
            const auto installed = (place / kInstalledBesideLibrary).lexically_normal();
            if (!place.empty() && std::filesystem::is_directory(installed, error)) {
                return withoutSlashAtEnd(installed.string());
            }
        }
    }
    return ORV_BUILT_RESOURCES;
}

} // namespace

DesktopFiles::DesktopFiles(const std::string &resourceFolder)
    : resourceFolder_(resourceFolder.empty() ? findResourceFolder()
                                             : withoutSlashAtEnd(resourceFolder))
{
}

std::string DesktopFiles::userFolder(UserFolder folder) const
{
    switch (folder) {
    case UserFolder::privateData:
        return privateDataFolder();
    case UserFolder::documents:
        return standardFolder(QStandardPaths::DocumentsLocation);
    case UserFolder::desktop:
        return standardFolder(QStandardPaths::DesktopLocation);
    case UserFolder::temporary:
        break;
    }
    return temporaryFolder();
}

bool DesktopFiles::setFolderIcon(const std::string &folder, const ImagePtr &icon)
{
    return icon && writeFolderIcon(folder, *icon);
}

std::optional<double> DesktopFiles::age(const std::string &path) const
{
    const std::optional<double> changed = changeTime(path);
    if (!changed) {
        return std::nullopt;
    }
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count() - *changed;
}

} // namespace orv::platform
