#pragma once

#include "platform/desktop/DesktopMainThread.h"
#include "platform/desktop/FrontWindow.h"
#include "platform/desktop/XConnection.h"

#include <QAbstractNativeEventFilter>

#include <functional>
#include <vector>

namespace orv::platform {

/// Brings our windows back above others that came up later, such as menus.
///
/// It does not fight: where another program wants to be above all as well, it tries more and more
/// seldom.
///
/// Thread   main thread only.
class StackKeeper final : public QAbstractNativeEventFilter {
public:
    /// `ours` answers our shown windows; `restack` puts them above all others.
    StackKeeper(const XConnection &x, const FrontWindow &front, DesktopMainThread &mainThread,
                std::function<std::vector<xcb_window_t>()> ours, std::function<void()> restack);
    ~StackKeeper() override;
    StackKeeper(const StackKeeper &) = delete;
    StackKeeper &operator=(const StackKeeper &) = delete;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    void checkLater();
    void check();
    [[nodiscard]] bool isCovered() const;

    const XConnection &x_;
    const FrontWindow &front_;
    DesktopMainThread &mainThread_;
    std::function<std::vector<xcb_window_t>()> ours_;
    std::function<void()> restack_;
    bool pending_ = false;
    double delay_;
    double lastRestack_ = 0.0;
    TaskHandle timer_;
};

} // namespace orv::platform
