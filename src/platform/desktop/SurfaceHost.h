#pragma once

#include "platform/desktop/DesktopMainThread.h"
#include "platform/desktop/DeviceSpace.h"
#include "platform/desktop/PointerLink.h"
#include "platform/desktop/XConnection.h"

#include <cstdint>
#include <string>

namespace orv::platform {

class DesktopWindowSurface;

/// What a surface needs of the window server that made it. Main thread only.
class SurfaceHost {
public:
    [[nodiscard]] virtual const XConnection &x() const = 0;
    [[nodiscard]] virtual DesktopMainThread &mainThread() = 0;
    [[nodiscard]] virtual PointerLink &pointerLink() = 0;
    [[nodiscard]] virtual DeviceSpace deviceSpace() const = 0;
    /// Whether a compositor blends windows by their alpha.
    [[nodiscard]] virtual bool isBlended() const = 0;
    /// The class that window listings show beside a window's own name.
    [[nodiscard]] virtual std::string applicationClass() const = 0;
    [[nodiscard]] virtual std::int32_t nextEventNumber() = 0;

    /// Draws what surfaces have to draw before the loop next waits.
    virtual void drawSoon() = 0;
    /// Shown or shown again, or on another level: it belongs in front of its level.
    virtual void bringToFront(DesktopWindowSurface &surface) = 0;
    /// No longer shown, or about to go.
    virtual void takeAway(DesktopWindowSurface &surface) = 0;

    virtual void giveKeyboard(DesktopWindowSurface &surface) = 0;
    /// The X server says who has the keyboard.
    virtual void keyboardMoved(DesktopWindowSurface &surface, bool gained) = 0;
    [[nodiscard]] virtual bool isKey(const DesktopWindowSurface &surface) const = 0;

protected:
    ~SurfaceHost() = default;
};

} // namespace orv::platform
