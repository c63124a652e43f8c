#pragma once

#include "platform/ports/WindowServer.h"
#include "platform/raster/FramePainter.h"
#include "platform/raster/PixelRect.h"
#include "platform/values/Image.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orv::platform {

class VirtualWindowServer;

/// A window's area in memory: what was set on it and what was painted into it.
///
/// Owner    the window, through the port; it must go before the window server does.
/// Thread   main thread only.
class VirtualWindowSurface final : public WindowSurface {
public:
    VirtualWindowSurface(VirtualWindowServer &server, WindowEvents &events, int windowNumber);
    ~VirtualWindowSurface() override;
    VirtualWindowSurface(const VirtualWindowSurface &) = delete;
    VirtualWindowSurface &operator=(const VirtualWindowSurface &) = delete;

    [[nodiscard]] int windowNumber() const override { return windowNumber_; }
    void setFrame(const Rect &frame) override;
    void setLevel(int level) override;
    void setTitle(const std::string &title) override;
    void setStyleMask(std::uint32_t mask) override;
    void setHasShadow(bool hasShadow) override;
    void setAlpha(double alpha) override;
    void setIgnoresMouseEvents(bool ignores) override;
    void setCursorRects(const std::vector<CursorRect> &rects) override { cursorRects_ = rects; }
    void orderFront() override;
    void orderOut() override;
    void makeKey() override;
    [[nodiscard]] bool isKey() const override;
    void setNeedsDisplay(const Rect &rect) override;
    void displayIfNeeded() override;

    [[nodiscard]] WindowEvents &events() const { return events_; }
    [[nodiscard]] const Rect &frame() const { return frame_; }
    [[nodiscard]] int level() const { return level_; }
    [[nodiscard]] const std::string &title() const { return title_; }
    [[nodiscard]] std::uint32_t styleMask() const { return styleMask_; }
    [[nodiscard]] bool hasShadow() const { return hasShadow_; }
    [[nodiscard]] double alpha() const { return alpha_; }
    [[nodiscard]] bool ignoresMouseEvents() const { return ignoresMouseEvents_; }
    [[nodiscard]] const std::vector<CursorRect> &cursorRects() const { return cursorRects_; }
    [[nodiscard]] bool isVisible() const { return visible_; }
    /// What was drawn last, at the scale of the window's display; null before the first draw.
    [[nodiscard]] ImagePtr contents() const { return contents_; }
    /// How often `WindowEvents::draw` was called.
    [[nodiscard]] int drawCount() const { return drawCount_; }

private:
    void prepareContents(const PixelGrid &grid);

    VirtualWindowServer &server_;
    WindowEvents &events_;
    int windowNumber_;
    Rect frame_;
    int level_ = 0;
    std::string title_;
    std::uint32_t styleMask_ = 0;
    bool hasShadow_ = true;
    double alpha_ = 1.0;
    bool ignoresMouseEvents_ = false;
    std::vector<CursorRect> cursorRects_;
    bool visible_ = false;
    bool drawScheduled_ = false;
    Rect dirty_;
    std::shared_ptr<Image> contents_;
    double contentsScale_ = 0.0;
    std::shared_ptr<FramePainter> painter_ = std::make_shared<FramePainter>();
    int drawCount_ = 0;
};

} // namespace orv::platform
