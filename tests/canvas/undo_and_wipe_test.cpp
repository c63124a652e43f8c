#include "CanvasDesk.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "support/EventLog.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A first wipe takes 0.01 seconds and the 0.05 after it; its replay on a display of 900 points in
// height half a second times 900 by 768, and the 0.05.
constexpr double kQuickWipe = 0.0601;
constexpr double kReplay = 0.5 * 900.0 / 768.0 + 0.0501;

class UndoAndWipe : public CanvasDesk {
protected:
    UndoAndWipe()
    {
        stroke({10.0, 10.0}, {20.0, 20.0});
        stroke({30.0, 30.0}, {40.0, 40.0});
        a = annotations()[0];
        b = annotations()[1];
    }
    void wipe()
    {
        canvas->clearAnnotationsWithSqueegee();
        wait(kQuickWipe);
    }

    std::shared_ptr<Annotation> a;
    std::shared_ptr<Annotation> b;
};

TEST_F(UndoAndWipe, UndoMovesTheLastAnnotationAndRedoBringsItBack)
{
    canvas->undoAnnotation();
    EXPECT_THAT(annotations(), ElementsAre(a));
    EXPECT_THAT(undoHistory(), ElementsAre(b));

    canvas->redoAnnotation();
    EXPECT_THAT(annotations(), ElementsAre(a, b));
    EXPECT_THAT(undoHistory(), IsEmpty());
}

TEST_F(UndoAndWipe, AWipeUndoAndRedoReturnsToTheWipedStateThroughTheDelayedReplay)
{
    const auto *list = canvas->document().annotations(mode()).get();
    wipe();
    ASSERT_THAT(annotations(), IsEmpty());
    ASSERT_EQ(clearedScreens().size(), 1U);
    EXPECT_EQ(clearedScreens()[0].get(), list) << "the list itself is put aside, not a copy";
    EXPECT_THAT(undoHistory(), IsEmpty());

    canvas->undoAnnotation();
    EXPECT_THAT(annotations(), ElementsAre(a, b));
    EXPECT_EQ(canvas->document().annotations(mode()).get(), list);
    EXPECT_THAT(clearedScreens(), IsEmpty());
    ASSERT_EQ(undoHistory().size(), 1U);
    EXPECT_EQ(undoHistory()[0]->annotationType(), annotation_type::clearScreen);

    canvas->undoAnnotation();
    EXPECT_THAT(annotations(), ElementsAre(a));
    EXPECT_EQ(undoHistory().back(), b) << "behind the record of the wipe";

    canvas->redoAnnotation();
    EXPECT_THAT(annotations(), ElementsAre(a, b));

    canvas->redoAnnotation();
    EXPECT_FALSE(toolbox.redo->isEnabled()) << "the stack is popped at once";
    EXPECT_THAT(clearedScreens(), IsEmpty()) << "the wipe itself takes its time";
    wait(kReplay - 0.001);
    EXPECT_THAT(clearedScreens(), IsEmpty());
    wait(0.002);
    ASSERT_EQ(clearedScreens().size(), 1U);
    EXPECT_THAT(*clearedScreens()[0], ElementsAre(a, b));
    EXPECT_THAT(annotations(), IsEmpty());
}

TEST_F(UndoAndWipe, AFirstWipeIsQuickAndViewOnlyWaitsTheFullTime)
{
    canvas->clearAnnotationsWithSqueegee();
    wait(0.0599);
    EXPECT_EQ(annotations().size(), 2U);
    wait(0.0002);
    EXPECT_THAT(annotations(), IsEmpty());
    EXPECT_THAT(session.calls, ::testing::Contains("animating"));

    AppConstants::instance().setAppActUniqueID(18);
    session.calls.clear();
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->clearAnnotationsWithSqueegee();
    wait(kReplay - 0.001);
    EXPECT_EQ(annotations().size(), 1U);
    EXPECT_EQ(session.count("animating"), 0) << "nothing moves in view-only use";
    wait(0.002);
    EXPECT_THAT(annotations(), IsEmpty());
}

TEST_F(UndoAndWipe, AStrokeBegunBeforeTheWipeFiresIsWipedWithTheRest)
{
    canvas->clearAnnotationsWithSqueegee();
    press({5.0, 5.0});
    wait(kQuickWipe);

    ASSERT_EQ(clearedScreens().size(), 1U);
    EXPECT_EQ(clearedScreens()[0]->size(), 3U);
}

TEST_F(UndoAndWipe, OnlyTheSqueegeeButtonEmptiesTheRedoStack)
{
    canvas->undoAnnotation();
    canvas->clearAnnotations(nullptr);
    EXPECT_THAT(undoHistory(), ElementsAre(b));

    canvas->clearAnnotations(toolbox.undo.get());
    EXPECT_THAT(undoHistory(), ElementsAre(b));

    canvas->clearAnnotations(toolbox.squeegee.get());
    EXPECT_THAT(undoHistory(), IsEmpty());
}

TEST_F(UndoAndWipe, AnEmptyListThatIsWipedCostsOneUndoThatShowsNothing)
{
    wipe();
    canvas->clearAnnotations(nullptr);
    ASSERT_EQ(clearedScreens().size(), 2U);
    EXPECT_THAT(*clearedScreens()[1], IsEmpty());

    canvas->undoAnnotation();

    EXPECT_THAT(annotations(), IsEmpty());
    EXPECT_EQ(clearedScreens().size(), 1U);
    ASSERT_EQ(undoHistory().size(), 1U);
    EXPECT_EQ(undoHistory()[0]->annotationType(), annotation_type::clearScreen);
}

TEST_F(UndoAndWipe, AWipeIsUndoneOnlyOnABlankCanvas)
{
    wipe();
    stroke({1.0, 1.0}, {2.0, 2.0});

    canvas->undoAnnotation();

    EXPECT_THAT(annotations(), IsEmpty());
    EXPECT_EQ(clearedScreens().size(), 1U);
}

TEST_F(UndoAndWipe, UndoOnABlankCanvasWithoutWipesChangesNothing)
{
    canvas->clearForNewAnnotations();
    ASSERT_FALSE(canvas->isChange());

    canvas->undoAnnotation();

    EXPECT_THAT(undoHistory(), IsEmpty());
    EXPECT_FALSE(canvas->isChange());
}

TEST_F(UndoAndWipe, RedoOnAnEmptyStackDoesNothing)
{
    canvas->setIsChange(false);
    canvas->redoAnnotation();
    EXPECT_EQ(annotations().size(), 2U);
    EXPECT_FALSE(canvas->isChange());
}

TEST_F(UndoAndWipe, TheSqueegeeButtonIsOffAfterAWipe)
{
    ASSERT_TRUE(toolbox.squeegee->isEnabled());
    wipe();
    EXPECT_FALSE(toolbox.squeegee->isEnabled());
}

TEST_F(UndoAndWipe, TheSqueegeeButtonIsOffAfterAWipeEvenWhenAStepOfItTurnedItOn)
{
    const std::string name = eventName("undoreoEvent", 16);
    platform::NotificationCenter::local().addObserver(
        this, name,
        [this](std::string_view, const EventDictionary &) { toolbox.squeegee->setEnabled(true); });

    canvas->clearAnnotations(nullptr);

    platform::NotificationCenter::local().removeObserver(this, name);
    EXPECT_FALSE(toolbox.squeegee->isEnabled());
}

TEST_F(UndoAndWipe, ButtonsFollowTheLists)
{
    EXPECT_TRUE(toolbox.eraser->isEnabled());
    EXPECT_TRUE(toolbox.undo->isEnabled());
    EXPECT_FALSE(toolbox.redo->isEnabled());
    EXPECT_TRUE(toolbox.squeegee->isEnabled());
    EXPECT_TRUE(toolbox.saveSS->isEnabled());

    wipe();
    EXPECT_FALSE(toolbox.eraser->isEnabled());
    EXPECT_TRUE(toolbox.undo->isEnabled()) << "the wipe can be undone";
    EXPECT_TRUE(toolbox.saveSS->isEnabled());

    canvas->clearForNewAnnotations();
    EXPECT_FALSE(toolbox.undo->isEnabled());
    EXPECT_FALSE(toolbox.saveSS->isEnabled());
    EXPECT_FALSE(toolbox.redo->isEnabled());
}

TEST_F(UndoAndWipe, TheClientLearnsBothCounts)
{
    EventLog log(16, {"undoreoEvent"});
    canvas->undoAnnotation();
    EXPECT_EQ(log.events.back(), "undoreoEvent 1 1");
}

/// A toolbox that is half taken down.
class BrokenToolbox : public FakeToolbox {
public:
    [[nodiscard]] platform::Button *eraserButton() const override
    {
        throw platform::Exception("no such button");
    }
};

class LinesOfTheLog : public OrvFrameworkLoggerDelegate {
public:
    std::vector<std::string> lines;
    void logger(const void *, std::int32_t level, const std::string &line) override
    {
        lines.push_back(std::to_string(level) + " " + line);
    }
};

TEST_F(UndoAndWipe, TheCountsAreSentEvenWhenTheButtonsFail)
{
    EventLog log(16, {"undoreoEvent"});
    LinesOfTheLog lines;
    OrvFrameworkLogger::shared().setDelegate(&lines);
    BrokenToolbox broken;
    window->setToolboxWindow(&broken);

    canvas->refreshButtonEnabledStates();

    window->setToolboxWindow(&toolbox);
    OrvFrameworkLogger::release();
    EXPECT_THAT(log.events, ElementsAre("undoreoEvent 2 0"));
    EXPECT_THAT(lines.lines,
                ElementsAre(::testing::StartsWith("1 -[OrvAnnotation][DEBUG] no such button\n")));
}

TEST_F(UndoAndWipe, WhatChangesTheDocumentSetsItsFlag)
{
    canvas->setIsChange(false);
    canvas->undoAnnotation();
    EXPECT_TRUE(canvas->isChange());

    canvas->setIsChange(false);
    canvas->redoAnnotation();
    EXPECT_TRUE(canvas->isChange());

    canvas->setIsChange(false);
    canvas->clearAnnotations(nullptr);
    EXPECT_TRUE(canvas->isChange());

    canvas->clearForNewAnnotations();
    EXPECT_FALSE(canvas->isChange());
    EXPECT_THAT(clearedScreens(), IsEmpty());
}

TEST_F(UndoAndWipe, AModeWithoutListsAnswersNothingAndSurvivesEveryOperation)
{
    canvas->setAnnotationModeKey(AnnotationsView::annotationModeKeyFlipchart);
    EXPECT_FALSE(canvas->hasAnnotations());
    EXPECT_FALSE(canvas->hasHistoryAnnotations());
    canvas->undoAnnotation();
    canvas->redoAnnotation();
    canvas->clearAnnotations(nullptr);
    press({1.0, 1.0});
    EXPECT_EQ(canvas->document().annotations(mode()), nullptr);
    EXPECT_EQ(canvas->currentAnnotationMode(), 2);
}

} // namespace
} // namespace orv::test
