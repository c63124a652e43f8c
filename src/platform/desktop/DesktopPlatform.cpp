#include "OrvAnnotation/DesktopPlatform.h"

#include "platform/desktop/DesktopPorts.h"
#include "platform/desktop/GuiProcess.h"
#include "platform/desktop/Screenshot.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/raster/Pictures.h"

#include <QGuiApplication>
#include <QScreen>

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>
#include <utility>

namespace orv {

/// The GUI application and the ports on it, installed for the length of its life.
class DesktopPlatform::Impl {
public:
    explicit Impl(Options options)
        : options_(std::move(options)), gui_(options_.bundleIdentifier),
          ports_(options_.bundleIdentifier, options_.resourceFolder)
    {
        platform::Platform::install(&ports_);
    }
    ~Impl()
    {
        platform::NotificationCenter::local().removeObserver(this);
        platform::Platform::install(nullptr);
    }
    Impl(const Impl &) = delete;
    Impl &operator=(const Impl &) = delete;

    platform::DesktopPorts &ports() { return ports_; }
    void setDisplaysChanged(std::function<void()> changed)
    {
        platform::NotificationCenter &center = platform::NotificationCenter::local();
        center.removeObserver(this);
        // The library's own observers are told in a turn of the loop that this one comes after.
        center.addObserver(this, platform::NSApplicationDidChangeScreenParametersNotification,
                           [this, changed = std::move(changed)](std::string_view, const auto &) {
                               ports_.mainThread().post(changed);
                           });
    }

private:
    Options options_;
    platform::GuiProcess gui_;
    platform::DesktopPorts ports_;
};

DesktopPlatform::DesktopPlatform(Options options)
    : impl_(std::make_unique<Impl>(std::move(options)))
{
}

DesktopPlatform::~DesktopPlatform() = default;

int DesktopPlatform::run()
{
    return impl_->ports().mainThread().run();
}

void DesktopPlatform::quit(int exitCode)
{
    impl_->ports().mainThread().quit(exitCode);
}

void DesktopPlatform::post(std::function<void()> task)
{
    impl_->ports().mainThread().post(std::move(task));
}

void DesktopPlatform::after(double seconds, std::function<void()> task)
{
    impl_->ports().mainThread().after(seconds, std::move(task)).detach();
}

bool DesktopPlatform::writeScreenshot(const std::string &path)
{
    impl_->ports().windowServer().displayIfNeeded();
    const QScreen *screen = QGuiApplication::primaryScreen();
    const auto image = screen == nullptr
                           ? std::nullopt
                           : platform::readScreen(impl_->ports().x(), screen->geometry());
    return image && platform::writePng(path, *image);
}

DesktopPlatform::Display DesktopPlatform::mainDisplay() const
{
    const platform::DesktopDisplays &displays = impl_->ports().displays();
    const platform::DisplayID display = displays.mainDisplayID();
    const auto screen = displays.screen(display);
    if (!screen) {
        return {};
    }
    const platform::DeviceSpace space = displays.deviceSpace();
    const platform::Size size = screen->frame.size;
    const QPoint corner = space.topLeft(screen->frame);
    const auto pixels = [&](double points) {
        return static_cast<int>(std::lround(points * space.scale));
    };
    return {display,    size.width,         size.height,        corner.x(),
            corner.y(), pixels(size.width), pixels(size.height)};
}

void DesktopPlatform::setDisplaysChanged(std::function<void()> changed)
{
    impl_->setDisplaysChanged(std::move(changed));
}

std::string DesktopPlatform::describe() const
{
    const char *display = std::getenv("DISPLAY");
    return fmt::format("X11 display {}: overlay windows are {}", display == nullptr ? "" : display,
                       impl_->ports().windowServer().isBlended()
                           ? "blended by a compositor"
                           : "shaped to their ink, as nothing here blends windows");
}

} // namespace orv
