#pragma once

#include "platform/posix/PosixFiles.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace orv::platform {

class MainThread;

/// Real files below a home folder, with times by the virtual wall clock.
///
/// Thread   any.
class VirtualFiles final : public PosixFiles {
public:
    /// `clock` outlives this. Makes the user's folders; throws `Exception` when `home` is not
    /// absolute or they cannot be made.
    VirtualFiles(const MainThread &clock, std::string home, std::string resources,
                 std::uint64_t freeBytes);

    [[nodiscard]] std::string userFolder(UserFolder folder) const override;
    [[nodiscard]] std::string resourceFolder() const override { return resources_; }
    /// The file is stamped with the virtual time.
    bool writeAtomically(const std::string &path, const Data &bytes) override;
    /// Copied files are stamped with the virtual time.
    bool copy(const std::string &from, const std::string &to) override;
    /// Keeps the icon in memory; false for a missing folder and for no icon.
    bool setFolderIcon(const std::string &folder, const ImagePtr &icon) override;
    [[nodiscard]] std::optional<double> age(const std::string &path) const override;

    /// By folder, as they were set.
    [[nodiscard]] std::map<std::string, ImagePtr> folderIcons() const;
    [[nodiscard]] const std::string &home() const { return home_; }
    /// Makes the last change of a file `seconds` old; false when that cannot be done.
    bool setAge(const std::string &path, double seconds);
    [[nodiscard]] std::uint64_t freeBytes() const { return freeBytes_; }
    void setFreeBytes(std::uint64_t bytes) { freeBytes_ = bytes; }

private:
    const MainThread &clock_;
    std::string home_;
    std::string resources_;
    std::atomic<std::uint64_t> freeBytes_;
    mutable std::mutex mutex_;
    std::map<std::string, ImagePtr> folderIcons_;
};

} // namespace orv::platform
