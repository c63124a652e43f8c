#pragma once

#include "platform/virtual/VirtualPlatform.h"
#include "support/VirtualDesk.h"

#include <string>
#include <utility>
#include <vector>

namespace orv::platform {

using test::TemporaryFolder;

/// A virtual platform with a home folder of its own.
class Desk {
public:
    explicit Desk(VirtualSettings settings = {}) : platform(withHome(std::move(settings), home)) {}

    TemporaryFolder home;
    VirtualPlatform platform;

private:
    static VirtualSettings withHome(VirtualSettings settings, const TemporaryFolder &home)
    {
        settings.home = home.path();
        return settings;
    }
};

/// A window that notes what it gets and paints itself in one colour.
class NotingWindow : public WindowEvents {
public:
    NotingWindow(VirtualWindowServer &server, const Rect &frame, const Color &color = {1.0, 0, 0})
        : color_(color), surface_(server.createSurface(*this)), server_(server)
    {
        surface_->setFrame(frame);
    }
    virtual ~NotingWindow() = default;
    NotingWindow(const NotingWindow &) = delete;
    NotingWindow &operator=(const NotingWindow &) = delete;

    void sendEvent(const Event &event) override { events.push_back(event); }
    void draw(GraphicsContext &context, const Rect &dirty) override
    {
        drawn.push_back(dirty);
        context.setFillColor(color_);
        context.fillRect(Rect::make(0.0, 0.0, 1e4, 1e4), CompositingOperation::sourceOver);
    }
    [[nodiscard]] std::string className() const override { return "NotingWindow"; }

    [[nodiscard]] VirtualWindowSurface &surface() const
    {
        return *server_.surface(surface_->windowNumber());
    }
    [[nodiscard]] int number() const { return surface_->windowNumber(); }
    void close() { surface_.reset(); }
    void setColor(const Color &color) { color_ = color; }

    std::vector<Event> events;
    std::vector<Rect> drawn;

private:
    Color color_;
    std::unique_ptr<WindowSurface> surface_;
    VirtualWindowServer &server_;
};

} // namespace orv::platform
