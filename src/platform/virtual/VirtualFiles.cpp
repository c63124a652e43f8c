#include "platform/virtual/VirtualFiles.h"

#include "platform/foundation/Exception.h"
#include "platform/ports/MainThread.h"

#include <chrono>
#include <filesystem>
#include <utility>
#include <vector>

namespace orv::platform {

namespace {

double secondsSince1970(std::chrono::system_clock::time_point time)
{
    return std::chrono::duration<double>(time.time_since_epoch()).count();
}

/// The file itself, or those in a folder and in its folders; no links.
std::vector<std::string> filesBelow(const std::filesystem::path &path)
{
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (type == fs::file_type::regular) {
        return {path.string()};
    }
    std::vector<std::string> files;
    if (type == fs::file_type::directory) {
        fs::directory_iterator entry(path, error);
        while (!error && entry != fs::directory_iterator()) {
            const std::vector<std::string> below = filesBelow(entry->path());
            files.insert(files.end(), below.begin(), below.end());
            entry.increment(error);
        }
    }
    return files;
}

} // namespace

VirtualFiles::VirtualFiles(const MainThread &clock, std::string home, std::string resources,
                           std::uint64_t freeBytes)
    : clock_(clock), home_(std::move(home)), resources_(std::move(resources)), freeBytes_(freeBytes)
{
    for (std::string *path : {&home_, &resources_}) {
        while (path->size() > 1 && path->ends_with('/')) {
            path->pop_back();
        }
    }
    if (!home_.starts_with('/')) {
        throw Exception("the home folder is not an absolute path: \"" + home_ + "\"");
    }
    for (const UserFolder folder : {UserFolder::privateData, UserFolder::documents,
                                    UserFolder::desktop, UserFolder::temporary}) {
        const std::string path = VirtualFiles::userFolder(folder);
        if (!createFolder(path)) {
            throw Exception("the folder cannot be made: \"" + path + "\"");
        }
    }
}

std::string VirtualFiles::userFolder(UserFolder folder) const
{
    switch (folder) {
    case UserFolder::privateData:
        return joinPath(home_, ".local/share");
    case UserFolder::documents:
        return joinPath(home_, "Documents");
    case UserFolder::desktop:
        return joinPath(home_, "Desktop");
    case UserFolder::temporary:
        break;
    }
    return joinPath(home_, "tmp");
}

bool VirtualFiles::writeAtomically(const std::string &path, const Data &bytes)
{
    return PosixFiles::writeAtomically(path, bytes) && setAge(path, 0.0);
}

bool VirtualFiles::copy(const std::string &from, const std::string &to)
{
    std::error_code error;
    const bool isFree =
        std::filesystem::symlink_status(to, error).type() == std::filesystem::file_type::not_found;
    const bool isWhole = PosixFiles::copy(from, to);
    if (isFree) {
        for (const std::string &file : filesBelow(to)) {
            setAge(file, 0.0);
        }
    }
    return isWhole;
}

bool VirtualFiles::setFolderIcon(const std::string &folder, const ImagePtr &icon)
{
    std::error_code error;
    if (!icon || !std::filesystem::is_directory(folder, error)) {
        return false;
    }
    const std::scoped_lock lock(mutex_);
    folderIcons_[folder] = icon;
    return true;
}

std::map<std::string, ImagePtr> VirtualFiles::folderIcons() const
{
    const std::scoped_lock lock(mutex_);
    return folderIcons_;
}

std::optional<double> VirtualFiles::age(const std::string &path) const
{
    const std::optional<double> changed = changeTime(path);
    if (!changed) {
        return std::nullopt;
    }
    return secondsSince1970(clock_.wallClock()) - *changed;
}

bool VirtualFiles::setAge(const std::string &path, double seconds)
{
    return setChangeTime(path, secondsSince1970(clock_.wallClock()) - seconds);
}

} // namespace orv::platform
