#include "platform/desktop/DesktopDisplays.h"

#include "platform/foundation/NotificationCenter.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace orv::platform {

namespace {

/// Documents are in points of the display, and X pixels are what programs here call points.
constexpr double kScale = 1.0;

/// FNV-1a, kept positive as a signed 32-bit number.
DisplayID hashOf(const std::string &name)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    return std::max<DisplayID>(hash & 0x7fffffffU, 1);
}

} // namespace

DesktopDisplays::DesktopDisplays(const XConnection &x, DesktopMainThread &mainThread)
    : x_(x), mainThread_(mainThread)
{
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &receiver_, [this](QScreen *screen) {
        watch(screen);
        refreshSoon();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &receiver_,
                     [this] { refreshSoon(); });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &receiver_,
                     [this] { refreshSoon(); });
    for (QScreen *screen : QGuiApplication::screens()) {
        watch(screen);
    }
    refresh();
}

void DesktopDisplays::watch(QScreen *screen)
{
    QObject::connect(screen, &QScreen::geometryChanged, &receiver_, [this] { refreshSoon(); });
}

void DesktopDisplays::refreshSoon()
{
    if (std::exchange(refreshPending_, true)) {
        return;
    }
    mainThread_.callSoon([this] {
        refreshPending_ = false;
        refresh();
        if (changed_) {
            changed_();
        }
        NotificationCenter::local().post(NSApplicationDidChangeScreenParametersNotification);
    });
}

void DesktopDisplays::refresh()
{
    QList<QScreen *> present = QGuiApplication::screens();
    QScreen *primary = QGuiApplication::primaryScreen();
    std::stable_partition(present.begin(), present.end(),
                          [primary](const QScreen *screen) { return screen == primary; });

    const std::lock_guard lock(mutex_);
    const QRect main = primary != nullptr ? primary->geometry() : QRect();
    space_ = {kScale, main.x(), main.y() + main.height()};
    screens_.clear();
    for (const QScreen *screen : std::as_const(present)) {
        screens_.push_back({displayID(screen->name().toStdString()),
                            space_.toPoints(screen->geometry()), space_.scale});
    }
}

DisplayID DesktopDisplays::displayID(const std::string &name)
{
    if (const auto known = ids_.find(name); known != ids_.end()) {
        return known->second;
    }
    DisplayID id = hashOf(name);
    while (std::any_of(ids_.begin(), ids_.end(),
                       [id](const auto &entry) { return entry.second == id; })) {
        id = std::max<DisplayID>((id + 1) & 0x7fffffffU, 1);
    }
    ids_.emplace(name, id);
    return id;
}

DeviceSpace DesktopDisplays::deviceSpace() const
{
    const std::lock_guard lock(mutex_);
    return space_;
}

std::vector<Screen> DesktopDisplays::screens() const
{
    const std::lock_guard lock(mutex_);
    return screens_;
}

DisplayID DesktopDisplays::mainDisplayID() const
{
    const std::lock_guard lock(mutex_);
    return screens_.empty() ? 0 : screens_.front().displayID;
}

Rect DesktopDisplays::bounds(DisplayID display) const
{
    const std::vector<Screen> present = screens();
    const auto found = std::find_if(present.begin(), present.end(),
                                    [display](const Screen &s) { return s.displayID == display; });
    if (found == present.end()) {
        return {};
    }
    const double mainTop = present.front().frame.maxY();
    return Rect::make(found->frame.minX(), mainTop - found->frame.maxY(), found->frame.size.width,
                      found->frame.size.height);
}

Point DesktopDisplays::mouseLocation() const
{
    const XReply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(x_.get(), xcb_query_pointer(x_.get(), x_.root()), nullptr));
    return pointer ? deviceSpace().toPoints(QPointF(pointer->root_x, pointer->root_y)) : Point{};
}

} // namespace orv::platform
