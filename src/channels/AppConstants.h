#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace orv {

/// The names of the running session, in one place: plug-in, process, application, data folders.
///
/// Thread   made and written under the monitor; read there too.
/// Life     made at first use; `destroy` ends it, and the next `instance` starts anew.
class AppConstants {
public:
    static AppConstants &instance();
    static void destroy();

    [[nodiscard]] std::uint32_t AppActUniqueID() const { return AppActUniqueID_; }
    void setAppActUniqueID(std::uint32_t uniqueID) { AppActUniqueID_ = uniqueID; }
    /// This process's ID.
    [[nodiscard]] std::int32_t AppActPid() const { return AppActPid_; }

    [[nodiscard]] bool isPresenter() const { return AppActUniqueID_ == 12; }
    [[nodiscard]] bool isIAP() const { return AppActUniqueID_ == 16; }
    [[nodiscard]] bool isAnnotation2() const
    {
        return AppActUniqueID_ >= 16 && AppActUniqueID_ <= 18;
    }
    [[nodiscard]] bool isSupportMultiScreen() const
    {
        return AppActUniqueID_ == 17 || AppActUniqueID_ == 18;
    }
    [[nodiscard]] bool isViewOnly() const { return AppActUniqueID_ == 18; }

    [[nodiscard]] const std::string &DeviceName() const { return DeviceName_; }
    [[nodiscard]] const std::string &SanitizeDeviceName() const { return SanitizeDeviceName_; }
    /// Nothing is ignored; a name also sets `SanitizeDeviceName`.
    void setDeviceName(const std::optional<std::string> &name);

    /// UTF-8 in, UTF-8 out: a name that is safe as the name of one folder.
    [[nodiscard]] static std::string SanitizeName(const std::string &name);
    /// Only slashes come back; escapes are escaped once more.
    [[nodiscard]] static std::string RestoreName(const std::string &name);

    std::string APPName;
    std::string APPAbbreviation;
    /// Private data of this user; ends in a slash.
    std::string DefaultAppDataPath;
    /// Visible root of the saved work; ends in a slash.
    std::string AppDataPath;
    std::string AppLinkPath;
    /// Folder of the current device.
    std::string AppUserDataPath;

private:
    AppConstants();

    std::uint32_t AppActUniqueID_ = 0;
    std::int32_t AppActPid_;
    std::string DeviceName_;
    std::string SanitizeDeviceName_;
};

} // namespace orv
