#include "platform/posix/PosixFiles.h"

#include "platform/foundation/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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
    namespace fs = std::filesystem;
    std::error_code error;
    if (hasNullByte(from) || hasNullByte(to) || fs::exists(fs::symlink_status(to, error)) ||
        !exists(from)) {
        return false;
    }
    fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    return !error;
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
