#include "platform/views/ViewAnimation.h"
#include "platform/views/Window.h"
#include "support/VirtualDesk.h"

#include <gtest/gtest.h>

namespace orv::test {
namespace {

using platform::Rect;
using platform::ViewAnimation;

class Animations : public VirtualDesk {
protected:
    Animations()
    {
        window.contentView()->addSubview(view);
        window.orderFront();
        drain();
    }
    [[nodiscard]] double now() { return desk.mainThread().now(); }

    platform::Window window{Rect::make(0.0, 0.0, 400.0, 300.0), 0};
    std::shared_ptr<platform::View> view =
        std::make_shared<platform::View>(Rect::make(0.0, 0.0, 100.0, 100.0));
    const Rect start = Rect::make(0.0, 0.0, 100.0, 100.0);
    const Rect end = Rect::make(200.0, 100.0, 50.0, 20.0);
};

TEST_F(Animations, HoldTheMainThreadForTheirLength)
{
    const double before = now();
    platform::runAnimation({view, start, end, false, 0.5});
    EXPECT_NEAR(now() - before, 0.5, 1e-5);
    EXPECT_EQ(view->frame(), end);
    EXPECT_FALSE(view->isHidden());
}

TEST_F(Animations, ThatFadeEndHidden)
{
    platform::runAnimation({view, start, end, true, 0.5});
    EXPECT_TRUE(view->isHidden());
    EXPECT_EQ(view->alpha(), 1.0) << "ready to be shown again";
}

TEST_F(Animations, GoOnByThemselvesWhenStarted)
{
    const double before = now();
    platform::startAnimation({view, start, end, false, 0.5});
    EXPECT_EQ(now(), before);
    EXPECT_EQ(view->frame(), start);

    wait(0.25);
    EXPECT_NEAR(view->frame().origin.x, 100.0, 8.0) << "half-way at half of the time";
    EXPECT_NEAR(view->frame().size.height, 60.0, 4.0);
    wait(0.3);
    EXPECT_EQ(view->frame(), end);
}

TEST_F(Animations, AreSlowAtBothEnds)
{
    platform::startAnimation({view, start, end, false, 1.0});
    wait(0.1);
    EXPECT_LT(view->frame().origin.x, 10.0);
    wait(0.8);
    EXPECT_GT(view->frame().origin.x, 190.0);
}

TEST_F(Animations, KeepTheirViewAndEndOnce)
{
    const std::weak_ptr<platform::View> weak = view;
    platform::startAnimation({view, start, end, true, 0.2});
    view->removeFromSuperview();
    view.reset();
    wait(0.1);
    EXPECT_FALSE(weak.expired());
    wait(0.2);
    EXPECT_TRUE(weak.expired());
}

TEST_F(Animations, WithoutTimeAreAtTheEndAtOnce)
{
    platform::startAnimation({view, start, end, true, 0.0});
    EXPECT_EQ(view->frame(), end);
    EXPECT_TRUE(view->isHidden());
    view->setHidden(false);
    platform::runAnimation({view, end, start, false, -1.0});
    EXPECT_EQ(view->frame(), start);
}

} // namespace
} // namespace orv::test
