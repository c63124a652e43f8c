#pragma once

#include <string>

namespace orv {

/// How saved paths find back into the data folder, even into that of another device: a user folder,
/// a type folder and a file name.
///
/// Paths and folder names are empty for none. Nothing looks at the disk.
/// Thread   where `AppConstants` may be read.
class UserFolderPaths {
public:
    UserFolderPaths() = delete;

    /// The path within the application's folder, the reverse of what the name says; a path that
    /// lies elsewhere as it stands.
    [[nodiscard]] static std::string getAbsoluteFilePath(const std::string &path);
    /// What stands before the folder of snapshots, flipcharts or backgrounds.
    [[nodiscard]] static std::string getUserFolderFormPath(const std::string &path);
    /// A path from the time before there were user folders.
    [[nodiscard]] static bool checkOldDataPath(const std::string &path);
    /// A stored path made whole, and moved to the user folder of this name. An old one comes into
    /// this device's folder when no name is given. None stays none.
    [[nodiscard]] static std::string autoFixOldDataPath(const std::string &path,
                                                        const std::string &fixName);
    /// It may be edited here: it is this device's, or an old one.
    [[nodiscard]] static bool dataInUserFolder(const std::string &path);
};

} // namespace orv
