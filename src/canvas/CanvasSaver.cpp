#include "canvas/CanvasSaver.h"

#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/ports/Files.h"
#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace orv {

namespace {

/// All saves of one file.
struct FileSaves {
    std::mutex writing;
    std::atomic<std::uint64_t> newest = 0;
};

// Kept by file and not by canvas: a closed canvas may leave a save behind that must not come out
// after the first one of its successor.
std::shared_ptr<FileSaves> savesOf(const std::string &path)
{
    static std::mutex mutex;
    static std::map<std::string, std::weak_ptr<FileSaves>> files;
    const std::lock_guard lock(mutex);
    std::erase_if(files, [](const auto &file) { return file.second.expired(); });
    std::weak_ptr<FileSaves> &known = files[path];
    auto saves = known.lock();
    if (!saves) {
        saves = std::make_shared<FileSaves>();
        known = saves;
    }
    return saves;
}

void write(platform::Files &files, FileSaves &saves, std::uint64_t number, const CanvasSave &save)
{
    const auto isOutdated = [&saves, number] { return number < saves.newest; };
    if (isOutdated()) {
        return;
    }
    bool written = false;
    platform::guarded(
        [&] {
            const platform::Data bytes = save.encode();
            const std::lock_guard lock(saves.writing);
            written = isOutdated() || files.writeAtomically(save.path, bytes);
        },
        [](const std::string &why) { logLine(4, why); });
    if (!written) {
        logLine(4, fmt::format("{} {} was not written", save.operation, save.path));
    }
}

} // namespace

void saveOnWorker(CanvasSave save)
{
    auto saves = savesOf(save.path);
    const std::uint64_t number = ++saves->newest;
    // The platform lets its workers end before its files.
    platform::Platform &platform = platform::Platform::current();
    platform.mainThread().background(
        [&files = platform.files(), saves = std::move(saves), number, save = std::move(save)] {
            write(files, *saves, number, save);
        });
}

void saveAtOnce(const CanvasSave &save)
{
    const auto saves = savesOf(save.path);
    write(platform::Platform::current().files(), *saves, ++saves->newest, save);
}

} // namespace orv
