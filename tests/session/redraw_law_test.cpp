#include "SessionDesk.h"

#include "platform/raster/RasterContext.h"
#include "toolbox/AnnotationMenuController.h"

#include <algorithm>
#include <array>
#include <random>

namespace orv::test {
namespace {

using platform::EventType;
using platform::Point;

constexpr int kScenes = 3;
constexpr int kEditsOfAScene = 30;
/// Small, for each check paints all of it.
constexpr double kWidth = 640.0;
constexpr double kHeight = 400.0;

/// A session that is edited at random, as a presenter and a client do it together.
class RedrawLaw : public SessionDesk {
protected:
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random); }
    Point somewhere() { return {1.0 * upTo(640), 1.0 * upTo(400)}; }

    void edit()
    {
        switch (upTo(15)) {
        case 0:
            manager->handleUndoRequest();
            break;
        case 1:
            manager->handleRedoRequest();
            break;
        case 2:
            manager->handleEraseAllRequest();
            wait(upTo(1) == 0 ? 0.02 : 1.0);
            break;
        case 3:
            canvas().enterFlipchartEditingMode(upTo(12));
            break;
        case 4:
            canvas().enterStandardAnnotationMode();
            break;
        case 5:
            changeDisplay();
            break;
        case 6:
            type();
            break;
        case 7:
        case 8:
        case 9:
            chooseTool();
            break;
        default:
            drag();
        }
        wait(upTo(4) == 0 ? 0.6 : 0.0);
        drain();
    }
    void chooseTool()
    {
        constexpr std::array<const char *, 8> tools{"pen",       "highlighter", "eraser", "circle",
                                                    "rectangle", "text",        "line",   "stamp"};
        const std::string name = tools[static_cast<std::size_t>(upTo(7))];
        const auto &tool = manager->tools().at(name);
        applyTraits({upTo(5), upTo(3), upTo(3)}, *tool);
        tool->setAnnotationDash(upTo(3) == 0);
        manager->selectTool(*manager->outlets().button(name + "Button"));
    }
    void drag()
    {
        Point p = somewhere();
        desk.input().sendMouse(EventType::leftMouseDown, p);
        drain();
        for (int i = upTo(30); i > 0; --i) {
            p = {p.x + upTo(60) - 30.0, p.y + upTo(60) - 30.0};
            desk.input().sendMouse(EventType::leftMouseDragged, p);
            if (upTo(3) == 0) {
                drain();
                checkSurfaces();
            }
        }
        desk.input().sendMouse(EventType::leftMouseUp, p);
    }
    void type() { desk.input().sendKey(EventType::keyDown, 0, u"q"); }
    void changeDisplay() { setDisplay(scales[static_cast<std::size_t>(upTo(3))]); }
    void setDisplay(double scale)
    {
        desk.displays().setDisplays({{1, {{0.0, 0.0}, {kWidth, kHeight}}, scale}});
        drain();
    }
    /// Each shown window has, pixel for pixel, what a repaint of all of it shows.
    void checkSurfaces()
    {
        for (const platform::VirtualWindowSurface *surface : desk.windowServer().surfaces()) {
            const platform::ImagePtr shown = surface->contents();
            if (!surface->isVisible() || !shown) {
                continue;
            }
            const platform::Rect bounds{{}, surface->frame().size};
            const auto drawnAt = std::find_if(scales.begin(), scales.end(), [&](double scale) {
                const platform::PixelGrid grid{bounds.size, scale};
                return grid.pixelWidth() == shown->width() && grid.pixelHeight() == shown->height();
            });
            ASSERT_NE(drawnAt, scales.end()) << surface->title();
            const platform::PixelGrid grid{bounds.size, *drawnAt};
            platform::Image whole(grid.pixelWidth(), grid.pixelHeight());
            {
                platform::RasterContext context(whole, grid);
                surface->events().draw(context, bounds);
            }
            ASSERT_TRUE(*shown == whole) << surface->title() << ", scale " << grid.scale;
            ++checked;
        }
    }

    static constexpr std::array<double, 4> scales{1.0, 1.25, 1.5, 2.0};
    std::mt19937 random;
    int checked = 0;
};

TEST_F(RedrawLaw, WhateverHappensASurfaceShowsWhatAFullRepaintShows)
{
    for (unsigned scene = 0; scene < kScenes; ++scene) {
        random.seed(scene);
        setDisplay(1.0);
        open(12);
        for (int i = 0; i < kEditsOfAScene && !HasFatalFailure(); ++i) {
            edit();
            checkSurfaces();
            ASSERT_FALSE(HasFatalFailure()) << "scene " << scene << ", edit " << i;
        }
        manager->terminate();
        manager.reset();
        drain();
    }
    EXPECT_GT(checked, kScenes * kEditsOfAScene);
}

} // namespace
} // namespace orv::test
