#include "orvane-streamer/remote/BrowsersFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace orv::apps {

namespace {

using Json = nlohmann::json;
using std::chrono::seconds;
using std::chrono::system_clock;

// 64 browsers need a tenth of it.
constexpr std::size_t kLargestFile = 65536;
constexpr mode_t kOwnFolder = 0700;
constexpr mode_t kOthers = 0077;
// The last second of the year 9999; what is later does not fit into the clock.
constexpr std::int64_t kLatest = 253'402'300'799;

std::string systemError()
{
    return std::system_category().message(errno);
}

/// An open file; its functions throw `std::runtime_error` with the system's words.
class OpenFile {
public:
    explicit OpenFile(int descriptor) : descriptor_(descriptor)
    {
        if (descriptor_ < 0) {
            throw std::runtime_error(systemError());
        }
    }
    ~OpenFile() { ::close(descriptor_); }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    void checkIsPrivate() const
    {
        struct stat status {};
        if (::fstat(descriptor_, &status) != 0) {
            throw std::runtime_error(systemError());
        }
        if (!S_ISREG(status.st_mode) || status.st_uid != ::geteuid() ||
            (status.st_mode & kOthers) != 0) {
            throw std::runtime_error("it is not a file that only its owner can read and write");
        }
    }
    [[nodiscard]] std::string readAll() const
    {
        std::string text(kLargestFile + 1, '\0');
        std::size_t size = 0;
        while (size < text.size()) {
            const ssize_t count = ::read(descriptor_, text.data() + size, text.size() - size);
            if (count == 0) {
                break;
            }
            if (count < 0 && errno != EINTR) {
                throw std::runtime_error(systemError());
            }
            size += count < 0 ? 0 : static_cast<std::size_t>(count);
        }
        if (size > kLargestFile) {
            throw std::runtime_error("it is too large");
        }
        text.resize(size);
        return text;
    }
    void writeAll(std::string_view text) const
    {
        while (!text.empty()) {
            const ssize_t count = ::write(descriptor_, text.data(), text.size());
            if (count < 0 && errno != EINTR) {
                throw std::runtime_error(systemError());
            }
            text.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
        }
        if (::fsync(descriptor_) != 0) {
            throw std::runtime_error(systemError());
        }
    }

private:
    int descriptor_;
};

std::vector<PairedBrowser> parsed(const std::string &text)
{
    std::vector<PairedBrowser> browsers;
    try {
        const Json file = Json::parse(text);
        for (const Json &browser : file.at("browsers")) {
            const auto expires = browser.at("expires").get<std::int64_t>();
            if (expires < 0 || expires > kLatest) {
                throw std::runtime_error("it is damaged");
            }
            browsers.push_back({browser.at("token").get<std::string>(),
                                system_clock::time_point(seconds(expires))});
        }
    } catch (const Json::exception &) {
        throw std::runtime_error("it is damaged");
    }
    return browsers;
}

std::string written(const std::vector<PairedBrowser> &browsers)
{
    Json list = Json::array();
    for (const PairedBrowser &browser : browsers) {
        const auto expires =
            std::chrono::duration_cast<seconds>(browser.expires.time_since_epoch());
        list.push_back({{"token", browser.token}, {"expires", expires.count()}});
    }
    return Json{{"browsers", std::move(list)}}.dump(1) + "\n";
}

void makeFolder(const std::filesystem::path &folder)
{
    if (folder.empty() || std::filesystem::exists(folder)) {
        return;
    }
    makeFolder(folder.parent_path());
    if (::mkdir(folder.c_str(), kOwnFolder) != 0 && errno != EEXIST) {
        throw std::runtime_error(systemError());
    }
}

void replace(const std::string &path, const std::string &text)
{
    std::string temporary = path + ".XXXXXX";
    {
        const OpenFile file(::mkostemp(temporary.data(), O_CLOEXEC));
        try {
            file.writeAll(text);
        } catch (const std::runtime_error &) {
            ::unlink(temporary.c_str());
            throw;
        }
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        const std::string error = systemError();
        ::unlink(temporary.c_str());
        throw std::runtime_error(error);
    }
}

} // namespace

BrowsersFile::BrowsersFile(std::string path, Report report)
    : path_(std::move(path)), report_(std::move(report))
{
}

std::vector<PairedBrowser> BrowsersFile::load() const
{
    struct stat status {};
    if (path_.empty() || (::lstat(path_.c_str(), &status) != 0 && errno == ENOENT)) {
        return {};
    }
    try {
        // A pipe under the name must not keep the server waiting.
        const OpenFile file(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        file.checkIsPrivate();
        return parsed(file.readAll());
    } catch (const std::runtime_error &error) {
        setAside(error.what());
        return {};
    }
}

void BrowsersFile::setAside(const std::string &why) const
{
    const std::string aside = path_ + ".unusable";
    const bool moved = std::rename(path_.c_str(), aside.c_str()) == 0;
    report_(fmt::format("{} is not used: {}. {}Browsers need the pairing code again.", path_, why,
                        moved ? fmt::format("It is {} now. ", aside) : ""));
}

void BrowsersFile::save(const std::vector<PairedBrowser> &browsers) const
{
    if (path_.empty()) {
        return;
    }
    try {
        makeFolder(std::filesystem::path(path_).parent_path());
        replace(path_, written(browsers));
    } catch (const std::exception &error) {
        report_(fmt::format("{} cannot be written: {}. Browsers need the pairing code again when "
                            "the server was started again.",
                            path_, error.what()));
    }
}

} // namespace orv::apps
