#include "Desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::platform {
namespace {

constexpr std::uint32_t kDesktop = 0xFF336699;
constexpr std::uint32_t kBlack = 0xFF000000;
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlue = 0xFF0000FF;
const Rect kMainDisplay = Rect::make(0.0, 0.0, 40.0, 30.0);

VirtualSettings twoDisplays()
{
    VirtualSettings settings;
    settings.displays = {{1, kMainDisplay, 1.0}, {7, Rect::make(40.0, -10.0, 20.0, 20.0), 2.0}};
    settings.desktop = "#336699";
    return settings;
}

class VirtualScreenCaptureTest : public testing::Test {
protected:
    void SetUp() override
    {
        canvas_.surface().setLevel(3);
        toolbox_.surface().setLevel(5);
        for (const NotingWindow *window : {&toolbox_, &canvas_, &rear_}) {
            window->surface().orderFront();
        }
    }
    [[nodiscard]] ImagePtr capture(const Rect &rect, const NotingWindow &window, bool including)
    {
        return desk_.platform.screenCapture().capture(rect, window.number(), including);
    }

    Desk desk_{twoDisplays()};
    VirtualWindowServer &server_ = desk_.platform.windowServer();
    /// Each covers half of the one before.
    NotingWindow rear_{server_, Rect::make(0.0, 0.0, 10.0, 30.0), {1.0, 0.0, 0.0}};
    NotingWindow canvas_{server_, Rect::make(5.0, 0.0, 10.0, 30.0), {0.0, 1.0, 0.0}};
    NotingWindow toolbox_{server_, Rect::make(10.0, 0.0, 10.0, 30.0), {0.0, 0.0, 1.0}};
};

TEST_F(VirtualScreenCaptureTest, ShowsWhatLiesBelowAWindow)
{
    const ImagePtr picture = capture(kMainDisplay, canvas_, false);

    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->size(), (Size{40.0, 30.0}));
    EXPECT_EQ(picture->pixel(2, 15), kRed);
    EXPECT_EQ(picture->pixel(7, 15), kRed);
    EXPECT_EQ(picture->pixel(12, 15), kDesktop);
    EXPECT_EQ(picture->pixel(17, 15), kDesktop);
}

TEST_F(VirtualScreenCaptureTest, ShowsTheWindowItselfWhenAskedAndNothingAboveIt)
{
    const ImagePtr picture = capture(kMainDisplay, canvas_, true);

    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->pixel(2, 15), kRed);
    EXPECT_EQ(picture->pixel(7, 15), kGreen);
    EXPECT_EQ(picture->pixel(12, 15), kGreen);
    EXPECT_EQ(picture->pixel(17, 15), kDesktop);
}

TEST_F(VirtualScreenCaptureTest, GoesByLevelsAndNotByTheOrderOfShowing)
{
    const ImagePtr picture = capture(kMainDisplay, toolbox_, true);

    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->pixel(2, 15), kRed);
    EXPECT_EQ(picture->pixel(7, 15), kGreen);
    EXPECT_EQ(picture->pixel(12, 15), kBlue);
}

TEST_F(VirtualScreenCaptureTest, DrawsWhatIsAskedForFirstAndNothingElse)
{
    ASSERT_NE(capture(kMainDisplay, canvas_, true), nullptr);
    ASSERT_EQ(canvas_.surface().drawCount(), 1);
    EXPECT_EQ(toolbox_.surface().drawCount(), 0);

    canvas_.setColor({1.0, 1.0, 1.0});
    canvas_.surface().setNeedsDisplay(kMainDisplay);

    EXPECT_EQ(capture(kMainDisplay, canvas_, true)->pixel(7, 15), 0xFFFFFFFFU);
}

TEST_F(VirtualScreenCaptureTest, MixesAWindowsAlpha)
{
    canvas_.surface().setAlpha(0.6);

    const ImagePtr picture = capture(kMainDisplay, canvas_, true);

    EXPECT_EQ(picture->pixel(7, 15), 0xFF669900U);
}

TEST_F(VirtualScreenCaptureTest, CountsFromTheTopLeftOfTheMainDisplay)
{
    const NotingWindow corner(server_, Rect::make(30.0, 20.0, 10.0, 10.0), {1.0, 1.0, 1.0});
    corner.surface().setLevel(9);
    corner.surface().orderFront();

    const ImagePtr picture = capture(Rect::make(28.0, 0.0, 12.0, 11.0), corner, true);

    ASSERT_EQ(picture->size(), (Size{12.0, 11.0}));
    EXPECT_EQ(picture->pixel(2, 0), 0xFFFFFFFFU);
    EXPECT_EQ(picture->pixel(11, 9), 0xFFFFFFFFU);
    EXPECT_EQ(picture->pixel(1, 0), kDesktop);
    EXPECT_EQ(picture->pixel(2, 10), kDesktop);
}

TEST_F(VirtualScreenCaptureTest, HasThePixelsOfTheRectanglesDisplayAndIsBlackBesideAll)
{
    // Display 7 reaches from 20 to 40 points below the top of the main display.
    const ImagePtr picture = capture(Rect::make(40.0, 18.0, 22.0, 20.0), canvas_, false);

    ASSERT_EQ(picture->size(), (Size{44.0, 40.0}));
    EXPECT_EQ(picture->pixel(0, 3), kBlack);
    EXPECT_EQ(picture->pixel(0, 4), kDesktop);
    EXPECT_EQ(picture->pixel(39, 39), kDesktop);
    EXPECT_EQ(picture->pixel(40, 39), kBlack);
}

TEST_F(VirtualScreenCaptureTest, IsNullWithoutAreaOrWindowOrWhenItFails)
{
    const NotingWindow hidden(server_, kMainDisplay);
    VirtualScreenCapture &screen = desk_.platform.screenCapture();

    EXPECT_EQ(capture(Rect::make(5.0, 5.0, 0.0, 10.0), canvas_, true), nullptr);
    EXPECT_EQ(capture(Rect::make(5.0, 5.0, 10.0, -1.0), canvas_, true), nullptr);
    EXPECT_EQ(capture(kMainDisplay, hidden, true), nullptr);
    EXPECT_EQ(screen.capture(kMainDisplay, 99, true), nullptr);
    screen.setFails(true);
    EXPECT_EQ(capture(kMainDisplay, canvas_, true), nullptr);

    screen.setFails(false);

    EXPECT_NE(capture(kMainDisplay, canvas_, true), nullptr);
}

TEST_F(VirtualScreenCaptureTest, TheServerListsItsWindowsAsTheyLie)
{
    canvas_.surface().setTitle("Canvas");
    const NotingWindow hidden(server_, kMainDisplay);

    const std::vector<WindowInfo> windows = server_.windows();

    EXPECT_THAT(windows, testing::ElementsAre(testing::FieldsAre(toolbox_.number(), "", 5),
                                              testing::FieldsAre(canvas_.number(), "Canvas", 3),
                                              testing::FieldsAre(rear_.number(), "", 0)));
}

TEST_F(VirtualScreenCaptureTest, TheDesktopComposesAnyAreaOfTheWindowsThatArePicked)
{
    desk_.platform.mainThread().drain();
    const auto isRearOrToolbox = [this](const VirtualWindowSurface &surface) {
        return surface.windowNumber() != canvas_.number();
    };

    const ImagePtr picture =
        desk_.platform.desktop().compose(Rect::make(4.0, -2.0, 10.0, 5.0), 3.0, isRearOrToolbox);

    ASSERT_EQ(picture->size(), (Size{30.0, 15.0}));
    EXPECT_EQ(picture->pixel(0, 8), kRed);
    EXPECT_EQ(picture->pixel(17, 0), kRed);
    EXPECT_EQ(picture->pixel(18, 0), kBlue);
    EXPECT_EQ(picture->pixel(0, 9), kBlack);
}

} // namespace
} // namespace orv::platform
