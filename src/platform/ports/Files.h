#pragma once

#include "platform/foundation/UserInfo.h"
#include "platform/values/Image.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::platform {

/// The folders that the data tree hangs from.
enum class UserFolder { privateData, documents, desktop, temporary };

/// The file system as the logic needs it. Paths are absolute UTF-8 texts.
///
/// Thread   any.
/// Fails    answers false or nothing and leaves what was there; nothing is thrown.
class Files {
public:
    virtual ~Files() = default;

    /// Without a slash at its end.
    [[nodiscard]] virtual std::string userFolder(UserFolder folder) const = 0;
    /// Where layouts, pictures and lessons lie, without a slash at its end.
    [[nodiscard]] virtual std::string resourceFolder() const = 0;

    [[nodiscard]] virtual bool exists(const std::string &path) const = 0;
    /// With all folders on the way; true when it is there afterwards.
    virtual bool createFolder(const std::string &path) = 0;
    /// Nothing when the file is missing, is no file, or is larger than `limit` bytes.
    [[nodiscard]] virtual std::optional<Data> read(const std::string &path,
                                                   std::uint64_t limit) const = 0;
    /// The whole file or nothing of it: written beside the old one, flushed, then renamed.
    virtual bool writeAtomically(const std::string &path, const Data &bytes) = 0;
    /// Renames within a folder tree; false when `to` exists.
    virtual bool move(const std::string &from, const std::string &to) = 0;
    /// A file, or a folder with all that is in it. Links are copied as links. False when `from` is
    /// missing, when `to` exists or lies in `from`, and when a part could not be copied: then all
    /// the other parts are there.
    virtual bool copy(const std::string &from, const std::string &to) = 0;
    /// A symbolic link at `path`; false when something is there, be it a link to nothing.
    virtual bool createLink(const std::string &path, const std::string &target) = 0;
    /// What file managers show for the folder, as far as the desktop's do. A look that the user
    /// gave the folder stays. False when there is no folder or no icon, or it could not be set.
    virtual bool setFolderIcon(const std::string &folder, const ImagePtr &icon) = 0;
    /// Seconds since the last change by the wall clock; nothing for a missing file.
    [[nodiscard]] virtual std::optional<double> age(const std::string &path) const = 0;
};

/// Puts exactly one slash between the two; an empty side gives the other.
[[nodiscard]] std::string joinPath(std::string_view folder, std::string_view name);

} // namespace orv::platform
