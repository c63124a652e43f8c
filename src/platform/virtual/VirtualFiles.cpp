#include "platform/virtual/VirtualFiles.h"

#include "platform/foundation/Exception.h"
#include "platform/ports/MainThread.h"

#include <chrono>
#include <utility>

namespace orv::platform {

namespace {

double secondsSince1970(std::chrono::system_clock::time_point time)
{
    return std::chrono::duration<double>(time.time_since_epoch()).count();
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

bool VirtualFiles::setFolderIcon(const std::string &folder, const ImagePtr &icon)
{
    if (!icon || !exists(folder)) {
        return false;
    }
    folderIcons_[folder] = icon;
    return true;
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
