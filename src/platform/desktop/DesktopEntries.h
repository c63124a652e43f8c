#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orv::platform {

/// The applications that are installed for this user, by their desktop entries: answers which
/// entry a running program most likely belongs to.
///
/// Thread   an object belongs to one thread; reading the folders is cheap enough to do it anew.
class DesktopEntries {
public:
    /// Reads the "applications" folders of XDG_DATA_HOME and XDG_DATA_DIRS, the user's first.
    DesktopEntries();
    /// Reads these folders instead; unreadable ones count as empty.
    explicit DesktopEntries(const std::vector<std::string> &folders);

    /// The ID, without ".desktop", of the entry whose window class, name or program fits, in this
    /// order. Either argument may be empty.
    [[nodiscard]] std::optional<std::string> find(const std::string &windowClass,
                                                  const std::string &program) const;

private:
    struct Entry {
        std::string id;
        std::string windowClass;
        std::string program;
    };
    void readFolder(const std::string &folder);

    std::vector<Entry> entries_;
};

/// The last part of a path.
[[nodiscard]] std::string baseName(const std::string &path);
/// ASCII letters in lower case.
[[nodiscard]] std::string lowerCase(std::string text);

} // namespace orv::platform
