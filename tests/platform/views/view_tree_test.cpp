#include "platform/views/Button.h"
#include "platform/views/Window.h"
#include "support/RecordingContext.h"
#include "support/VirtualDesk.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using platform::Button;
using platform::Event;
using platform::EventType;
using platform::Point;
using platform::Rect;
using platform::View;
using platform::Window;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

/// Notes the mouse and key events that reach it.
class NotingView : public View {
public:
    using View::View;
    std::vector<std::string> notes;
    std::function<void()> onPress;

    void mouseDown(const Event &) override
    {
        notes.emplace_back("down");
        if (onPress) {
            onPress();
        }
    }
    void mouseDragged(const Event &) override { notes.emplace_back("drag"); }
    void mouseUp(const Event &) override { notes.emplace_back("up"); }
    void mouseMoved(const Event &) override { notes.emplace_back("move"); }
    void rightMouseDown(const Event &) override { notes.emplace_back("right down"); }
    void keyDown(const Event &) override { notes.emplace_back("key"); }
    void drawRect(platform::GraphicsContext &context, const Rect &dirty) override
    {
        context.fillRect(dirty, platform::CompositingOperation::copy);
    }
};

class ViewTree : public VirtualDesk {
protected:
    ViewTree()
    {
        window = std::make_shared<Window>(Rect::make(100.0, 100.0, 200.0, 100.0), 0);
        view = std::make_shared<NotingView>(Rect::make(10.0, 20.0, 50.0, 40.0));
        window->contentView()->addSubview(view);
        window->orderFront();
        drain();
    }
    void mouse(EventType type, Point at) const
    {
        Event event;
        event.type = type;
        event.location = at;
        event.windowNumber = window->windowNumber();
        window->sendEvent(event);
    }

    std::shared_ptr<Window> window;
    std::shared_ptr<NotingView> view;
};

TEST_F(ViewTree, TheTopEdgeOfAFrameIsInItAndTheBottomEdgeIsNot)
{
    View &root = *window->contentView();
    EXPECT_EQ(root.hitTest({10.0, 60.0}), view.get());
    EXPECT_EQ(root.hitTest({10.0, 20.0}), &root);
    EXPECT_EQ(root.hitTest({60.0, 40.0}), &root) << "nor is the right edge";
    EXPECT_EQ(root.hitTest({10.0, 40.0}), view.get());
    EXPECT_EQ(root.hitTest({500.0, 40.0}), nullptr);
}

TEST_F(ViewTree, TheFrontmostVisibleViewIsHit)
{
    const auto above = std::make_shared<NotingView>(view->frame());
    window->contentView()->addSubview(above);
    EXPECT_EQ(window->contentView()->hitTest({20.0, 30.0}), above.get());
    above->setHidden(true);
    EXPECT_EQ(window->contentView()->hitTest({20.0, 30.0}), view.get());
}

TEST_F(ViewTree, AMouseEventOfAnotherWindowsNumberIsNotTaken)
{
    Event event;
    event.type = EventType::leftMouseDown;
    event.location = {20.0, 30.0};
    event.windowNumber = window->windowNumber() + 1;
    window->sendEvent(event);
    EXPECT_THAT(view->notes, IsEmpty());
}

TEST_F(ViewTree, APressHoldsUntilItsRelease)
{
    mouse(EventType::leftMouseDown, {20.0, 30.0});
    mouse(EventType::leftMouseDragged, {500.0, 500.0});
    mouse(EventType::leftMouseUp, {500.0, 500.0});
    EXPECT_THAT(view->notes, ElementsAre("down", "drag", "up"));
}

TEST_F(ViewTree, MovesGoToTheViewBelowThePointer)
{
    mouse(EventType::mouseMoved, {20.0, 30.0});
    mouse(EventType::mouseMoved, {150.0, 30.0});
    mouse(EventType::rightMouseDown, {20.0, 30.0});
    mouse(EventType::null, {20.0, 30.0});
    EXPECT_THAT(view->notes, ElementsAre("move", "right down"));
}

TEST_F(ViewTree, AViewThatRemovesItselfWhileItHandlesAnEventIsSafe)
{
    view->onPress = [this] {
        view->removeFromSuperview();
        view.reset();
    };
    mouse(EventType::leftMouseDown, {20.0, 30.0});
    mouse(EventType::leftMouseUp, {20.0, 30.0});
    EXPECT_THAT(window->contentView()->subviews(), IsEmpty());
}

TEST_F(ViewTree, KeysGoToTheFirstResponder)
{
    Event event;
    event.type = EventType::keyDown;
    window->sendEvent(event);
    EXPECT_THAT(view->notes, IsEmpty());
    window->makeFirstResponder(view);
    window->sendEvent(event);
    EXPECT_THAT(view->notes, ElementsAre("key"));
}

TEST_F(ViewTree, PointsConvertThroughFramesAndRotations)
{
    const auto child = std::make_shared<View>(Rect::make(5.0, 6.0, 10.0, 10.0));
    view->addSubview(child);
    EXPECT_EQ(child->convertToWindow({1.0, 1.0}), (Point{16.0, 27.0}));
    EXPECT_EQ(child->convertFromWindow({16.0, 27.0}), (Point{1.0, 1.0}));
    EXPECT_EQ(child->frameInWindow(), Rect::make(15.0, 26.0, 10.0, 10.0));

    child->setFrameRotation(90.0);
    const Point turned = child->convertToSuperview({10.0, 0.0});
    EXPECT_NEAR(turned.x, 5.0, 1e-9);
    EXPECT_NEAR(turned.y, 16.0, 1e-9) << "counter-clockwise about the frame's origin";
}

TEST_F(ViewTree, AViewWithAnAlphaIsALayerOfItsOwnAndAHiddenOneIsNothing)
{
    RecordingContext context;
    view->setAlpha(0.5);
    view->drawTree(context, Rect::make(0.0, 0.0, 200.0, 100.0));
    EXPECT_THAT(context.lines,
                ElementsAre("save", "layer 0.5", "transform 1 0 0 1 10 20", "clip [0 0 50 40]",
                            "save", "fill rect [0 0 50 40] operation 1", "restore", "end layer",
                            "restore"));
    context.lines.clear();
    view->setHidden(true);
    view->drawTree(context, Rect::make(0.0, 0.0, 200.0, 100.0));
    EXPECT_THAT(context.lines, IsEmpty());
}

TEST_F(ViewTree, OnlyWhatIsDirtyIsAskedFor)
{
    RecordingContext context;
    view->drawTree(context, Rect::make(0.0, 0.0, 30.0, 30.0));
    EXPECT_THAT(context.lines, Contains("fill rect [0 0 20 10] operation 1"));
    context.lines.clear();
    view->drawTree(context, Rect::make(100.0, 0.0, 30.0, 30.0));
    EXPECT_THAT(context.lines, IsEmpty());
}

TEST_F(ViewTree, AWindowThatGoesLeavesItsViewsWithoutOne)
{
    window.reset();
    EXPECT_EQ(view->window(), nullptr);
    view->setNeedsDisplay(true);
}

TEST_F(ViewTree, AnAnimatedFrameTakesItsTimeAndEndsExactly)
{
    const double before = desk.mainThread().now();
    window->setFrame(Rect::make(300.0, 100.0, 200.0, 100.0), true, true);
    EXPECT_NEAR(desk.mainThread().now() - before, 0.2, 1e-6);
    EXPECT_EQ(window->frame(), Rect::make(300.0, 100.0, 200.0, 100.0));
    window->orderOut();
    const double hidden = desk.mainThread().now();
    window->setFrame(Rect::make(0.0, 0.0, 10.0, 10.0), true, true);
    EXPECT_EQ(desk.mainThread().now(), hidden) << "nobody would see it";
    EXPECT_EQ(window->contentView()->frame(), Rect::make(0.0, 0.0, 10.0, 10.0));
}

TEST_F(ViewTree, AButtonClicksOnlyWhenReleasedOnItAndWhileEnabled)
{
    int clicks = 0;
    const auto button = std::make_shared<Button>(Rect::make(100.0, 20.0, 50.0, 40.0));
    button->setAction([&clicks](Button &) { ++clicks; });
    window->contentView()->addSubview(button);

    mouse(EventType::leftMouseDown, {110.0, 30.0});
    mouse(EventType::leftMouseUp, {110.0, 30.0});
    EXPECT_EQ(clicks, 1);
    mouse(EventType::leftMouseDown, {110.0, 30.0});
    mouse(EventType::leftMouseUp, {10.0, 90.0});
    EXPECT_EQ(clicks, 1);
    button->setEnabled(false);
    mouse(EventType::leftMouseDown, {110.0, 30.0});
    mouse(EventType::leftMouseUp, {110.0, 30.0});
    button->performClick();
    EXPECT_EQ(clicks, 1);
}

TEST_F(ViewTree, AButtonShowsItsPictureOrItsTitle)
{
    Button button(Rect::make(0.0, 0.0, 40.0, 20.0));
    button.setTitle("pen");
    RecordingContext context;
    button.drawRect(context, button.bounds());
    EXPECT_THAT(context.lines, Contains(::testing::StartsWith("text \"pen\"")));

    const auto picture = std::make_shared<platform::Image>(4, 4);
    button.setImage(std::make_shared<platform::PictureResource>("square", picture));
    button.setEnabled(false);
    context.lines.clear();
    button.drawRect(context, button.bounds());
    EXPECT_THAT(context.lines, ElementsAre("image 4x4 in [0 0 40 20] operation 2 fraction 0.6"));
}

} // namespace
} // namespace orv::test
