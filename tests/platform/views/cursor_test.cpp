#include "platform/views/Window.h"
#include "support/VirtualDesk.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace orv::test {
namespace {

using platform::Cursor;
using platform::CursorRect;
using platform::Image;
using platform::Point;
using platform::Rect;
using platform::View;
using platform::Window;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Shows one cursor over all of its bounds.
class CursorView : public View {
public:
    using View::View;
    void setCursor(const std::optional<Cursor> &cursor)
    {
        cursor_ = cursor;
        invalidateCursorRects();
    }
    void resetCursorRects() override
    {
        if (cursor_) {
            addCursorRect(bounds(), *cursor_);
        }
    }

private:
    std::optional<Cursor> cursor_;
};

class Cursors : public VirtualDesk {
protected:
    Cursors()
    {
        window = std::make_shared<Window>(Rect::make(100.0, 100.0, 200.0, 100.0), 0);
        view = std::make_shared<CursorView>(Rect::make(10.0, 20.0, 50.0, 40.0));
        window->contentView()->addSubview(view);
    }
    [[nodiscard]] const std::vector<CursorRect> &shown()
    {
        return desk.windowServer().surface(window->windowNumber())->cursorRects();
    }

    platform::ImagePtr picture = std::make_shared<Image>(8, 8);
    Cursor pencil{std::make_shared<platform::PictureResource>("pencil", picture), {1.0, 7.0}};
    std::shared_ptr<Window> window;
    std::shared_ptr<CursorView> view;
};

TEST_F(Cursors, ReachTheSurfaceInWindowCoordinates)
{
    view->setCursor(pencil);

    EXPECT_THAT(shown(),
                ElementsAre(CursorRect{Rect::make(10.0, 20.0, 50.0, 40.0), picture, {1.0, 7.0}}));
}

TEST_F(Cursors, WithoutAPictureAreTheArrow)
{
    view->setCursor(Cursor{});

    EXPECT_THAT(shown(),
                ElementsAre(CursorRect{Rect::make(10.0, 20.0, 50.0, 40.0), nullptr, Point{}}));
}

TEST_F(Cursors, GoWithTheirViewsFrameAndWithThatOfTheViewAround)
{
    const auto around = std::make_shared<View>(Rect::make(0.0, 0.0, 100.0, 100.0));
    window->contentView()->addSubview(around);
    around->addSubview(view);
    view->setCursor(pencil);

    around->setFrame(Rect::make(5.0, 5.0, 100.0, 100.0));
    ASSERT_EQ(shown().size(), 1U);
    EXPECT_EQ(shown().front().rect, Rect::make(15.0, 25.0, 50.0, 40.0));

    view->setFrame(Rect::make(0.0, 0.0, 30.0, 30.0));
    ASSERT_EQ(shown().size(), 1U);
    EXPECT_EQ(shown().front().rect, Rect::make(5.0, 5.0, 30.0, 30.0));
}

TEST_F(Cursors, OfAViewInFrontComeLast)
{
    const auto front = std::make_shared<CursorView>(Rect::make(0.0, 0.0, 5.0, 5.0));
    window->contentView()->addSubview(front);

    front->setCursor(Cursor{});
    view->setCursor(pencil);

    ASSERT_EQ(shown().size(), 2U);
    EXPECT_EQ(shown().front().image, picture);
    EXPECT_EQ(shown().back().image, nullptr);
}

TEST_F(Cursors, AreThoseOfVisibleViewsOfTheWindowOnly)
{
    view->setCursor(pencil);

    window->contentView()->setHidden(true);
    EXPECT_THAT(shown(), IsEmpty());
    window->contentView()->setHidden(false);
    EXPECT_EQ(shown().size(), 1U);

    view->removeFromSuperview();
    EXPECT_THAT(shown(), IsEmpty());
    window->contentView()->addSubview(view);
    EXPECT_EQ(shown().size(), 1U);

    window->setContentView(std::make_shared<View>());
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(Cursors, GoWhenTheirViewHasNoneAnyMore)
{
    view->setCursor(pencil);
    ASSERT_EQ(shown().size(), 1U);

    view->setCursor(std::nullopt);

    EXPECT_THAT(shown(), IsEmpty());
}

} // namespace
} // namespace orv::test
