#pragma once

#include "platform/desktop/CompositorWatch.h"
#include "platform/desktop/DesktopDisplays.h"
#include "platform/desktop/DesktopMainThread.h"
#include "platform/desktop/FrontWindow.h"
#include "platform/desktop/StackKeeper.h"
#include "platform/desktop/SurfaceHost.h"
#include "platform/desktop/XConnection.h"
#include "platform/ports/WindowServer.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orv::platform {

/// The overlay windows of this process on an X display: their order, their keyboard, their drawing.
///
/// Owner    the surfaces belong to their windows and are all gone before it is.
/// Thread   main thread only.
class DesktopWindowServer final : public WindowServer, private SurfaceHost {
public:
    /// What it is given outlives it. `applicationClass` names the host in window listings.
    DesktopWindowServer(const XConnection &x, DesktopMainThread &mainThread,
                        DesktopDisplays &displays, FrontWindow &front,
                        std::string applicationClass);
    ~DesktopWindowServer();
    DesktopWindowServer(const DesktopWindowServer &) = delete;
    DesktopWindowServer &operator=(const DesktopWindowServer &) = delete;

    [[nodiscard]] std::unique_ptr<WindowSurface> createSurface(WindowEvents &events) override;
    [[nodiscard]] std::vector<int> orderedWindows() const override;
    [[nodiscard]] std::vector<WindowInfo> windows() const override;

    /// Whether a compositor blends windows by their alpha; else they are shaped to their ink.
    [[nodiscard]] bool isBlended() const override;
    /// The shown surfaces from the rearmost to the frontmost.
    [[nodiscard]] const std::vector<DesktopWindowSurface *> &shownSurfaces() const
    {
        return order_;
    }
    /// Draws now what surfaces have to draw.
    void displayIfNeeded();
    /// The displays have moved: so do the windows.
    void displaysChanged();

private:
    [[nodiscard]] const XConnection &x() const override { return x_; }
    [[nodiscard]] DesktopMainThread &mainThread() override { return mainThread_; }
    [[nodiscard]] PointerLink &pointerLink() override { return pointerLink_; }
    [[nodiscard]] DeviceSpace deviceSpace() const override { return displays_.deviceSpace(); }
    [[nodiscard]] std::string applicationClass() const override { return applicationClass_; }
    [[nodiscard]] std::int32_t nextEventNumber() override { return ++lastEvent_; }
    void drawSoon() override;
    void bringToFront(DesktopWindowSurface &surface) override;
    void takeAway(DesktopWindowSurface &surface) override;
    void giveKeyboard(DesktopWindowSurface &surface) override;
    void keyboardMoved(DesktopWindowSurface &surface, bool gained) override;
    [[nodiscard]] bool isKey(const DesktopWindowSurface &surface) const override
    {
        return key_ == &surface;
    }

    void blendingChanged();
    void raiseFrom(std::size_t place);
    [[nodiscard]] std::vector<xcb_window_t> nativeWindows() const;

    const XConnection &x_;
    DesktopMainThread &mainThread_;
    DesktopDisplays &displays_;
    FrontWindow &front_;
    std::string applicationClass_;
    int lastNumber_ = 0;
    std::int32_t lastEvent_ = 0;
    bool drawPending_ = false;
    DesktopWindowSurface *key_ = nullptr;
    /// Shown surfaces, the rearmost first.
    std::vector<DesktopWindowSurface *> order_;
    PointerLink pointerLink_;
    CompositorWatch compositor_;
    StackKeeper keeper_;
};

} // namespace orv::platform
