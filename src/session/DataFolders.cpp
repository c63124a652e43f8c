#include "session/DataFolders.h"

#include "channels/AppConstants.h"
#include "platform/ports/Files.h"
#include "platform/ports/Platform.h"

namespace orv {

namespace {

constexpr const char *kDefaultDevice = "Default Data";

void setApplicationName(AppConstants &constants)
{
    if (constants.isPresenter()) {
        constants.APPName = "Orvane Presenter";
        constants.APPAbbreviation = "OVP";
    } else if (constants.isViewOnly()) {
        // The leading point hides all of this variant's folders.
        constants.APPName = ".Orvane Whiteboard Temporary";
        constants.APPAbbreviation = ".OWT";
    } else {
        constants.APPName = "Orvane Whiteboard";
        constants.APPAbbreviation = "OW";
    }
}

std::string below(platform::UserFolder folder, const std::string &name)
{
    return platform::joinPath(platform::Platform::current().files().userFolder(folder), name);
}

} // namespace

void initializeDefaultPathSetting()
{
    AppConstants &constants = AppConstants::instance();
    constants.setDeviceName(kDefaultDevice);
    setApplicationName(constants);
    constants.DefaultAppDataPath =
        below(platform::UserFolder::privateData, constants.APPName) + "/";
    constants.AppDataPath = below(platform::UserFolder::documents, constants.APPName) + "/";
    constants.AppLinkPath = below(platform::UserFolder::desktop, constants.APPName);
    constants.AppUserDataPath = constants.AppDataPath + constants.SanitizeDeviceName();
}

void checkWhiteboardDataFolder()
{
    const AppConstants &constants = AppConstants::instance();
    platform::Files &files = platform::Platform::current().files();
    files.createFolder(constants.AppDataPath);
    files.createFolder(constants.AppUserDataPath);
}

} // namespace orv
