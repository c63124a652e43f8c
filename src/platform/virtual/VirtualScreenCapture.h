#pragma once

#include "platform/ports/Displays.h"
#include "platform/ports/ScreenCapture.h"

namespace orv::platform {

class VirtualDesktop;
class VirtualWindowServer;

/// Pictures of the composed virtual desk.
///
/// Thread   main thread only.
class VirtualScreenCapture final : public ScreenCapture {
public:
    /// All outlive this.
    VirtualScreenCapture(Displays &displays, const VirtualWindowServer &windows,
                         const VirtualDesktop &desktop);

    [[nodiscard]] ImagePtr capture(const Rect &rect, int windowNumber,
                                   bool includingWindow) override;

    /// A desk whose pictures can't be had, until it is set back.
    void setFails(bool fails) { fails_ = fails; }

private:
    Displays &displays_;
    const VirtualWindowServer &windows_;
    const VirtualDesktop &desktop_;
    bool fails_ = false;
};

} // namespace orv::platform
