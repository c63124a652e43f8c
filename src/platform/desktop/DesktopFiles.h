#pragma once

#include "platform/posix/PosixFiles.h"

#include <optional>
#include <string>

namespace orv::platform {

/// The user's folders by the XDG rules, and the folder that was installed with the library.
///
/// Thread   any.
class DesktopFiles final : public PosixFiles {
public:
    /// `resourceFolder` empty: the one beside the library, or else that of the build tree.
    explicit DesktopFiles(const std::string &resourceFolder);

    [[nodiscard]] std::string userFolder(UserFolder folder) const override;
    [[nodiscard]] std::string resourceFolder() const override { return resourceFolder_; }
    bool setFolderIcon(const std::string &folder, const ImagePtr &icon) override;
    [[nodiscard]] std::optional<double> age(const std::string &path) const override;

private:
    std::string resourceFolder_;
};

} // namespace orv::platform
