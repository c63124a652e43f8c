#include "platform/posix/PosixFiles.h"

#include "platform/foundation/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace orv::platform {

namespace {

constexpr double kNanosecondsPerSecond = 1e9;

bool hasNullByte(const std::string &path)
{
    return path.find('\0') != std::string::npos;
}

namespace fs = std::filesystem;

/// Nothing there, not even a link to nothing.
bool isFree(const fs::path &path)
{
    std::error_code error;
    return fs::symlink_status(path, error).type() == fs::file_type::not_found;
}

/// Whether what is made at `path` would lie in the folder, by whatever way it is named.
bool isWithin(const fs::path &path, const fs::path &folder)
{
    std::error_code error;
    const fs::path whole = fs::canonical(folder, error);
    const fs::path parent = fs::canonical(path.parent_path(), error);
    const auto end = std::mismatch(whole.begin(), whole.end(), parent.begin(), parent.end()).first;
    return fs::is_directory(fs::symlink_status(folder, error)) && end == whole.end();
}

bool copyFile(const fs::path &from, const fs::path &to)
{
    std::error_code error;
    if (fs::copy_file(from, to, error)) {
        return true;
    }
    if (error != std::errc::file_exists) {
        fs::remove(to, error);
    }
    return false;
}

bool copyFolder(const fs::path &from, const fs::path &to);

bool copyOne(const fs::path &from, const fs::path &to)
{
    std::error_code error;
    switch (fs::symlink_status(from, error).type()) {
    case fs::file_type::regular:
        return copyFile(from, to);
    case fs::file_type::symlink:
        fs::copy_symlink(from, to, error);
        return !error;
    case fs::file_type::directory:
        return copyFolder(from, to);
    default:
        return false;
    }
}

bool copyFolder(const fs::path &from, const fs::path &to)
{
    std::error_code error;
    if (!fs::create_directory(to, error)) {
        return false;
    }
    bool isWhole = true;
    fs::directory_iterator entry(from, error);
    while (!error && entry != fs::directory_iterator()) {
        isWhole = copyOne(entry->path(), to / entry->path().filename()) && isWhole;
        entry.increment(error);
    }
    isWhole = isWhole && !error;
    // Last, for the folder may be one that nothing can be put into.
    fs::permissions(to, fs::status(from, error).permissions(), error);
    return isWhole && !error;
}

} // namespace

bool PosixFiles::exists(const std::string &path) const
{
    struct stat status {};
    return !hasNullByte(path) && ::stat(path.c_str(), &status) == 0;
}

bool PosixFiles::createFolder(const std::string &path)
{
    if (path.empty() || hasNullByte(path)) {
        return false;
    }
    std::error_code error;
    std::filesystem::create_directories(path, error);
    return std::filesystem::is_directory(path, error);
}

std::optional<Data> PosixFiles::read(const std::string &path, std::uint64_t limit) const
{
    return hasNullByte(path) ? std::nullopt : readFile(path, limit);
}

bool PosixFiles::writeAtomically(const std::string &path, const Data &bytes)
{
    return !hasNullByte(path) && writeFileAtomically(path, bytes);
}

bool PosixFiles::move(const std::string &from, const std::string &to)
{
    if (hasNullByte(from) || hasNullByte(to)) {
        return false;
    }
    return ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0;
}

bool PosixFiles::copy(const std::string &from, const std::string &to)
{
    return !hasNullByte(from) && !hasNullByte(to) && isFree(to) && !isWithin(to, from) &&
           copyOne(from, to);
}

bool PosixFiles::createLink(const std::string &path, const std::string &target)
{
    return !hasNullByte(path) && !hasNullByte(target) &&
           ::symlink(target.c_str(), path.c_str()) == 0;
}

std::optional<double> PosixFiles::changeTime(const std::string &path)
{
    struct stat status {};
    if (hasNullByte(path) || ::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return static_cast<double>(status.st_mtim.tv_sec) +
           static_cast<double>(status.st_mtim.tv_nsec) / kNanosecondsPerSecond;
}

bool PosixFiles::setChangeTime(const std::string &path, double secondsSince1970)
{
    if (hasNullByte(path) || !std::isfinite(secondsSince1970)) {
        return false;
    }
    const double whole = std::floor(secondsSince1970);
    timespec time{};
    time.tv_sec = static_cast<time_t>(whole);
    time.tv_nsec = static_cast<long>((secondsSince1970 - whole) * kNanosecondsPerSecond);
    const std::array<timespec, 2> times{time, time};
    return ::utimensat(AT_FDCWD, path.c_str(), times.data(), 0) == 0;
}

} // namespace orv::platform
