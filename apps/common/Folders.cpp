#include "common/Folders.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace orv::apps {

namespace fs = std::filesystem;

std::string plainPath(const std::string &path)
{
    std::string plain = fs::absolute(path).lexically_normal().string();
    while (plain.size() > 1 && plain.ends_with('/')) {
        plain.pop_back();
    }
    return plain;
}

std::string pathBelow(const std::string &folder, const std::string &path)
{
    // An absolute right side replaces the left one.
    std::string whole = plainPath((fs::path(folder) / path).string());
    const std::string prefix = folder.ends_with('/') ? folder : folder + "/";
    return whole.starts_with(prefix) ? whole : std::string();
}

std::string resourceFolder()
{
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    const fs::path installed = program.parent_path().parent_path() / "share/OrvAnnotation";
    return !error && fs::is_directory(installed, error) ? installed.string() : ORV_BUILT_RESOURCES;
}

std::string stateFolder()
{
    // What is no absolute path does not count, as that standard says.
    if (const char *state = std::getenv("XDG_STATE_HOME"); state != nullptr && *state == '/') {
        return plainPath(state);
    }
    if (const char *home = std::getenv("HOME"); home != nullptr && *home == '/') {
        return plainPath(home) + "/.local/state";
    }
    throw std::runtime_error("Neither XDG_STATE_HOME nor HOME names a folder.");
}

} // namespace orv::apps
