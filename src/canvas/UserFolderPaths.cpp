#include "canvas/UserFolderPaths.h"

#include "channels/AppConstants.h"

#include <array>

namespace orv {

namespace {

constexpr std::array kTypeFolders{"/Snapshot", "/Flipchart", "/Background"};

std::string replacedEverywhere(std::string text, const std::string &part, const std::string &by)
{
    for (std::size_t at = text.find(part); at != std::string::npos;
         at = text.find(part, at + by.size())) {
        text.replace(at, part.size(), by);
    }
    return text;
}

} // namespace

std::string UserFolderPaths::getAbsoluteFilePath(const std::string &path)
{
    const std::string piece = "/" + AppConstants::instance().APPName + "/";
    const std::size_t found = path.find(piece);
    return found == std::string::npos ? path : path.substr(found + piece.size());
}

std::string UserFolderPaths::getUserFolderFormPath(const std::string &path)
{
    const std::string relative = getAbsoluteFilePath(path);
    std::string folder;
    for (const char *type : kTypeFolders) {
        const std::size_t found = relative.find(type);
        if (found != std::string::npos) {
            folder = relative.substr(0, found);
        }
    }
    return folder;
}

bool UserFolderPaths::checkOldDataPath(const std::string &path)
{
    return getUserFolderFormPath(path).empty();
}

std::string UserFolderPaths::autoFixOldDataPath(const std::string &path, const std::string &fixName)
{
    if (path.empty()) {
        return {};
    }
    const AppConstants &constants = AppConstants::instance();
    if (checkOldDataPath(path)) {
        const std::string &folder = fixName.empty() ? constants.SanitizeDeviceName() : fixName;
        return constants.AppDataPath + folder + "/" + getAbsoluteFilePath(path);
    }
    if (fixName.empty()) {
        return constants.AppDataPath + path;
    }
    return constants.AppDataPath + replacedEverywhere(path, getUserFolderFormPath(path), fixName);
}

bool UserFolderPaths::dataInUserFolder(const std::string &path)
{
    const std::string folder = getUserFolderFormPath(path);
    return folder.empty() || folder == AppConstants::instance().SanitizeDeviceName();
}

} // namespace orv
