#include "CanvasDesk.h"
#include "support/EventLog.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr std::uint16_t kEscape = 53;

/// Takes keys and refuses to stay, as a text that is still empty does.
class Typing : public Annotation {
public:
    void mouseDownEventAtPoint(platform::Point) override { setIsActive(true); }
    bool shouldRedrawWithKeyDownEvent(const platform::Event &event) override
    {
        return event.keyCode == 0;
    }
    bool shouldFinalize() override { return false; }
};

class TypingTool : public FakeTool {
public:
    using FakeTool::FakeTool;
    [[nodiscard]] std::shared_ptr<Annotation>
    createAnnotationInView(const std::shared_ptr<platform::View> &) const override
    {
        return std::make_shared<Typing>();
    }
};

TEST_F(CanvasDesk, APressEndsWhatIsPendingAndTellsTheMenus)
{
    canvas->setCurrentTool(std::make_shared<TypingTool>(annotation_type::text));
    press({1.0, 1.0});
    ASSERT_EQ(annotations().size(), 1U);
    session.calls.clear();

    press({2.0, 2.0});

    EXPECT_EQ(annotations().size(), 1U) << "the one that did not deserve to stay is gone";
    EXPECT_THAT(session.calls, Contains("hideToolMenuToggle"));
    EXPECT_TRUE(canvas->isPressed());
    EXPECT_TRUE(canvas->isChange());
}

TEST_F(CanvasDesk, APressWithoutACreatingToolChangesNothing)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->undoAnnotation();
    canvas->setIsChange(false);
    canvas->setCurrentTool(pointer);
    session.calls.clear();

    press({5.0, 5.0});

    EXPECT_EQ(undoHistory().size(), 1U);
    EXPECT_THAT(annotations(), IsEmpty());
    EXPECT_FALSE(canvas->isChange());
    EXPECT_FALSE(canvas->isPressed());
    EXPECT_THAT(session.calls, IsEmpty());
}

TEST_F(CanvasDesk, APressOutsideEditModeChangesNothing)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->undoAnnotation();
    canvas->setIsEditMode(false);

    press({5.0, 5.0});

    EXPECT_EQ(undoHistory().size(), 1U);
    EXPECT_THAT(annotations(), IsEmpty());
}

TEST_F(CanvasDesk, APressEmptiesTheRedoStackEvenWhenItsAnnotationIsDropped)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->undoAnnotation();
    canvas->setCurrentTool(std::make_shared<TypingTool>(annotation_type::text));

    press({5.0, 5.0});
    canvas->setCurrentTool(pen);

    EXPECT_THAT(undoHistory(), IsEmpty());
    EXPECT_THAT(annotations(), IsEmpty());
}

TEST_F(CanvasDesk, DragsAndReleasesWithoutAnActiveAnnotationAreDropped)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    const auto path = std::dynamic_pointer_cast<PathAnnotation>(annotations()[0])->path();
    drag({9.0, 9.0});
    release({9.0, 9.0});
    EXPECT_EQ(std::dynamic_pointer_cast<PathAnnotation>(annotations()[0])->path(), path);
}

TEST_F(CanvasDesk, AKindThatNeverGoesActiveLeavesTheButtonCountedAsHeld)
{
    const auto stamp = std::make_shared<FakeTool>(annotation_type::stamp);
    stamp->color = platform::Color::black();
    canvas->setCurrentTool(stamp);
    press({1.0, 1.0});
    release({1.0, 1.0});
    EXPECT_TRUE(canvas->isPressed());
}

TEST_F(CanvasDesk, AStrokeEndsWithTheButtonReleased)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    EXPECT_FALSE(canvas->isPressed());
}

TEST_F(CanvasDesk, ADragDoesNotTouchTheChangeFlag)
{
    press({1.0, 1.0});
    canvas->setIsChange(false);
    drag({2.0, 2.0});
    release({2.0, 2.0});
    EXPECT_FALSE(canvas->isChange());
}

TEST_F(CanvasDesk, EscapeDuringAStrokeRemovesItForGood)
{
    press({1.0, 1.0});
    canvas->setIsChange(false);

    canvas->keyDown(keyOf(kEscape));

    EXPECT_THAT(annotations(), IsEmpty());
    EXPECT_THAT(undoHistory(), IsEmpty());
    EXPECT_FALSE(canvas->isChange());
    EXPECT_THAT(session.calls, Not(Contains("closeAnnotationToolbox")));
}

TEST_F(CanvasDesk, EscapeWithoutAnActiveAnnotationClosesTheToolbox)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->keyDown(keyOf(kEscape));
    EXPECT_EQ(session.count("closeAnnotationToolbox"), 1);

    canvas->setCurrentTool(pointer);
    canvas->keyDown(keyOf(kEscape));
    EXPECT_EQ(session.count("closeAnnotationToolbox"), 2) << "with any tool";

    canvas->setIsEditMode(false);
    canvas->keyDown(keyOf(kEscape));
    EXPECT_EQ(session.count("closeAnnotationToolbox"), 3) << "keys do not ask for edit mode";
}

TEST_F(CanvasDesk, OtherKeysGoToTheActiveAnnotationOnly)
{
    canvas->keyDown(keyOf(0));
    EXPECT_FALSE(canvas->isChange());

    canvas->setCurrentTool(std::make_shared<TypingTool>(annotation_type::text));
    press({1.0, 1.0});
    canvas->setIsChange(false);
    canvas->keyDown(keyOf(1));
    EXPECT_FALSE(canvas->isChange()) << "it refused this one";
    canvas->keyDown(keyOf(0));
    EXPECT_TRUE(canvas->isChange());
    EXPECT_EQ(session.count("closeAnnotationToolbox"), 0);
}

TEST_F(CanvasDesk, SettingTheSameToolAgainEndsATextButCountsAsNoChange)
{
    EventLog log(16, {"textModeEvent"});
    const auto text = std::make_shared<TypingTool>(annotation_type::text);
    canvas->setCurrentTool(text);
    press({1.0, 1.0});
    session.calls.clear();
    ASSERT_THAT(log.events, IsEmpty()) << "the pen before it was no text";

    canvas->setCurrentTool(text);

    EXPECT_THAT(annotations(), IsEmpty());
    EXPECT_THAT(log.events, ElementsAre("textModeEvent 0 0"));
    EXPECT_THAT(session.calls, Not(Contains("requestChangeTool")));

    canvas->setCurrentTool(pen);
    EXPECT_THAT(log.events, ElementsAre("textModeEvent 0 0", "textModeEvent 0 0"));
    EXPECT_THAT(session.calls, Contains("requestChangeTool"));
}

TEST_F(CanvasDesk, AStrokeInProgressSurvivesAToolChangeAndGoesOn)
{
    press({1.0, 1.0});
    canvas->setCurrentTool(std::make_shared<FakeTool>(annotation_type::highlighter));
    drag({2.0, 2.0});
    ASSERT_EQ(annotations().size(), 1U);
    EXPECT_EQ(std::dynamic_pointer_cast<PathAnnotation>(annotations()[0])->path().elementCount(),
              3U);
}

TEST_F(CanvasDesk, TheCursorOfADrawingToolCoversTheWholeCanvas)
{
    canvas->refreshCursor();
    ASSERT_EQ(canvas->cursorRects().size(), 1U);
    EXPECT_EQ(canvas->cursorRects()[0].first, canvas->bounds());
    EXPECT_EQ(canvas->cursorRects()[0].second.picture->name(), "cursor_hidden");

    canvas->setCurrentCursor(std::nullopt);
    EXPECT_THAT(canvas->cursorRects(), IsEmpty());

    canvas->setCurrentTool(std::make_shared<FakeTool>(0, 1.0F, true));
    canvas->refreshCursor();
    EXPECT_THAT(canvas->cursorRects(), IsEmpty()) << "a transient tool leaves the cursor";
}

/// A mouse state that all canvases share.
class SharedMouse : public AnnotationsViewDelegate {
public:
    std::optional<bool> answer = true;
    std::vector<bool> told;
    std::optional<bool> isPressed(const AnnotationOverlayWindow *) override { return answer; }
    void mouseStatus(const AnnotationOverlayWindow *, bool pressed) override
    {
        told.push_back(pressed);
    }
};

TEST_F(CanvasDesk, TheDelegateAnswersForTheButtonOnlyInMultiScreenUse)
{
    SharedMouse mouse;
    canvas->setDelegate(&mouse);
    canvas->setIsPressed(false);
    EXPECT_FALSE(canvas->isPressed());
    EXPECT_THAT(mouse.told, IsEmpty());

    session.multiScreen = true;
    canvas->setIsPressed(false);
    EXPECT_TRUE(canvas->isPressed());
    EXPECT_THAT(mouse.told, ElementsAre(false));

    mouse.answer.reset();
    EXPECT_FALSE(canvas->isPressed()) << "its own field stands in";
    canvas->setDelegate(nullptr);
}

TEST_F(CanvasDesk, TheToolbarGoesAwayForADialogInTheFirstGenerationOnly)
{
    canvas->ShowOrHideToolBar(false);
    EXPECT_THAT(session.calls, IsEmpty());

    AppConstants::instance().setAppActUniqueID(12);
    canvas->ShowOrHideToolBar(false);
    canvas->ShowOrHideToolBar(true);
    EXPECT_THAT(session.calls, ElementsAre("minimize", "special 2", "maximize", "special 0"));
}

TEST_F(CanvasDesk, HelpIsAskedForThroughAnEvent)
{
    EventLog log(16, {"helpRequested"});
    canvas->requestHelp();
    EXPECT_THAT(log.events, ElementsAre("helpRequested 1 0"));
}

} // namespace
} // namespace orv::test
