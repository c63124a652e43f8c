#include "platform/foundation/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace orv::platform {

namespace {

constexpr int kNoFile = -1;
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kPermissionBits = 0777;

/// An open file or folder, closed at the end of a scope.
class OpenFile {
public:
    OpenFile(FileCalls &calls, int number) : calls_(calls), number_(number) {}
    ~OpenFile()
    {
        if (isOpen()) {
            calls_.close(number_);
        }
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    [[nodiscard]] bool isOpen() const { return number_ != kNoFile; }
    [[nodiscard]] int number() const { return number_; }

private:
    FileCalls &calls_;
    int number_;
};

/// Answers -1 when the call fails for another reason than a signal.
template <class Call> auto retried(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

std::pair<std::string, std::string> folderAndName(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return {".", path};
    }
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

/// The locked file that a path is written to first; removed at the end of a scope unless it became
/// the real one.
class TemporaryFile {
public:
    TemporaryFile(FileCalls &calls, int folder, std::string name)
        : calls_(calls), folder_(folder), name_(std::move(name))
    {
    }
    ~TemporaryFile()
    {
        if (number_ != kNoFile && !isRenamed_) {
            calls_.unlinkAt(folder_, name_.c_str());
        }
        close();
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    [[nodiscard]] int number() const { return number_; }

    bool openLocked()
    {
        constexpr int kFlags = O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC;
        for (;;) {
            close();
            number_ = retried(
                [&] { return calls_.openAt(folder_, name_.c_str(), kFlags, kNewFileMode); });
            if (number_ == kNoFile || retried([&] { return calls_.lock(number_); }) != 0) {
                return false;
            }
            // Another writer may have renamed the file away while this one waited for the lock.
            struct stat own = {};
            struct stat named = {};
            if (calls_.status(number_, &own) != 0) {
                return false;
            }
            if (calls_.statusAt(folder_, name_.c_str(), &named) == 0) {
                if (own.st_dev == named.st_dev && own.st_ino == named.st_ino) {
                    return true;
                }
            } else if (errno != ENOENT) {
                return false;
            }
        }
    }

    bool renameTo(const std::string &name)
    {
        isRenamed_ = calls_.renameAt(folder_, name_.c_str(), name.c_str()) == 0;
        return isRenamed_;
    }

private:
    void close()
    {
        if (number_ != kNoFile) {
            calls_.close(number_);
            number_ = kNoFile;
        }
    }

    FileCalls &calls_;
    int folder_;
    std::string name_;
    int number_ = kNoFile;
    bool isRenamed_ = false;
};

bool writeAll(FileCalls &calls, int file, std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t count =
            retried([&] { return calls.write(file, bytes.data(), bytes.size()); });
        if (count <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

bool fill(FileCalls &calls, int folder, const std::string &name, int file,
          std::span<const std::uint8_t> bytes)
{
    struct stat old = {};
    if (calls.statusAt(folder, name.c_str(), &old) != 0) {
        if (errno != ENOENT) {
            return false;
        }
    } else if (S_ISREG(old.st_mode) && calls.setMode(file, old.st_mode & kPermissionBits) != 0) {
        return false;
    }
    return calls.truncate(file) == 0 && writeAll(calls, file, bytes) &&
           retried([&] { return calls.sync(file); }) == 0;
}

/// File systems that can't flush a folder say so with EINVAL.
bool syncFolder(FileCalls &calls, int folder)
{
    return retried([&] { return calls.sync(folder); }) == 0 || errno == EINVAL;
}

} // namespace

bool writeFileAtomically(const std::string &path, std::span<const std::uint8_t> bytes,
                         FileCalls &calls)
{
    const auto [folderPath, name] = folderAndName(path);
    if (name.empty()) {
        return false;
    }
    const OpenFile folder(calls, retried([&, &place = folderPath] {
                              return calls.openAt(AT_FDCWD, place.c_str(),
                                                  O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
                          }));
    if (!folder.isOpen()) {
        return false;
    }
    TemporaryFile file(calls, folder.number(), "." + name + ".new");
    if (!file.openLocked() || !fill(calls, folder.number(), name, file.number(), bytes) ||
        !file.renameTo(name)) {
        return false;
    }
    return syncFolder(calls, folder.number());
}

std::optional<Data> readFile(const std::string &path, std::uint64_t limit)
{
    FileCalls &calls = FileCalls::system();
    const OpenFile file(calls, retried([&] {
                            return calls.openAt(AT_FDCWD, path.c_str(),
                                                O_RDONLY | O_NONBLOCK | O_CLOEXEC, 0);
                        }));
    struct stat status = {};
    if (!file.isOpen() || calls.status(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    if (static_cast<std::uint64_t>(status.st_size) > limit) {
        return std::nullopt;
    }
    Data bytes(static_cast<std::size_t>(status.st_size));
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = retried(
            [&] { return ::read(file.number(), bytes.data() + filled, bytes.size() - filled); });
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return bytes;
}

} // namespace orv::platform
