#include "session/DataFolders.h"

#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Monitor.h"
#include "platform/ports/Files.h"
#include "platform/ports/MainThread.h"
#include "platform/ports/Pictures.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <utility>

namespace orv {

namespace {

constexpr const char *kDefaultDevice = "Default Data";
constexpr const char *kOldData = ".old_data_save_tmp";
constexpr const char *kTransfers = ".transfer_tmp";
constexpr const char *kSnapshots = "Snapshot";
constexpr const char *kFlipcharts = "Flipchart";
constexpr std::array kWorkFolders{kSnapshots, kFlipcharts, "Background"};

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

platform::Files &files()
{
    return platform::Platform::current().files();
}

// True only for a folder that was not there and is now.
bool createFolder(const std::string &path)
{
    return !files().exists(path) && files().createFolder(path);
}

void setSnapshotFolderIcon(const std::string &path)
{
    if (!files().exists(path)) {
        return;
    }
    const std::string iconPath = platform::pathForImageResource(
        AppConstants::instance().isPresenter() ? "Presenter_folder_icon.icns"
                                               : "Annotation_folder_icon.icns");
    const platform::ImagePtr icon = platform::Platform::current().pictures().picture(iconPath);
    if (!icon) {
        logLine(1, fmt::format("File is not a valid image file: {}", iconPath));
    } else if (!files().setFolderIcon(path, icon)) {
        logLine(1, fmt::format("Could not set icon \"{}\" for path \"{}\"", iconPath, path));
    }
}

void moveOldDataToTmpFolder(const std::string &appDataPath)
{
    for (const char *name : kWorkFolders) {
        if (files().exists(appDataPath + name)) {
            files().move(appDataPath + name, platform::joinPath(appDataPath + kOldData, name));
        }
    }
}

// Another thread may be about to change them.
std::pair<std::string, std::string> presentPaths()
{
    const platform::Monitor::Hold hold;
    const AppConstants &constants = AppConstants::instance();
    return {constants.AppDataPath, constants.AppUserDataPath};
}

std::string below(platform::UserFolder folder, const std::string &name)
{
    return platform::joinPath(files().userFolder(folder), name);
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
    // Made only together with the folder: a link that the user deletes stays away.
    if (createFolder(constants.AppDataPath) && !constants.isViewOnly()) {
        files().createLink(constants.AppLinkPath, constants.AppDataPath);
    }
    setSnapshotFolderIcon(constants.AppDataPath);
    if (!constants.isViewOnly()) {
        setSnapshotFolderIcon(constants.AppLinkPath);
    }
    const bool isFlat = files().exists(constants.AppDataPath + kSnapshots) ||
                        files().exists(constants.AppDataPath + kFlipcharts);
    if (isFlat && createFolder(constants.AppDataPath + kOldData)) {
        moveOldDataToTmpFolder(constants.AppDataPath);
    }
    if (makeUserFolder()) {
        platform::Platform::current().mainThread().background(
            [] { moveDefaultDataToUserFolder(); });
    }
    createFolder(constants.DefaultAppDataPath + kTransfers);
}

void moveDefaultDataToUserFolder()
{
    const auto [appDataPath, userPath] = presentPaths();
    // The session may have ended before this had its turn.
    if (userPath.empty()) {
        return;
    }
    logLine(1, "-[AnnotationManager moveDefaultDataToUserFolder] start ...");
    const std::string old = appDataPath + kOldData;
    for (const char *name : kWorkFolders) {
        // Copied and not moved: each device that comes along later gets the old work too.
        if (files().exists(platform::joinPath(old, name))) {
            files().copy(platform::joinPath(old, name), platform::joinPath(userPath, name));
        }
    }
    for (const char *name : kWorkFolders) {
        createFolder(platform::joinPath(userPath, name));
    }
    logLine(1, "-[AnnotationManager moveDefaultDataToUserFolder] finish ...");
}

bool makeUserFolder()
{
    return createFolder(AppConstants::instance().AppUserDataPath);
}

} // namespace orv
