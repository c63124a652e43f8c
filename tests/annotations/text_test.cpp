#include "TextDesk.h"
#include "support/EventLog.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

namespace orv::test {
namespace {

using platform::Point;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint16_t kEscape = 53;

TEST_F(TextDesk, AClickElsewhereDropsATextWithNothingTyped)
{
    click({100.0, 100.0});

    click({200.0, 200.0});

    ASSERT_EQ(annotations().size(), 1U);
    EXPECT_EQ(text()->textOrigin(), (Point{200.0, 200.0}));
    EXPECT_THAT(text()->lines(), ElementsAre(u""));
}

TEST_F(TextDesk, AClickElsewhereLeavesWhatWasTypedAndItTakesNoMoreKeys)
{
    click({100.0, 100.0});
    type(u"a");
    const auto first = text();

    click({200.0, 200.0});
    type(u"b");

    EXPECT_EQ(annotations().size(), 2U);
    EXPECT_THAT(first->lines(), ElementsAre(u"a"));
    EXPECT_FALSE(first->isActive());
    EXPECT_FALSE(first->isEnteringText());
    EXPECT_THAT(text()->lines(), ElementsAre(u"b"));
}

TEST_F(TextDesk, TwoEmptyLinesAreNotNothing)
{
    click({100.0, 100.0});

    type(u"\r");
    canvas->setCurrentTool(pen);

    ASSERT_EQ(annotations().size(), 1U);
    EXPECT_THAT(text()->lines(), ElementsAre(u"", u""));
    EXPECT_FALSE(text()->isActive());
}

TEST_F(TextDesk, EnterAndReturnBothBeginALine)
{
    click({100.0, 100.0});
    type(u"a\u0003b\rc");
    EXPECT_THAT(text()->lines(), ElementsAre(u"a", u"b", u"c"));
}

TEST_F(TextDesk, BackspaceOnAnEmptyLineGoesBackToTheEndOfTheOneBefore)
{
    click({100.0, 100.0});
    type(u"ab\r");

    type(u"\b");
    EXPECT_THAT(text()->lines(), ElementsAre(u"ab"));

    type(u"c");
    EXPECT_THAT(text()->lines(), ElementsAre(u"abc"));
}

TEST_F(TextDesk, BackspaceAndDeleteTakeTheLastCharacterOnly)
{
    click({100.0, 100.0});
    type(u"ab\rcde");

    type(u"\b\u007f");

    EXPECT_THAT(text()->lines(), ElementsAre(u"ab", u"c"));
}

TEST_F(TextDesk, BackspaceWithNothingToTakeStillCountsAsAChange)
{
    click({100.0, 100.0});
    wait(0.35);
    canvas->setIsChange(false);
    const int before = redraws();

    type(u"\b");
    drain();

    EXPECT_THAT(text()->lines(), ElementsAre(u""));
    EXPECT_TRUE(canvas->isChange());
    EXPECT_EQ(redraws(), before + 1);
}

TEST_F(TextDesk, TabIsFourSpaces)
{
    click({100.0, 100.0});
    type(u"a\tb");
    EXPECT_THAT(text()->lines(), ElementsAre(u"a    b"));
}

TEST_F(TextDesk, OnlyTheFirstOfSeveralCharactersIsTaken)
{
    click({100.0, 100.0});
    canvas->keyDown(keyWith(u"xyz"));
    EXPECT_THAT(text()->lines(), ElementsAre(u"x"));
}

TEST_F(TextDesk, KeysWithCommandsOrWithoutCharactersAreRefused)
{
    using namespace platform;
    click({100.0, 100.0});
    wait(0.35);
    canvas->setIsChange(false);
    const int before = redraws();

    for (const std::uint64_t modifiers :
         {modifier::control, modifier::option, modifier::command, modifier::numericPad,
          modifier::function, modifier::shift | modifier::command}) {
        canvas->keyDown(keyWith(u"x", modifiers));
    }
    canvas->keyDown(keyWith(u"\uF702", modifier::numericPad | modifier::function));
    canvas->keyDown(keyWith(u""));
    drain();

    EXPECT_THAT(text()->lines(), ElementsAre(u""));
    EXPECT_FALSE(canvas->isChange());
    EXPECT_EQ(redraws(), before);
    wait(0.2);
    EXPECT_FALSE(text()->caretVisible()) << "the blink did not start anew";
}

TEST_F(TextDesk, ShiftAndCapsLockArePartOfTyping)
{
    click({100.0, 100.0});
    canvas->keyDown(keyWith(u"A", platform::modifier::shift));
    canvas->keyDown(keyWith(u"B", platform::modifier::capsLock));
    EXPECT_THAT(text()->lines(), ElementsAre(u"AB"));
}

TEST_F(TextDesk, ASurrogatePairComesAndGoesInHalves)
{
    click({100.0, 100.0});
    type(u"\U0001F600");
    EXPECT_THAT(text()->lines(), ElementsAre(u"\U0001F600"));

    type(u"\b");
    ASSERT_EQ(text()->lines().front().size(), 1U);
    EXPECT_EQ(text()->lines().front().front(), 0xD83D);
    EXPECT_THAT(readBack(text())->lines(), ElementsAre(u"\uFFFD"));

    type(u"\b");
    EXPECT_THAT(text()->lines(), ElementsAre(u""));
}

TEST_F(TextDesk, AKeyBeforeTheButtonIsReleasedIsRefused)
{
    press({100.0, 100.0});
    canvas->setIsChange(false);

    EXPECT_FALSE(text()->shouldRedrawWithKeyDownEvent(keyWith(u"x")));
    type(u"x");

    EXPECT_THAT(text()->lines(), ElementsAre(u""));
    EXPECT_FALSE(canvas->isChange());
    EXPECT_TRUE(text()->isActive());
}

TEST_F(TextDesk, ADragDuringTheClickChangesNothing)
{
    press({100.0, 100.0});
    drag({180.0, 160.0});
    release({20.0, 160.0});

    EXPECT_EQ(text()->textOrigin(), (Point{100.0, 100.0}));
    EXPECT_EQ(text()->textAngle(), 0.0F);
}

TEST_F(TextDesk, TheClientIsToldToOfferAKeyboardAtTheEndOfTheClick)
{
    EventLog log(16, {"textModeEvent"});

    press({100.0, 100.0});
    EXPECT_THAT(log.events, IsEmpty());
    release({100.0, 100.0});

    EXPECT_THAT(log.events, ElementsAre("textModeEvent 1 0"));
    EXPECT_TRUE(text()->isActive()) << "the end of the click is not the end of the text";
    EXPECT_TRUE(text()->isEnteringText());
    EXPECT_FALSE(canvas->isPressed());
}

TEST_F(TextDesk, UndoEndsTheTextFirstAndThenTakesIt)
{
    click({100.0, 100.0});
    type(u"a");

    canvas->undoAnnotation();

    EXPECT_THAT(annotations(), IsEmpty());
    ASSERT_EQ(undoHistory().size(), 1U);
    EXPECT_FALSE(undoHistory().front()->isActive());
}

TEST_F(TextDesk, LinesLieOneAndAHalfCapitalsWithTheirDescendersApart)
{
    const auto annotation = std::make_shared<TextAnnotation>();

    annotation->setSize(20.0F);

    EXPECT_EQ(annotation->annotationSize(), 20.0);
    EXPECT_EQ(annotation->lineHeight(), static_cast<float>(20.0 * 1940.0 / 2048.0 * 1.5));
}

/// Lays its text along a drag, which a click on a canvas never does.
class DraggedText : public TextAnnotation {
public:
    explicit DraggedText(const Point origin) : origin_(origin) {}
    bool exceeds(Point point)
    {
        mouseDownEventAtPoint(origin_);
        shouldFinalize();
        return dragThresholdExceededByPoint(point);
    }
    void layAlong(Point point)
    {
        mouseDownEventAtPoint(origin_);
        shouldFinalize();
        updateTextOriginAndAngleBasedOnNewDragPoint(point);
    }

private:
    Point origin_;
};

TEST_F(TextDesk, ADragCountsFromFivePointsOn)
{
    const auto dragged = std::make_shared<DraggedText>(Point{100.0, 100.0});

    EXPECT_TRUE(dragged->exceeds({103.0, 96.0}));
    EXPECT_TRUE(dragged->exceeds({100.0, 105.0}));
    EXPECT_TRUE(dragged->exceeds({100.0, 104.99999999})) << "in single floats that is 5";
    EXPECT_FALSE(dragged->exceeds({100.0, 104.9}));
    EXPECT_FALSE(dragged->exceeds({103.0, 103.0}));
}

TEST_F(TextDesk, ATextReadsFromLeftToRightAlongADrag)
{
    const auto dragged = std::make_shared<DraggedText>(Point{100.0, 100.0});

    dragged->layAlong({110.0, 120.0});
    EXPECT_EQ(dragged->textOrigin(), (Point{100.0, 100.0}));
    EXPECT_EQ(dragged->textAngle(), std::atan2(20.0F, 10.0F));

    dragged->layAlong({90.0, 120.0});
    EXPECT_EQ(dragged->textOrigin(), (Point{90.0, 120.0}));
    EXPECT_EQ(dragged->textAngle(), std::atan2(-20.0F, 10.0F));

    dragged->layAlong({100.0, 80.0});
    EXPECT_EQ(dragged->textOrigin(), (Point{100.0, 100.0})) << "straight down is not to the left";
    EXPECT_EQ(dragged->textAngle(), -std::numbers::pi_v<float> / 2.0F);

    dragged->layAlong({97.0, 103.0});
    EXPECT_EQ(dragged->textOrigin(), (Point{100.0, 100.0}));
    EXPECT_EQ(dragged->textAngle(), 0.0F) << "too short a drag is level";
}

TEST_F(TextDesk, TheCaretIsLitForHalfASecondFromThePressOn)
{
    press({100.0, 100.0});

    EXPECT_TRUE(text()->caretVisible());
    wait(0.499);
    EXPECT_TRUE(text()->caretVisible());
    wait(0.002);
    EXPECT_FALSE(text()->caretVisible());
    wait(0.5);
    EXPECT_TRUE(text()->caretVisible());
}

TEST_F(TextDesk, EachKeyLightsTheCaretAnew)
{
    click({100.0, 100.0});
    wait(0.6);
    ASSERT_FALSE(text()->caretVisible());

    type(u"a");
    EXPECT_TRUE(text()->caretVisible());
    wait(0.45);
    EXPECT_TRUE(text()->caretVisible()) << "the blink of before would have turned it off";
    wait(0.1);
    EXPECT_FALSE(text()->caretVisible());
}

TEST_F(TextDesk, EachBlinkAsksForOneRedrawUntilTheTextEnds)
{
    click({100.0, 100.0});
    type(u"a");
    wait(0.35);
    int before = redraws();
    wait(2.0);
    EXPECT_EQ(redraws(), before + 4);

    canvas->setCurrentTool(textTool);
    wait(0.35);
    before = redraws();
    wait(2.0);
    EXPECT_EQ(redraws(), before);
}

TEST_F(TextDesk, AFinishedTextIsNotKeptByItsBlink)
{
    click({100.0, 100.0});
    const std::weak_ptr<TextAnnotation> dropped = text();

    canvas->setCurrentTool(pen);

    EXPECT_TRUE(dropped.expired());
}

TEST_F(TextDesk, EscapeDropsATextButItGoesOnBlinkingUntilTheMainThreadEnds)
{
    click({100.0, 100.0});
    type(u"a");
    const std::weak_ptr<TextAnnotation> dropped = text();

    canvas->keyDown(keyOf(kEscape));

    ASSERT_THAT(annotations(), IsEmpty());
    wait(0.35);
    const int before = redraws();
    wait(2.0);
    EXPECT_EQ(redraws(), before + 4);
    EXPECT_FALSE(dropped.expired());
    desk.mainThread().shutdown();
    EXPECT_TRUE(dropped.expired());
}

TEST_F(TextDesk, AModeThatTakesTheListAwayLeavesTheTextBlinking)
{
    canvas->enterFlipchartEditingMode(1);
    click({100.0, 100.0});
    type(u"a");
    const std::weak_ptr<TextAnnotation> dropped = text();

    canvas->enterStandardAnnotationMode();

    wait(0.35);
    const int before = redraws();
    wait(1.0);
    EXPECT_EQ(redraws(), before + 2);
    EXPECT_FALSE(dropped.expired());
}

TEST_F(TextDesk, ATextOutlivesItsCanvasWithoutHarm)
{
    click({100.0, 100.0});
    const auto active = text();
    window.reset();
    canvas.reset();

    wait(0.6);

    EXPECT_EQ(active->containerView(), nullptr);
    EXPECT_FALSE(active->caretVisible());
}

} // namespace
} // namespace orv::test
