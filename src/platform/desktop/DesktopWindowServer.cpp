#include "platform/desktop/DesktopWindowServer.h"

#include "platform/desktop/DesktopWindowSurface.h"

#include <QCoreApplication>
#include <QEvent>
#include <QInputDevice>

#include <algorithm>
#include <iterator>
#include <utility>

namespace orv::platform {

namespace {

bool hasPen()
{
    const auto devices = QInputDevice::devices();
    return std::any_of(devices.begin(), devices.end(), [](const QInputDevice *device) {
        return device->type() == QInputDevice::DeviceType::Stylus;
    });
}

} // namespace

DesktopWindowServer::DesktopWindowServer(const XConnection &x, DesktopMainThread &mainThread,
                                         DesktopDisplays &displays, FrontWindow &front,
                                         std::string applicationClass)
    : x_(x), mainThread_(mainThread), displays_(displays), front_(front),
      applicationClass_(std::move(applicationClass)),
      pointerLink_(x, mainThread, &hasPen,
                   [this] { mainThread_.call([this] { displayIfNeeded(); }); }),
      compositor_(x, [this] { mainThread_.call([this] { blendingChanged(); }); }),
      keeper_(
          x, front, mainThread, [this] { return nativeWindows(); },
          [this] {
              raiseFrom(0);
              x_.flush();
          })
{
}

DesktopWindowServer::~DesktopWindowServer()
{
    // Native windows of surfaces that are gone wait for the loop, which may have ended.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::unique_ptr<WindowSurface> DesktopWindowServer::createSurface(WindowEvents &events)
{
    SurfaceHost &host = *this;
    return std::make_unique<DesktopWindowSurface>(host, events, ++lastNumber_);
}

std::vector<int> DesktopWindowServer::orderedWindows() const
{
    std::vector<int> numbers;
    std::transform(order_.rbegin(), order_.rend(), std::back_inserter(numbers),
                   [](const DesktopWindowSurface *surface) { return surface->windowNumber(); });
    return numbers;
}

std::vector<WindowInfo> DesktopWindowServer::windows() const
{
    std::vector<WindowInfo> found;
    std::transform(
        order_.rbegin(), order_.rend(), std::back_inserter(found),
        [](const DesktopWindowSurface *surface) {
            return WindowInfo{surface->windowNumber(), surface->title(), surface->level()};
        });
    return found;
}

bool DesktopWindowServer::isBlended() const
{
    return compositor_.isPresent() && x_.hasAlphaVisual();
}

void DesktopWindowServer::drawSoon()
{
    if (!pointerLink_.isTaking() && !std::exchange(drawPending_, true)) {
        mainThread_.callSoon([this] {
            drawPending_ = false;
            displayIfNeeded();
        });
    }
}

void DesktopWindowServer::displayIfNeeded()
{
    // Drawing may show or close windows.
    const std::vector<DesktopWindowSurface *> present = order_;
    for (DesktopWindowSurface *surface : present) {
        if (std::find(order_.begin(), order_.end(), surface) != order_.end()) {
            surface->displayIfNeeded();
        }
    }
    x_.flush();
}

void DesktopWindowServer::displaysChanged()
{
    for (DesktopWindowSurface *surface : order_) {
        surface->applyFrame();
    }
}

void DesktopWindowServer::bringToFront(DesktopWindowSurface &surface)
{
    std::erase(order_, &surface);
    const auto place =
        std::find_if(order_.begin(), order_.end(), [&](const DesktopWindowSurface *other) {
            return other->level() > surface.level();
        });
    const auto index = static_cast<std::size_t>(place - order_.begin());
    order_.insert(place, &surface);
    raiseFrom(index);
    x_.flush();
}

void DesktopWindowServer::takeAway(DesktopWindowSurface &surface)
{
    std::erase(order_, &surface);
    if (key_ == &surface) {
        key_ = nullptr;
        front_.giveBack();
    }
}

void DesktopWindowServer::raiseFrom(std::size_t place)
{
    for (std::size_t i = place; i < order_.size(); ++i) {
        order_[i]->raise();
    }
}

void DesktopWindowServer::giveKeyboard(DesktopWindowSurface &surface)
{
    front_.remember();
    key_ = &surface;
    // Not through the toolkit: it names the time of its last event, and a program that is driven
    // from afar gets so few that the X server would take the request for an outdated one.
    xcb_set_input_focus(x_.get(), XCB_INPUT_FOCUS_PARENT, surface.nativeWindow(), XCB_CURRENT_TIME);
    x_.flush();
}

void DesktopWindowServer::keyboardMoved(DesktopWindowSurface &surface, bool gained)
{
    // The news may be older than the window's disappearance.
    const bool isShown = std::find(order_.begin(), order_.end(), &surface) != order_.end();
    if (gained && isShown && key_ == nullptr) {
        key_ = &surface;
    } else if (!gained && key_ == &surface) {
        key_ = nullptr;
    }
}

void DesktopWindowServer::blendingChanged()
{
    for (DesktopWindowSurface *surface : order_) {
        surface->blendingChanged();
    }
    x_.flush();
}

std::vector<xcb_window_t> DesktopWindowServer::nativeWindows() const
{
    std::vector<xcb_window_t> windows;
    std::transform(order_.begin(), order_.end(), std::back_inserter(windows),
                   [](const DesktopWindowSurface *surface) { return surface->nativeWindow(); });
    return windows;
}

} // namespace orv::platform
