#include "platform/desktop/DesktopEntries.h"

#include "platform/ports/Files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

namespace orv::platform {

namespace {

constexpr std::string_view kSuffix = ".desktop";

std::string environmentOr(const char *name, const std::string &otherwise)
{
    const char *value = std::getenv(name);
    return value == nullptr || *value == '\0' ? otherwise : std::string(value);
}

std::vector<std::string> applicationFolders()
{
    const std::string home = environmentOr("HOME", "");
    std::vector<std::string> folders = {
        joinPath(environmentOr("XDG_DATA_HOME", joinPath(home, ".local/share")), "applications")};
    std::istringstream rest(environmentOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
    for (std::string folder; std::getline(rest, folder, ':');) {
        folders.push_back(joinPath(folder, "applications"));
    }
    return folders;
}

/// The first word of a command line, quotes taken off.
std::string firstWord(const std::string &command)
{
    if (command.starts_with('"')) {
        return command.substr(1, command.find('"', 1) - 1);
    }
    return command.substr(0, command.find(' '));
}

/// "org.example.Editor" is known as "editor" as well.
std::string lastComponent(const std::string &id)
{
    const auto dot = id.rfind('.');
    return dot == std::string::npos ? id : id.substr(dot + 1);
}

} // namespace

std::string baseName(const std::string &path)
{
    return path.substr(path.rfind('/') + 1);
}

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

DesktopEntries::DesktopEntries() : DesktopEntries(applicationFolders()) {}

DesktopEntries::DesktopEntries(const std::vector<std::string> &folders)
{
    for (const std::string &folder : folders) {
        readFolder(folder);
    }
}

void DesktopEntries::readFolder(const std::string &folder)
{
    std::error_code error;
    for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end;
         file.increment(error)) {
        const std::string name = file->path().filename().string();
        if (!name.ends_with(kSuffix)) {
            continue;
        }
        Entry entry;
        entry.id = name.substr(0, name.size() - kSuffix.size());
        std::ifstream stream(file->path());
        bool inEntry = false;
        for (std::string line; std::getline(stream, line);) {
            if (line.starts_with('[')) {
                inEntry = line == "[Desktop Entry]";
            } else if (inEntry && line.starts_with("Exec=")) {
                entry.program = lowerCase(baseName(firstWord(line.substr(5))));
            } else if (inEntry && line.starts_with("StartupWMClass=")) {
                entry.windowClass = lowerCase(line.substr(15));
            }
        }
        entries_.push_back(std::move(entry));
    }
}

std::optional<std::string> DesktopEntries::find(const std::string &windowClass,
                                                const std::string &program) const
{
    const std::string byClass = lowerCase(windowClass);
    const std::string byProgram = lowerCase(program);
    const auto match = [this](const std::string &wanted,
                              const auto &fits) -> std::optional<std::string> {
        const auto found = std::find_if(entries_.begin(), entries_.end(), fits);
        return wanted.empty() || found == entries_.end() ? std::nullopt : std::optional(found->id);
    };
    const auto named = [](const std::string &wanted) {
        return [&wanted](const Entry &entry) {
            const std::string id = lowerCase(entry.id);
            return id == wanted || lastComponent(id) == wanted;
        };
    };
    if (auto id = match(byClass, [&](const Entry &e) { return e.windowClass == byClass; })) {
        return id;
    }
    if (auto id = match(byClass, named(byClass))) {
        return id;
    }
    if (auto id = match(byProgram, [&](const Entry &e) { return e.program == byProgram; })) {
        return id;
    }
    return match(byProgram, named(byProgram));
}

} // namespace orv::platform
