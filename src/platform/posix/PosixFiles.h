#pragma once

#include "platform/ports/Files.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orv::platform {

/// The part of the file system that is the same on every POSIX desk: reading, writing, moving.
///
/// Where the user's folders lie and by which clock ages count is for the class that derives.
///
/// Thread   any.
class PosixFiles : public Files {
public:
    [[nodiscard]] bool exists(const std::string &path) const override;
    bool createFolder(const std::string &path) override;
    [[nodiscard]] std::optional<Data> read(const std::string &path,
                                           std::uint64_t limit) const override;
    bool writeAtomically(const std::string &path, const Data &bytes) override;
    bool move(const std::string &from, const std::string &to) override;
    bool copy(const std::string &from, const std::string &to) override;
    bool createLink(const std::string &path, const std::string &target) override;

protected:
    /// Seconds since 1970 at which the file was last changed; nothing for a missing file.
    [[nodiscard]] static std::optional<double> changeTime(const std::string &path);
    /// Sets that moment; false when it cannot be set.
    static bool setChangeTime(const std::string &path, double secondsSince1970);
};

} // namespace orv::platform
