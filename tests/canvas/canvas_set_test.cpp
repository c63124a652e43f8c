#include "CanvasDesk.h"
#include "support/EventLog.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using platform::Rect;
using platform::Screen;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

const Screen kLeft{1, Rect::make(0.0, 0.0, 1440.0, 900.0), 1.0};
const Screen kRight{2, Rect::make(1440.0, 0.0, 800.0, 600.0), 1.0};

class CanvasSet : public CanvasDesk {
protected:
    CanvasSet()
    {
        AppConstants::instance().setAppActUniqueID(17);
        session.multiScreen = true;
        handler = std::make_unique<AnnotationCanvasHandler>(window);
    }
    ~CanvasSet() override { handler.reset(); }
    void setScreens(const std::vector<Screen> &screens) { desk.displays().setDisplays(screens); }
    [[nodiscard]] AnnotationOverlayWindow &canvasOf(platform::DisplayID id)
    {
        return *handler->canvasDict().at(id);
    }

    std::unique_ptr<AnnotationCanvasHandler> handler;
};

TEST_F(CanvasSet, TheFirstWindowBelongsToTheMainDisplay)
{
    EXPECT_EQ(window->displayID(), 1U);
    EXPECT_EQ(handler->mainCanvas(), window.get());
    EXPECT_EQ(handler->canvasDict().size(), 1U);
}

TEST_F(CanvasSet, EachDisplayGetsACanvasAndTheOldOnesReturnToStandardMode)
{
    setScreens({kLeft, kRight});
    canvas->setAnnotationModeKey(AnnotationsView::annotationModeKeyFlipchart);
    handler->supportMultiScreen(true);
    ASSERT_EQ(handler->canvasDict().size(), 2U);
    EXPECT_EQ(canvasOf(2).frame(), kRight.frame);
    EXPECT_EQ(canvas->annotationModeKey(), "AnnotationModeStandard");
    EXPECT_EQ(canvasOf(2).annotationsView()->annotationModeKey(), "") << "until the next pass";
    EXPECT_THAT(session.calls, Contains("resetEventWindow"));
    handler->supportMultiScreen(true);
    EXPECT_EQ(canvasOf(2).annotationsView()->annotationModeKey(), "AnnotationModeStandard");
}

TEST_F(CanvasSet, WithoutSupportOnlyTheMainCanvasStays)
{
    setScreens({kLeft, kRight});
    handler->supportMultiScreen(true);
    handler->supportMultiScreen(false);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(canvasOf(2).isVisible());
    EXPECT_TRUE(canvasOf(2).enable());
    handler->resetMultiScreen();
    EXPECT_FALSE(canvasOf(2).isVisible()) << "nothing happens without support";
}

TEST_F(CanvasSet, ADisplayThatReturnsFindsItsStandardAnnotations)
{
    setScreens({kLeft, kRight});
    handler->supportMultiScreen(true);
    handler->supportMultiScreen(true);
    handler->setCurrentTool(pen);
    handler->showCanvas();
    const auto second = canvasOf(2).annotationsView();
    second->mouseDown(mouseAt(platform::EventType::leftMouseDown, {5.0, 5.0}));

    setScreens({kLeft});
    wait(0.31);
    EXPECT_FALSE(canvasOf(2).enable());
    EXPECT_FALSE(canvasOf(2).isVisible());

    setScreens({kLeft, kRight});
    wait(0.31);
    EXPECT_TRUE(canvasOf(2).isVisible());
    EXPECT_EQ(canvasOf(2).annotationsView(), second);
    EXPECT_TRUE(second->hasAnnotations());
}

TEST_F(CanvasSet, SeveralAnnouncementsMakeOneReactionAndNoneWhileHidden)
{
    handler->supportMultiScreen(true);
    handler->showCanvas();
    session.calls.clear();
    for (int i = 0; i < 3; ++i) {
        setScreens({kLeft, kRight});
        wait(0.1);
    }
    wait(0.19);
    EXPECT_EQ(session.count("resetAllDisplayWindow"), 0);
    wait(0.02);
    EXPECT_EQ(session.count("resetAllDisplayWindow"), 1);

    handler->hiddenCanvas();
    setScreens({kLeft});
    wait(1.0);
    EXPECT_EQ(session.count("resetAllDisplayWindow"), 1);
}

TEST_F(CanvasSet, PointsFromTheTopLeftFindTheirCanvas)
{
    setScreens({kLeft, kRight});
    handler->supportMultiScreen(true);
    EXPECT_EQ(handler->testHitCanvas({100.0, 100.0}), window.get());
    EXPECT_EQ(handler->testHitCanvas({1500.0, 800.0}), &canvasOf(2));
    EXPECT_EQ(handler->testHitCanvas({9000.0, 100.0}), window.get()) << "outside all displays";
    EXPECT_EQ(handler->testHitCanvas({1500.0, 100.0}), window.get())
        << "the right display is lower than the left one";
}

TEST_F(CanvasSet, ShowingAndHidingGoesThroughAllWindows)
{
    setScreens({kLeft, kRight});
    handler->supportMultiScreen(true);
    handler->showCanvas();
    EXPECT_FALSE(handler->isHidden());
    EXPECT_FALSE(window->ignoresMouseEvents());
    EXPECT_TRUE(canvasOf(2).isKeyWindow()) << "the last one treated has the keyboard";

    handler->hiddenCanvas();
    EXPECT_TRUE(handler->isHidden());
    EXPECT_TRUE(window->ignoresMouseEvents());
    EXPECT_FALSE(canvasOf(2).isVisible());

    session.ignoreMouse = 1;
    handler->showCanvas();
    EXPECT_TRUE(window->ignoresMouseEvents());
}

TEST_F(CanvasSet, UndoAndRedoOfTheSetOnlyRefreshTheMainCanvas)
{
    handler->supportMultiScreen(true);
    press({1.0, 1.0});
    release({1.0, 1.0});
    EventLog log(17, {"undoreoEvent"});
    handler->undoAnnotation();
    handler->redoAnnotation();
    EXPECT_THAT(log.events, ElementsAre("undoreoEvent 1 0", "undoreoEvent 1 0"));
}

TEST_F(CanvasSet, AWipeSkipsACanvasThatIsBlank)
{
    setScreens({kLeft, kRight});
    handler->supportMultiScreen(true);
    handler->supportMultiScreen(true);
    press({1.0, 1.0});
    release({1.0, 1.0});
    handler->clearAnnotationsWithSqueegee();
    wait(1.0);
    EXPECT_EQ(clearedScreens().size(), 1U);
    const auto second = canvasOf(2).annotationsView();
    EXPECT_EQ(second->document().clearedScreenCount(second->annotationModeKey()), 0U);
}

TEST_F(CanvasSet, FlagsGoToAllAndAnswersComeFromTheMainOne)
{
    setScreens({kLeft, kRight});
    handler->supportMultiScreen(true);
    handler->setIsChange(true);
    EXPECT_TRUE(canvasOf(2).annotationsView()->isChange());
    canvas->setIsChange(false);
    EXPECT_FALSE(handler->isChange());
    handler->setIsEditMode(false);
    EXPECT_FALSE(canvasOf(2).annotationsView()->isEditMode());
    handler->setStyleMask(128);
    EXPECT_EQ(canvasOf(2).styleMask(), 128U);
    EXPECT_EQ(window->styleMask(), 128U);
}

TEST_F(CanvasSet, TheButtonIsOneForAllCanvases)
{
    setScreens({kLeft, kRight});
    handler->supportMultiScreen(true);
    press({1.0, 1.0});
    EXPECT_TRUE(canvasOf(2).annotationsView()->isPressed());
    EXPECT_FALSE(canvasOf(2).annotationsView()->ownIsPressed());
}

TEST_F(CanvasSet, ASetThatGoesTakesItsWindowsOffTheScreen)
{
    setScreens({kLeft, kRight});
    handler->supportMultiScreen(true);
    handler->showCanvas();
    handler.reset();
    EXPECT_FALSE(window->isVisible());
    EXPECT_THAT(desk.windowServer().orderedWindows(), ::testing::IsEmpty());
    setScreens({kLeft});
    wait(1.0);
}

} // namespace
} // namespace orv::test
