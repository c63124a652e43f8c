#include "CanvasDesk.h"
#include "support/RecordingContext.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class CanvasDrawing : public CanvasDesk {
protected:
    [[nodiscard]] std::vector<std::string> drawn(const platform::Rect &dirty) const
    {
        RecordingContext context;
        canvas->drawRect(context, dirty);
        return context.lines;
    }
    [[nodiscard]] std::uint32_t pixelAt(int x, int yUp)
    {
        const platform::ImagePtr picture = desk.desktop().composePicture(1);
        return picture->pixel(x, picture->height() - 1 - yUp) & 0xFFFFFFU;
    }
};

TEST_F(CanvasDrawing, AnInvisibleWindowPaintsNothing)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    window->orderOut();
    EXPECT_THAT(drawn(canvas->bounds()), IsEmpty());
}

TEST_F(CanvasDrawing, TheOldestComesFirstAndTheBackdropLastAndBehind)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    stroke({3.0, 3.0}, {4.0, 4.0});

    const auto lines = drawn(canvas->bounds());

    const auto first = std::find(lines.begin(), lines.end(), "stroke 0(1,1) 1(1,1) 1(2,2)");
    const auto second = std::find(lines.begin(), lines.end(), "stroke 0(3,3) 1(3,3) 1(4,4)");
    ASSERT_NE(first, lines.end());
    ASSERT_NE(second, lines.end());
    EXPECT_LT(first, second);
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[lines.size() - 2], "fill color 0 0 0 0");
    EXPECT_EQ(lines.back(), "fill rect [0 0 1440 900] operation 6");
}

TEST_F(CanvasDrawing, InkCoversTheDesktopAndABackdropCoversWhatIsLeft)
{
    pen->color = {0.0, 0.0, 1.0, 1.0};
    canvas->setCurrentTool(std::make_shared<FakeTool>(annotation_type::pen, 20.0F));
    stroke({100.0, 100.0}, {200.0, 100.0});
    drain();
    EXPECT_EQ(pixelAt(150, 100), 0xFF0000U);
    EXPECT_EQ(pixelAt(150, 300), 0x3366AAU) << "the desktop beside it";

    canvas->setCurrentBackdrop(1);
    drain();
    EXPECT_EQ(pixelAt(150, 100), 0xFF0000U) << "the backdrop lies behind the ink";
    EXPECT_EQ(pixelAt(150, 300), 0xFFFFFFU);
}

TEST_F(CanvasDrawing, AHighlighterIsHalfWayToTheColourBelow)
{
    canvas->setCurrentTool(std::make_shared<FakeTool>(annotation_type::highlighter, 20.0F));
    stroke({100.0, 100.0}, {200.0, 100.0});
    drain();
    const std::uint32_t pixel = pixelAt(150, 100);
    EXPECT_NEAR((pixel >> 16U) & 0xFFU, (0xFF + 0x33) / 2.0, 1.0);
    EXPECT_NEAR((pixel >> 8U) & 0xFFU, 0x66 / 2.0, 1.0);
    EXPECT_NEAR(pixel & 0xFFU, 0xAA / 2.0, 1.0);
}

TEST_F(CanvasDrawing, WithoutDebugThereIsNeitherBorderNorText)
{
    EXPECT_THAT(drawn(canvas->bounds()), Not(Contains(HasSubstr("width 3"))));
    EXPECT_THAT(drawn(canvas->bounds()), Not(Contains(HasSubstr("text"))));
}

TEST_F(CanvasDrawing, DebugDrawsABorderInItsColourAndTheFactsOfTheDisplay)
{
    session.debugOn = true;
    session.setting.setOffset(10.0);
    session.setting.setPBorderColorHex("#ff0000");
    session.setting.setPDebugInfoColorHex("0000ff");
    window->setDisplayID(1);
    session.multiScreen = true;

    const auto lines = drawn(canvas->bounds());

    platform::Path border;
    border.addRoundedRect(platform::Rect::make(2.0, 2.0, 1437.0, 897.0), 5.0, 5.0);
    EXPECT_THAT(lines, Contains("stroke color 1 0 0 1"));
    EXPECT_THAT(lines, Contains("width 3"));
    EXPECT_THAT(lines, Contains("stroke " + RecordingContext::text(border)));
    EXPECT_THAT(lines, Contains("fill color 0 0 1 1"));
    EXPECT_THAT(lines,
                Contains("text \"Annotation Manager : <session> \nDisplayID : 1 <Screen 1 {{0, 0}, "
                         "{1440, 900}}>\n{{0, 0}, {1440, 900}}\" in [10 840 400 50] font Helvetica "
                         "12 alignment 4"));
}

TEST_F(CanvasDrawing, DebugColoursDefaultToOrangeAndGreen)
{
    session.debugOn = true;
    const auto lines = drawn(canvas->bounds());
    EXPECT_THAT(lines, Contains("stroke color 1 0.5 0 1"));
    EXPECT_THAT(lines, Contains("fill color 0 1 0 1"));
}

TEST_F(CanvasDrawing, TheBorderIsDrawnOnlyWhenTheWholeHeightIsRedrawn)
{
    session.debugOn = true;
    session.setting.setOffset(10.0);
    const auto lines = drawn(platform::Rect::make(0.0, 0.0, 1440.0, 899.0));
    EXPECT_THAT(lines, Not(Contains("width 3")));
    EXPECT_THAT(lines, Contains(HasSubstr("in [10 839 400 50]")))
        << "the text is drawn all the same";
}

TEST_F(CanvasDrawing, TheScreenIsAskedForAgainAWhileAfterAChangeOfTheButtons)
{
    int draws = 0;
    class Counting : public Annotation {
    public:
        explicit Counting(int &count) : count_(count) {}
        void draw(platform::GraphicsContext &) override { ++count_; }
        bool shouldFinalize() override { return true; }

    private:
        int &count_;
    };
    canvas->document().annotations(mode())->push_back(std::make_shared<Counting>(draws));
    wait(1.0);
    draws = 0;

    canvas->refreshButtonEnabledStates();
    wait(0.29);
    EXPECT_EQ(draws, 0);
    wait(0.02);
    EXPECT_EQ(draws, 1);
}

} // namespace
} // namespace orv::test
