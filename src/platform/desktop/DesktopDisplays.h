#pragma once

#include "platform/desktop/DesktopMainThread.h"
#include "platform/desktop/DeviceSpace.h"
#include "platform/desktop/XConnection.h"
#include "platform/ports/Displays.h"

#include <QObject>

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

class QScreen;

namespace orv::platform {

/// The displays of the X screen, kept as they stood at the last change.
///
/// A display keeps its ID by its output's name: the same in every run, and again when it returns.
///
/// Thread   made and destroyed on the main thread; questions from any.
class DesktopDisplays final : public Displays {
public:
    DesktopDisplays(const XConnection &x, DesktopMainThread &mainThread);

    /// Called on the main thread after a change, before its observers are told.
    void setChanged(std::function<void()> changed) { changed_ = std::move(changed); }
    [[nodiscard]] DeviceSpace deviceSpace() const;

    [[nodiscard]] std::vector<Screen> screens() const override;
    [[nodiscard]] DisplayID mainDisplayID() const override;
    [[nodiscard]] Rect bounds(DisplayID display) const override;
    [[nodiscard]] Point mouseLocation() const override;

private:
    void watch(QScreen *screen);
    void refreshSoon();
    void refresh();
    DisplayID displayID(const std::string &name);

    const XConnection &x_;
    DesktopMainThread &mainThread_;
    std::function<void()> changed_;
    bool refreshPending_ = false;

    mutable std::mutex mutex_;
    std::vector<Screen> screens_;
    DeviceSpace space_;
    std::map<std::string, DisplayID> ids_;
    /// Signal connections end with it.
    QObject receiver_;
};

} // namespace orv::platform
