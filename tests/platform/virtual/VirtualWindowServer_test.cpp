#include "Desk.h"

#include "platform/foundation/Exception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VirtualWindowServerTest : public testing::Test {
protected:
    Desk desk_;
    VirtualMainThread &main_ = desk_.platform.mainThread();
    VirtualWindowServer &server_ = desk_.platform.windowServer();
    NotingWindow first_{server_, Rect::make(0.0, 0.0, 100.0, 50.0)};
    NotingWindow second_{server_, Rect::make(20.0, 20.0, 100.0, 50.0)};
    NotingWindow third_{server_, Rect::make(40.0, 40.0, 100.0, 50.0)};
};

TEST_F(VirtualWindowServerTest, NumbersCountUpFromOneAndAreNotUsedAgain)
{
    third_.close();
    const NotingWindow next(server_, Rect{});

    EXPECT_EQ(first_.number(), 1);
    EXPECT_EQ(second_.number(), 2);
    EXPECT_EQ(next.number(), 4);
    EXPECT_EQ(server_.surface(3), nullptr);
}

TEST_F(VirtualWindowServerTest, LevelsGoBeforeTheOrderOfRaising)
{
    for (NotingWindow *window : {&first_, &second_, &third_}) {
        window->surface().orderFront();
    }
    EXPECT_THAT(server_.orderedWindows(), ElementsAre(3, 2, 1));

    first_.surface().setLevel(998);
    second_.surface().orderFront();
    EXPECT_THAT(server_.orderedWindows(), ElementsAre(1, 2, 3));

    first_.surface().orderOut();
    EXPECT_THAT(server_.orderedWindows(), ElementsAre(2, 3));
    EXPECT_THAT(server_.surfaces(),
                ElementsAre(&second_.surface(), &third_.surface(), &first_.surface()));
}

TEST_F(VirtualWindowServerTest, OneShownWindowHasTheKeyboard)
{
    first_.surface().makeKey();
    EXPECT_EQ(server_.keyWindow(), 0);

    first_.surface().orderFront();
    second_.surface().orderFront();
    first_.surface().makeKey();
    EXPECT_TRUE(first_.surface().isKey());
    second_.surface().makeKey();
    EXPECT_FALSE(first_.surface().isKey());
    EXPECT_TRUE(second_.surface().isKey());

    second_.surface().orderOut();
    EXPECT_EQ(server_.keyWindow(), 0);
    first_.surface().makeKey();
    first_.close();
    EXPECT_EQ(server_.keyWindow(), 0);
}

TEST_F(VirtualWindowServerTest, SurfacesShowWhatWasSetOnThem)
{
    VirtualWindowSurface &surface = first_.surface();
    surface.setTitle("Ink");
    surface.setStyleMask(style::nonactivatingPanel);
    surface.setHasShadow(false);
    surface.setAlpha(0.4);
    surface.setIgnoresMouseEvents(true);
    surface.setLevel(7);

    EXPECT_EQ(surface.title(), "Ink");
    EXPECT_EQ(surface.styleMask(), 128U);
    EXPECT_FALSE(surface.hasShadow());
    EXPECT_EQ(surface.alpha(), 0.4);
    EXPECT_TRUE(surface.ignoresMouseEvents());
    EXPECT_EQ(surface.level(), 7);
    EXPECT_EQ(surface.frame(), Rect::make(0.0, 0.0, 100.0, 50.0));
    EXPECT_EQ(&surface.events(), &first_);
    EXPECT_FALSE(surface.isVisible());
    EXPECT_EQ(surface.contents(), nullptr);
}

TEST_F(VirtualWindowServerTest, SeveralRequestsMakeOneDrawOfTheWhole)
{
    first_.surface().orderFront();
    main_.drain();
    ASSERT_THAT(first_.drawn, ElementsAre(Rect::make(0.0, 0.0, 100.0, 50.0)));

    first_.surface().setNeedsDisplay(Rect::make(1.0, 1.0, 2.0, 2.0));
    first_.surface().setNeedsDisplay(Rect::make(5.5, 5.5, 2.0, 500.0));
    main_.drain();

    ASSERT_EQ(first_.drawn.size(), 2U);
    EXPECT_EQ(first_.drawn[1], Rect::make(0.0, 0.0, 100.0, 50.0));
    EXPECT_EQ(first_.surface().drawCount(), 2);
}

TEST_F(VirtualWindowServerTest, NothingIsDrawnThatIsNotShownOrOutside)
{
    first_.surface().setNeedsDisplay(Rect::make(0.0, 0.0, 10.0, 10.0));
    first_.surface().displayIfNeeded();
    main_.drain();
    EXPECT_THAT(first_.drawn, IsEmpty());

    first_.surface().orderFront();
    first_.surface().orderOut();
    main_.drain();
    EXPECT_THAT(first_.drawn, IsEmpty());

    first_.surface().orderFront();
    main_.drain();
    first_.surface().setNeedsDisplay(Rect::make(200.0, 0.0, 10.0, 10.0));
    main_.drain();
    EXPECT_EQ(first_.drawn.size(), 1U);
}

TEST_F(VirtualWindowServerTest, DisplayIfNeededDrawsAtOnceAndOnlyOnce)
{
    first_.surface().orderFront();

    first_.surface().displayIfNeeded();
    first_.surface().displayIfNeeded();
    EXPECT_EQ(first_.drawn.size(), 1U);
    main_.drain();

    EXPECT_EQ(first_.drawn.size(), 1U);
}

TEST_F(VirtualWindowServerTest, ContentsShowTheWholeFrameAndBeginTransparent)
{
    first_.surface().orderFront();
    main_.drain();
    const ImagePtr before = first_.surface().contents();
    ASSERT_EQ(before->pixel(0, 0), 0xFFFF0000U);

    first_.setColor({0.0, 0.0, 1.0, 0.6});
    first_.surface().setNeedsDisplay(Rect::make(0.0, 0.0, 10.0, 10.0));
    main_.drain();

    const ImagePtr after = first_.surface().contents();
    EXPECT_EQ(after->pixel(0, 0), 0x99000099U);
    EXPECT_EQ(after->pixel(0, 45), 0x99000099U);
    EXPECT_EQ(after->pixel(10, 45), 0x99000099U);
}

TEST_F(VirtualWindowServerTest, ContentsHaveTheScaleOfTheirDisplay)
{
    desk_.platform.displays().setDisplays({{1, Rect::make(0.0, 0.0, 200.0, 200.0), 1.0},
                                           {2, Rect::make(200.0, 0.0, 200.0, 200.0), 1.5}});
    first_.surface().orderFront();
    main_.drain();
    EXPECT_EQ(first_.surface().contents()->width(), 100);

    first_.surface().setFrame(Rect::make(160.0, 0.0, 100.0, 50.0));
    main_.drain();

    EXPECT_EQ(first_.surface().contents()->width(), 150);
    EXPECT_EQ(first_.surface().contents()->height(), 75);
    EXPECT_EQ(first_.drawn.size(), 2U);
}

TEST_F(VirtualWindowServerTest, MovingDrawsNothingResizingDrawsAll)
{
    first_.surface().orderFront();
    main_.drain();

    first_.surface().setFrame(Rect::make(300.0, 200.0, 100.0, 50.0));
    main_.drain();
    EXPECT_EQ(first_.drawn.size(), 1U);
    first_.surface().setFrame(Rect::make(300.0, 200.0, 30.0, 60.0));
    main_.drain();

    EXPECT_EQ(first_.drawn.back(), Rect::make(0.0, 0.0, 30.0, 60.0));
    EXPECT_EQ(first_.surface().contents()->height(), 60);
}

TEST_F(VirtualWindowServerTest, AWindowMayGoBeforeItIsDrawn)
{
    first_.surface().orderFront();
    first_.close();

    main_.drain();

    EXPECT_THAT(first_.drawn, IsEmpty());
}

class VanishingWindow : public NotingWindow {
public:
    using NotingWindow::NotingWindow;
    void sendEvent(const Event &event) override
    {
        close();
        NotingWindow::sendEvent(event);
    }
    void draw(GraphicsContext &context, const Rect &dirty) override
    {
        close();
        NotingWindow::draw(context, dirty);
    }
};

TEST_F(VirtualWindowServerTest, AWindowMayGoWhileItIsDrawn)
{
    VanishingWindow vanishing(server_, Rect::make(0.0, 0.0, 10.0, 10.0));
    vanishing.surface().orderFront();

    main_.drain();

    EXPECT_EQ(vanishing.drawn.size(), 1U);
    EXPECT_THAT(server_.orderedWindows(), IsEmpty());
}

TEST_F(VirtualWindowServerTest, AWindowThatThrowsWhileDrawingStopsNobodyElse)
{
    class ThrowingWindow : public NotingWindow {
    public:
        using NotingWindow::NotingWindow;
        void draw(GraphicsContext &, const Rect &) override { throw Exception("no ink"); }
    };
    std::string log;
    desk_.platform.hooks().systemLog = [&log](const std::string &line) { log += line; };
    const ThrowingWindow throwing(server_, Rect::make(0.0, 0.0, 10.0, 10.0));
    throwing.surface().orderFront();
    first_.surface().orderFront();

    main_.drain();

    EXPECT_THAT(log, testing::HasSubstr("no ink"));
    EXPECT_EQ(first_.drawn.size(), 1U);
}

TEST_F(VirtualWindowServerTest, TheMouseFindsTheTopmostWindowThatTakesIt)
{
    for (NotingWindow *window : {&first_, &second_, &third_}) {
        window->surface().orderFront();
    }

    EXPECT_EQ(server_.windowAt({50.0, 45.0}), &third_.surface());
    EXPECT_EQ(server_.windowAt({30.0, 45.0}), &second_.surface());
    third_.surface().setIgnoresMouseEvents(true);
    EXPECT_EQ(server_.windowAt({50.0, 45.0}), &second_.surface());
    EXPECT_EQ(server_.windowAt({500.0, 45.0}), nullptr);
    // The upper edge belongs to a window, the lower one does not.
    EXPECT_EQ(server_.windowAt({5.0, 50.0}), &first_.surface());
    EXPECT_EQ(server_.windowAt({5.0, 0.0}), nullptr);
}

TEST_F(VirtualWindowServerTest, EventsComeInWindowCoordinatesAndAreCounted)
{
    second_.surface().orderFront();
    main_.advance(1.5);
    VirtualInput &input = desk_.platform.input();

    const int target = input.sendMouse(EventType::leftMouseDown, {30.0, 45.0}, modifier::shift);
    input.sendMouse(EventType::mouseMoved, {31.0, 46.0});

    EXPECT_EQ(target, 2);
    ASSERT_EQ(second_.events.size(), 2U);
    const Event &down = second_.events[0];
    EXPECT_EQ(down.type, EventType::leftMouseDown);
    EXPECT_EQ(down.location, (Point{10.0, 25.0}));
    EXPECT_EQ(down.modifierFlags, modifier::shift);
    EXPECT_EQ(down.windowNumber, 2);
    EXPECT_EQ(down.clickCount, 1);
    EXPECT_EQ(down.eventNumber, 1);
    EXPECT_EQ(down.timestamp, 1.5);
    EXPECT_EQ(second_.events[1].clickCount, 0);
    EXPECT_EQ(second_.events[1].eventNumber, 2);
    EXPECT_EQ(desk_.platform.displays().mouseLocation(), (Point{31.0, 46.0}));
}

TEST_F(VirtualWindowServerTest, DragsAndTheReleaseGoWhereThePressWent)
{
    first_.surface().orderFront();
    second_.surface().orderFront();
    VirtualInput &input = desk_.platform.input();

    input.sendMouse(EventType::leftMouseDown, {5.0, 5.0});
    EXPECT_EQ(input.sendMouse(EventType::leftMouseDragged, {110.0, 60.0}), 1);
    EXPECT_EQ(input.sendMouse(EventType::rightMouseDown, {110.0, 60.0}), 2);
    EXPECT_EQ(input.sendMouse(EventType::leftMouseUp, {110.0, 60.0}), 1);
    EXPECT_EQ(input.sendMouse(EventType::leftMouseDragged, {110.0, 60.0}), 2);

    EXPECT_EQ(first_.events.back().location, (Point{110.0, 60.0}));
    EXPECT_EQ(second_.events.front().button, MouseButton::right);
}

TEST_F(VirtualWindowServerTest, APressBesideAllWindowsKeepsItsDragsFromThem)
{
    first_.surface().orderFront();
    VirtualInput &input = desk_.platform.input();

    EXPECT_EQ(input.sendMouse(EventType::leftMouseDown, {500.0, 500.0}), 0);
    EXPECT_EQ(input.sendMouse(EventType::leftMouseDragged, {5.0, 5.0}), 0);
    EXPECT_EQ(input.sendMouse(EventType::leftMouseUp, {5.0, 5.0}), 0);

    EXPECT_THAT(first_.events, IsEmpty());
}

TEST_F(VirtualWindowServerTest, AWindowMayGoWhileItHandlesAPress)
{
    VanishingWindow vanishing(server_, Rect::make(0.0, 0.0, 10.0, 10.0));
    vanishing.surface().orderFront();
    VirtualInput &input = desk_.platform.input();

    const int number = input.sendMouse(EventType::leftMouseDown, {5.0, 5.0});

    EXPECT_EQ(number, 4);
    EXPECT_EQ(vanishing.events.size(), 1U);
    EXPECT_EQ(input.sendMouse(EventType::leftMouseDragged, {6.0, 6.0}), 0);
    EXPECT_EQ(input.sendMouse(EventType::leftMouseUp, {6.0, 6.0}), 0);
}

TEST_F(VirtualWindowServerTest, KeysGoToTheKeyWindow)
{
    first_.surface().orderFront();
    VirtualInput &input = desk_.platform.input();
    EXPECT_EQ(input.sendKey(EventType::keyDown, key::escape, u"\x1b"), 0);

    first_.surface().makeKey();
    EXPECT_EQ(input.sendKey(EventType::keyDown, 4, u"h", modifier::shift), 1);

    ASSERT_EQ(first_.events.size(), 1U);
    EXPECT_EQ(first_.events[0].keyCode, 4);
    EXPECT_EQ(first_.events[0].characters, u"h");
    EXPECT_EQ(first_.events[0].modifierFlags, modifier::shift);
    EXPECT_EQ(first_.events[0].windowNumber, 1);
}

} // namespace
} // namespace orv::platform
