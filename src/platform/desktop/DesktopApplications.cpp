#include "platform/desktop/DesktopApplications.h"

#include "platform/desktop/DesktopEntries.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

namespace orv::platform {

namespace {

constexpr int kBusTimeoutMilliseconds = 500;

/// The name of the program that a process runs, without its folder; empty for a process that is
/// gone or belongs to the kernel.
std::string programOf(std::int32_t pid)
{
    std::ifstream stream(fmt::format("/proc/{}/cmdline", pid));
    std::string program;
    std::getline(stream, program, '\0');
    return baseName(program);
}

std::optional<std::int32_t> pidOf(const std::string &name)
{
    std::int32_t pid = 0;
    const char *end = name.data() + name.size();
    const auto result = std::from_chars(name.data(), end, pid);
    return result.ec == std::errc() && result.ptr == end ? std::optional(pid) : std::nullopt;
}

} // namespace

DesktopApplications::DesktopApplications(const XConnection &x, const FrontWindow &front,
                                         std::string mainBundleIdentifier)
    : x_(x), front_(front), mainBundleIdentifier_(std::move(mainBundleIdentifier))
{
}

std::int32_t DesktopApplications::frontProcess() const
{
    return front_.isOurs() ? static_cast<std::int32_t>(::getpid())
                           : front_.process(front_.present());
}

xcb_window_t DesktopApplications::windowOf(std::int32_t pid) const
{
    const std::vector<xcb_window_t> windows = front_.windows();
    const auto found = std::find_if(windows.begin(), windows.end(), [&](xcb_window_t window) {
        return front_.process(window) == pid;
    });
    return found == windows.end() ? xcb_window_t{XCB_NONE} : *found;
}

void DesktopApplications::setFrontProcess(std::int32_t pid)
{
    if (pid > 0) {
        front_.activate(windowOf(pid));
    }
}

std::string DesktopApplications::windowClass(std::int32_t pid) const
{
    const xcb_window_t window = windowOf(pid);
    const std::string names = window == XCB_NONE ? std::string() : x_.text(window, "WM_CLASS");
    const auto instanceEnd = names.find('\0');
    return instanceEnd == std::string::npos
               ? std::string()
               : names.substr(instanceEnd + 1, names.find('\0', instanceEnd + 1) - instanceEnd - 1);
}

std::string DesktopApplications::bundleIdentifier(std::int32_t pid) const
{
    if (pid == ::getpid()) {
        return mainBundleIdentifier_;
    }
    const std::string program = programOf(pid);
    if (program.empty()) {
        return {};
    }
    return DesktopEntries().find(windowClass(pid), program).value_or(program);
}

bool DesktopApplications::isRunning(const std::string &bundleIdentifier) const
{
    if (bundleIdentifier.empty()) {
        return false;
    }
    if (bundleIdentifier == mainBundleIdentifier_) {
        return true;
    }
    const DesktopEntries entries;
    std::error_code error;
    for (std::filesystem::directory_iterator folder("/proc", error), end; !error && folder != end;
         folder.increment(error)) {
        const auto pid = pidOf(folder->path().filename().string());
        const std::string program = pid ? programOf(*pid) : std::string();
        if (!program.empty() && entries.find({}, program).value_or(program) == bundleIdentifier) {
            return true;
        }
    }
    const std::vector<xcb_window_t> windows = front_.windows();
    return std::any_of(windows.begin(), windows.end(), [&](xcb_window_t window) {
        const std::int32_t pid = front_.process(window);
        return pid != 0 && this->bundleIdentifier(pid) == bundleIdentifier;
    });
}

bool DesktopApplications::isAccessibilityEnabled() const
{
    // Without an address the library would start a bus of its own.
    if (std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr) {
        return false;
    }
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return false;
    }
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled");
    const QDBusReply<QDBusVariant> answer =
        bus.call(question, QDBus::Block, kBusTimeoutMilliseconds);
    return answer.isValid() && answer.value().variant().toBool();
}

} // namespace orv::platform
