#include "CanvasDesk.h"
#include "support/EventLog.h"
#include "support/NotedEffects.h"

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

class CanvasSetOfTwo : public CanvasSet {
protected:
    CanvasSetOfTwo()
    {
        setScreens({kLeft, kRight});
        handler->supportMultiScreen(true);
        handler->supportMultiScreen(true);
        second = canvasOf(2).annotationsView();
        canvas->setEffects(std::make_unique<NotedEffects>(firstCalls));
        second->setEffects(std::make_unique<NotedEffects>(secondCalls));
        handler->setCurrentTool(pen);
        handler->showCanvas();
    }
    [[nodiscard]] static platform::Event mouseIn(const AnnotationOverlayWindow &target,
                                                 platform::EventType type, platform::Point at)
    {
        platform::Event event = mouseAt(type, at);
        event.windowNumber = target.windowNumber();
        return event;
    }
    void send(AnnotationOverlayWindow &target, platform::EventType type, platform::Point at)
    {
        handler->sendCanvas(&target, mouseIn(target, type, at));
    }

    std::vector<std::string> firstCalls;
    std::vector<std::string> secondCalls;
    std::shared_ptr<AnnotationsView> second;
};

/// Counts what of the mouse reaches it.
class MouseNotes : public platform::View {
public:
    MouseNotes(const Rect &frame, std::vector<std::string> &notes) : View(frame), notes_(notes) {}
    void mouseDown(const platform::Event &event) override { note("down", event); }
    void mouseDragged(const platform::Event &event) override { note("drag", event); }
    void mouseUp(const platform::Event &event) override { note("up", event); }
    void rightMouseDown(const platform::Event &event) override { note("right down", event); }
    void rightMouseDragged(const platform::Event &event) override { note("right drag", event); }
    void rightMouseUp(const platform::Event &event) override { note("right up", event); }

private:
    void note(const char *what, const platform::Event &event)
    {
        notes_.push_back(std::string(what) + " " + std::to_string(event.eventNumber));
    }
    std::vector<std::string> &notes_;
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

TEST_F(CanvasSetOfTwo, EveryFieldGoesToAllCanvases)
{
    handler->setIsHidden(true);
    handler->setIsEditModePendingSet(false);
    handler->setIsComfirmMode(true);
    handler->setAnnotationModeKey(AnnotationsView::annotationModeKeyFlipchart);
    handler->setCurrentBackdrop(1);
    handler->setSnapshotImageFilePath("/s.jpg");
    handler->setSnapshotImageFilePathPendingLoad("/s2.jpg");
    handler->setFlipchartImageFilePath("/f.jpg");
    handler->setFlipchartImageFilePathPendingLoad("/f2.jpg");
    handler->setBackdropImageFilePath("/b.jpg");

    for (const auto &view : {canvas, second}) {
        EXPECT_TRUE(view->isHidden());
        EXPECT_FALSE(view->isEditModePendingSet());
        EXPECT_TRUE(view->isComfirmMode());
        EXPECT_EQ(view->currentAnnotationMode(), 2);
        EXPECT_EQ(view->currentBackdrop(), 1);
        EXPECT_EQ(view->paths().snapshotImageFilePath, "/s.jpg");
        EXPECT_EQ(view->paths().snapshotImageFilePathPendingLoad, "/s2.jpg");
        EXPECT_EQ(view->paths().flipchartImageFilePath, "/f.jpg");
        EXPECT_EQ(view->paths().flipchartImageFilePathPendingLoad, "/f2.jpg");
        EXPECT_EQ(view->paths().backdropImageFilePath, "/b.jpg");
    }
}

TEST_F(CanvasSetOfTwo, EveryAnswerComesFromTheMainCanvas)
{
    second->setIsHidden(true);
    second->setIsEditModePendingSet(false);
    second->setIsComfirmMode(true);
    second->setAnnotationModeKey(AnnotationsView::annotationModeKeyFlipchart);
    second->setCurrentBackdrop(1);
    second->setSnapshotImageFilePath("/second.jpg");
    second->effects()->doLaserPointer(true);
    canvas->setSnapshotImageFilePath("/s.jpg");
    canvas->setSnapshotImageFilePathPendingLoad("/s2.jpg");
    canvas->setFlipchartImageFilePath("/f.jpg");
    canvas->setFlipchartImageFilePathPendingLoad("/f2.jpg");
    canvas->setBackdropImageFilePath("/b.jpg");
    window->setStyleMask(7);

    EXPECT_FALSE(handler->isHidden());
    EXPECT_TRUE(handler->isEditModePendingSet());
    EXPECT_FALSE(handler->isComfirmMode());
    EXPECT_EQ(handler->annotationModeKey(), "AnnotationModeStandard");
    EXPECT_EQ(handler->currentAnnotationMode(), 0);
    EXPECT_EQ(handler->currentBackdrop(), 0);
    EXPECT_FALSE(handler->isLaserPointer());
    EXPECT_EQ(handler->snapshotImageFilePath(), "/s.jpg");
    EXPECT_EQ(handler->snapshotImageFilePathPendingLoad(), "/s2.jpg");
    EXPECT_EQ(handler->flipchartImageFilePath(), "/f.jpg");
    EXPECT_EQ(handler->flipchartImageFilePathPendingLoad(), "/f2.jpg");
    EXPECT_EQ(handler->backdropImageFilePath(), "/b.jpg");
    EXPECT_EQ(handler->styleMask(), 7U);
}

TEST_F(CanvasSetOfTwo, EffectsGoToAllCanvasesAndATransferToTheMainOne)
{
    handler->doSpotLight(true);
    handler->handleSpotlightPichAct(true);
    handler->handleSpotlightPichMove(-4);
    handler->toggleSpotlight();
    handler->doScreenCover(true);
    handler->toggleScreenCover();
    handler->doLaserPointer(true);
    handler->recoveryScreenShade();
    EXPECT_THAT(firstCalls,
                ElementsAre("spotlight on", "pinch on", "pinch by -4", "toggle spotlight",
                            "cover on", "toggle cover", "laser on", "recovery"));
    EXPECT_EQ(secondCalls, firstCalls);

    firstCalls.clear();
    secondCalls.clear();
    handler->fileTransferController(true);
    handler->updateFileTransferStatusDlg("File finish ...");
    EXPECT_THAT(firstCalls, ElementsAre("transfer on", "File finish ..."));
    EXPECT_THAT(secondCalls, ::testing::IsEmpty());
}

TEST_F(CanvasSetOfTwo, ANewFlipchartPageOpensOnAllAndStandardModeKeepsItsInk)
{
    press({1.0, 1.0});
    release({1.0, 1.0});
    EventLog log(17, {"switchModeEvent"});

    handler->enterFlipchartEditingMode(1);
    EXPECT_EQ(second->annotationModeKey(), "AnnotationModeFlipchart");
    EXPECT_EQ(canvasOf(2).backgroundColor(), platform::Color::white());
    EXPECT_FALSE(canvas->hasAnnotations());
    EXPECT_EQ(log.events.size(), 2U);

    handler->setFlipchartImageFilePath("/page.jpg");
    handler->enterStandardAnnotationMode();
    EXPECT_TRUE(canvas->hasAnnotations());
    EXPECT_EQ(canvas->document().annotations(AnnotationsView::annotationModeKeyFlipchart), nullptr);
    EXPECT_EQ(handler->flipchartImageFilePath(), "");
}

TEST_F(CanvasSetOfTwo, AnEraserGivesWayToTheDefaultToolOnANewPage)
{
    handler->setCurrentTool(std::make_shared<FakeTool>(annotation_type::eraser));
    session.calls.clear();
    canvas->enterFlipchartEditingMode(1);
    EXPECT_EQ(session.count("selectDefaultTool"), 1);

    handler->setCurrentTool(pen);
    session.calls.clear();
    canvas->enterFlipchartEditingMode(1);
    EXPECT_EQ(session.count("selectDefaultTool"), 0);
}

TEST_F(CanvasSetOfTwo, ALaserPointerThatChangesDisplaysIsLetGoThereAndPressedHere)
{
    std::vector<std::string> left;
    std::vector<std::string> right;
    window->contentView()->addSubview(std::make_shared<MouseNotes>(window->frame(), left));
    canvasOf(2).contentView()->addSubview(
        std::make_shared<MouseNotes>(Rect{{}, kRight.frame.size}, right));
    handler->doLaserPointer(true);
    auto drag = [&](AnnotationOverlayWindow &target, int number, platform::EventType type) {
        platform::Event event = mouseIn(target, type, {10.0, 10.0});
        event.eventNumber = number;
        handler->sendCanvas(&target, event);
    };

    drag(*window, 1, platform::EventType::leftMouseDown);
    drag(*window, 2, platform::EventType::leftMouseDragged);
    drag(canvasOf(2), 3, platform::EventType::leftMouseDragged);
    EXPECT_THAT(left, ElementsAre("down 1", "drag 2", "up 2"));
    EXPECT_THAT(right, ElementsAre("down 3", "drag 3"));

    drag(canvasOf(2), 4, platform::EventType::rightMouseDown);
    drag(*window, 5, platform::EventType::rightMouseDragged);
    EXPECT_THAT(right, ElementsAre("down 3", "drag 3", "right down 4", "right up 4"));
    EXPECT_THAT(left, ElementsAre("down 1", "drag 2", "up 2", "right down 5", "right drag 5"));
}

TEST_F(CanvasSetOfTwo, AStrokeOverTheEdgeOfADisplayEndsThereAndStaysActive)
{
    send(*window, platform::EventType::leftMouseDown, {1400.0, 100.0});
    send(*window, platform::EventType::leftMouseDragged, {1439.0, 100.0});
    send(canvasOf(2), platform::EventType::leftMouseDragged, {5.0, 100.0});
    send(canvasOf(2), platform::EventType::leftMouseUp, {9.0, 100.0});
    ASSERT_EQ(annotations().size(), 1U);
    EXPECT_TRUE(annotations().front()->isActive());
    EXPECT_FALSE(second->hasAnnotations());
}

TEST_F(CanvasSetOfTwo, AMainDisplayThatGoesKeepsItsWindowAndHandsItsRoleOn)
{
    const Screen nowMain{2, Rect::make(0.0, 0.0, 800.0, 600.0), 1.0};
    setScreens({nowMain});
    wait(0.31);
    EXPECT_EQ(handler->canvasDict().count(1), 1U);
    EXPECT_EQ(handler->mainCanvas(), &canvasOf(2));

    setScreens({{3, Rect::make(0.0, 0.0, 800.0, 600.0), 1.0}});
    EXPECT_EQ(handler->mainCanvas(), nullptr);
    EXPECT_FALSE(handler->isChange()) << "what an empty canvas would answer";
    EXPECT_FALSE(handler->isLaserPointer());
}

TEST_F(CanvasSet, WithOneDisplayAPassStillReturnsItToStandardMode)
{
    canvas->setAnnotationModeKey(AnnotationsView::annotationModeKeySnapshot);
    handler->supportMultiScreen(true);
    EXPECT_EQ(canvas->annotationModeKey(), "AnnotationModeStandard");
    EXPECT_EQ(handler->canvasDict().size(), 1U);
}

TEST_F(CanvasSetOfTwo, ACanvasMayCallBackIntoTheSetDuringAFanOut)
{
    int answers = 0;
    platform::NotificationCenter::local().addObserver(
        &answers, eventName("undoreoEvent", 17), [&](std::string_view, const platform::UserInfo &) {
            answers += handler->testHitCanvas({100.0, 100.0}) == window.get() ? 1 : 0;
        });
    handler->refreshButtonEnabledStates();
    platform::NotificationCenter::local().removeObserver(&answers);
    EXPECT_EQ(answers, 2);
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
