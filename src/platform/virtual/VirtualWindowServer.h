#pragma once

#include "platform/ports/WindowServer.h"
#include "platform/virtual/VirtualWindowSurface.h"

#include <memory>
#include <vector>

namespace orv::platform {

class Displays;
class MainThread;

/// The windows of a virtual desk and the order in which they lie.
///
/// A surface that asks to be displayed is drawn once at the next drain, however often it asked.
///
/// Thread   main thread only.
class VirtualWindowServer final : public WindowServer {
public:
    /// Both outlive this, and this outlives its surfaces.
    VirtualWindowServer(MainThread &mainThread, Displays &displays);

    [[nodiscard]] std::unique_ptr<WindowSurface> createSurface(WindowEvents &events) override;
    [[nodiscard]] std::vector<int> orderedWindows() const override;
    [[nodiscard]] std::vector<WindowInfo> windows() const override;

    /// All surfaces: the shown ones from the frontmost to the rearmost, then the others by number.
    [[nodiscard]] std::vector<VirtualWindowSurface *> surfaces() const;
    /// Null when the window does not exist (any more).
    [[nodiscard]] VirtualWindowSurface *surface(int windowNumber) const;
    /// 0 when no window has the keyboard.
    [[nodiscard]] int keyWindow() const { return keyWindow_; }
    /// The topmost shown window that takes the mouse at a global point; null when there is none.
    [[nodiscard]] VirtualWindowSurface *windowAt(Point global) const;

private:
    friend class VirtualWindowSurface;

    void remove(const VirtualWindowSurface &surface);
    void raise(const VirtualWindowSurface &surface);
    void setKeyWindow(int windowNumber) { keyWindow_ = windowNumber; }
    void hidden(int windowNumber);
    void scheduleDraw(int windowNumber);
    [[nodiscard]] double scaleOf(const Rect &frame) const;

    MainThread &mainThread_;
    Displays &displays_;
    /// The one that was raised last stands first, whatever the levels.
    std::vector<VirtualWindowSurface *> stack_;
    int lastNumber_ = 0;
    int keyWindow_ = 0;
};

} // namespace orv::platform
