#pragma once

#include "OrvAnnotation/DesktopPlatform.h"
#include "platform/desktop/DesktopPorts.h"
#include "platform/desktop/DesktopWindowSurface.h"
#include "platform/desktop/display/XClient.h"
#include "platform/ports/WindowServer.h"
#include "platform/values/Path.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orv::platform::test {

/// The one desktop platform of the test program.
DesktopPlatform &desktop();
DesktopPorts &ports();

/// Runs the event loop until `condition` holds; false after ten seconds.
[[nodiscard]] bool pumpUntil(const std::function<bool()> &condition);

constexpr int kScreenHeight = 1080;

/// A window of the library that keeps what it gets and draws a line along the drag.
class InkWindow final : public WindowEvents {
public:
    /// Points from the bottom left of the screen.
    explicit InkWindow(const Rect &frame, int level = 0);

    WindowSurface &surface() { return *surface_; }
    [[nodiscard]] std::uint64_t pixelsSent() const;
    [[nodiscard]] xcb_window_t nativeWindow() const;
    /// What was drawn last.
    [[nodiscard]] const Image &picture() const;
    void close() { surface_.reset(); }

    void sendEvent(const Event &event) override;
    void draw(GraphicsContext &context, const Rect &dirty) override;
    [[nodiscard]] std::string className() const override { return "InkWindow"; }

    /// Filled over the whole window before the ink.
    Color background = Color::clear();
    Color ink = {1.0, 0.0, 0.0, 1.0};
    std::vector<Event> events;
    std::vector<Rect> drawn;
    std::function<void(const Event &)> onEvent;
    /// Paints more, last.
    std::function<void(GraphicsContext &)> onDraw;

private:
    Path line_;
    Rect frame_;
    std::unique_ptr<WindowSurface> surface_;
};

/// A display that is set on the X screen, and taken away at the end of its life.
class PluggedDisplay {
public:
    /// `geometry` as in "960/254x1080/286+0+0": pixels and millimetres, then the place from the top
    /// left. A main one takes the output of the machine's only display, which is none while it
    /// does.
    PluggedDisplay(const std::string &name, const std::string &geometry, bool isMain);
    ~PluggedDisplay();
    PluggedDisplay(const PluggedDisplay &) = delete;
    PluggedDisplay &operator=(const PluggedDisplay &) = delete;

private:
    std::string name_;
};

/// Keeps the ports ready and the pointer in a corner that no test looks at.
class Desk : public testing::Test {
protected:
    void SetUp() override;

    /// True when the screen comes to show this colour (0xRRGGBB, give or take 2 of 255) there.
    [[nodiscard]] bool comesToShow(int x, int y, std::uint32_t color);
    /// A green window of another program, 600 by 400 at (200, 200), seen on the screen.
    xcb_window_t showGreenWindow();

    XClient client;
};

} // namespace orv::platform::test
