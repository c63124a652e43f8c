#include "TextDesk.h"
#include "support/RecordingContext.h"

#include "platform/raster/RasterContext.h"

#include <gmock/gmock.h>

#include <cmath>

namespace orv::test {
namespace {

using platform::Point;
using platform::Size;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

/// A text that a test types into after laying it along a drag.
class TurnedText : public TextAnnotation {
public:
    explicit TurnedText(Point to) : to_(to) {}
    void mouseDownEventAtPoint(Point point) override
    {
        TextAnnotation::mouseDownEventAtPoint(point);
        updateTextOriginAndAngleBasedOnNewDragPoint(point + to_);
    }

private:
    Point to_;
};

/// Keeps the ends of the last line that was stroked.
class StrokeContext : public RecordingContext {
public:
    Point from, to;
    void strokePath(const platform::Path &path) override
    {
        path.forEach([this](const platform::Path::Element &element) {
            const bool begins = element.type == platform::PathElementType::moveToPoint;
            (begins ? from : to) = element.points[0];
        });
        RecordingContext::strokePath(path);
    }
};

class TextDrawing : public TextDesk {
protected:
    static std::vector<std::string> drawn(Annotation &annotation)
    {
        RecordingContext context;
        annotation.draw(context);
        return context.lines;
    }
    /// An active text of 20 points that begins at (100, 100) and runs towards `to`.
    static std::shared_ptr<TextAnnotation> turned(Point to, std::u16string_view characters)
    {
        const auto annotation = std::make_shared<TurnedText>(to);
        annotation->setSize(20.0F);
        annotation->mouseDownEventAtPoint({100.0, 100.0});
        annotation->mouseUpEventAtPoint({100.0, 100.0});
        for (const char16_t character : characters) {
            annotation->shouldRedrawWithKeyDownEvent(keyWith({&character, 1}));
        }
        return annotation;
    }
    static void expectCaret(const StrokeContext &context, Point baseline, double angle)
    {
        const Point up{-std::sin(angle), std::cos(angle)};
        EXPECT_NEAR(context.from.x, baseline.x - 2.5 * up.x, 1e-4);
        EXPECT_NEAR(context.from.y, baseline.y - 2.5 * up.y, 1e-4);
        EXPECT_NEAR(context.to.x, baseline.x + 17.5 * up.x, 1e-4);
        EXPECT_NEAR(context.to.y, baseline.y + 17.5 * up.y, 1e-4);
    }
    /// What is seen on the display, with y up.
    [[nodiscard]] auto pixels()
    {
        return [picture = desk.desktop().composePicture(1)](int x, int yUp) {
            return picture->pixel(x, picture->height() - 1 - yUp) & 0xFFFFFFU;
        };
    }
};

TEST_F(TextDrawing, SetsItsStateInOrderAndPutsItBack)
{
    textTool->color = {0.25, 0.5, 0.75, 1.0};
    click({100.0, 200.0});
    type(u"Hi");

    EXPECT_THAT(drawn(*text()),
                ElementsAre("save", "dash 0", "blend 0", "width 1", "fill color 0.25 0.5 0.75 1",
                            "stroke color 0.25 0.5 0.75 1", "save",
                            "text \"Hi\" in [100 200 20 20] font Helvetica 20 alignment 4",
                            "restore", "stroke color 0 0 0 1", "stroke 0(122,197.5) 1(122,217.5)",
                            "restore"));
}

TEST_F(TextDrawing, DashesComeFromTheTool)
{
    textTool->dash = true;
    click({100.0, 200.0});
    EXPECT_THAT(drawn(*text()), Contains("dash 0 60 36"));
}

TEST_F(TextDrawing, OnAnEmptyLineTheCaretStandsAtItsOriginWithoutAGap)
{
    click({100.0, 200.0});

    EXPECT_THAT(drawn(*text()),
                ElementsAre("save", "dash 0", "blend 0", "width 1", "fill color 1 0 0 1",
                            "stroke color 1 0 0 1", "text position 100 200", "stroke color 0 0 0 1",
                            "stroke 0(100,197.5) 1(100,217.5)", "restore"));
}

TEST_F(TextDrawing, LinesGoStraightDownAndTheCaretIsOnTheLast)
{
    click({100.0, 200.0});
    type(u"a\r\rbc");
    const double step = text()->lineHeight();

    const auto lines = drawn(*text());

    const std::string last = fmt::format("{}", 200.0 - step - step);
    EXPECT_THAT(lines, Contains("text \"a\" in [100 200 10 20] font Helvetica 20 alignment 4"));
    EXPECT_THAT(lines, Contains(fmt::format("text position 100 {}", 200.0 - step)));
    EXPECT_THAT(lines,
                Contains("text \"bc\" in [100 " + last + " 20 20] font Helvetica 20 alignment 4"));
    EXPECT_THAT(lines, Contains(fmt::format("stroke 0(122,{}) 1(122,{})", 200.0 - step - step - 2.5,
                                            200.0 - step - step - 2.5 + 20.0)));
}

TEST_F(TextDrawing, BackspaceTakesTheCaretBackToTheEndOfTheLineBefore)
{
    click({100.0, 200.0});
    type(u"ab\r");
    EXPECT_THAT(drawn(*text()), Contains(HasSubstr("stroke 0(100,")));

    type(u"\b");

    EXPECT_THAT(drawn(*text()), Contains("stroke 0(122,197.5) 1(122,217.5)"));
}

TEST_F(TextDrawing, TheCaretIsDrawnOnlyInItsLitHalfAndWhileTheTextIsActive)
{
    click({100.0, 200.0});
    type(u"a");
    const auto annotation = text();
    EXPECT_THAT(drawn(*annotation), Contains(HasSubstr("stroke 0")));

    wait(0.6);
    EXPECT_THAT(drawn(*annotation), Not(Contains(HasSubstr("stroke 0"))));

    wait(0.5);
    ASSERT_TRUE(annotation->caretVisible());
    canvas->setCurrentTool(pen);
    EXPECT_THAT(drawn(*annotation), Not(Contains(HasSubstr("stroke 0"))));
}

TEST_F(TextDrawing, TwoEmptyLinesShowNothing)
{
    click({100.0, 200.0});
    type(u"\r");
    canvas->setCurrentTool(pen);
    drain();

    const auto at = pixels();
    for (int y = 160; y < 230; ++y) {
        for (int x = 90; x < 140; ++x) {
            ASSERT_EQ(at(x, y), 0x3366AAU) << x << ' ' << y;
        }
    }
}

TEST_F(TextDrawing, ATurnedTextStepsItsLinesAcrossItsAngle)
{
    const auto annotation = turned({30.0, 40.0}, u"a\r\r");
    const double angle = annotation->textAngle();
    const double step = annotation->lineHeight();
    ASSERT_NEAR(std::sin(angle), 0.8, 1e-6);

    const auto lines = drawn(*annotation);

    EXPECT_THAT(lines, Contains(fmt::format("text position {} {}", 100.0 + std::sin(angle) * step,
                                            100.0 - std::cos(angle) * step)));
}

TEST_F(TextDrawing, ACaretOnATurnedTextStandsUprightToItsBaseline)
{
    const auto empty = turned({30.0, 40.0}, u"");
    StrokeContext onEmpty;
    empty->draw(onEmpty);
    expectCaret(onEmpty, {100.0, 100.0}, empty->textAngle());

    // The recorder's text ends at (110, 100), whatever the angle.
    const auto typed = turned({30.0, 40.0}, u"a");
    StrokeContext onTyped;
    typed->draw(onTyped);
    expectCaret(onTyped, {110.0 + 2.0 * 0.6, 100.0 + 2.0 * 0.8}, typed->textAngle());
}

TEST_F(TextDrawing, ATextFromAFileTurnsEachLineAboutItsOwnMiddle)
{
    const auto read = readBack(turned({std::cos(0.5) * 100.0, std::sin(0.5) * 100.0}, u"ab\rcdef"));
    ASSERT_NEAR(read->textAngle(), 0.5F, 1e-6F);
    const double angle = read->textAngle();
    const Point second{100.0 + std::sin(angle) * read->lineHeight(),
                       100.0 - std::cos(angle) * read->lineHeight()};

    const auto lines = drawn(*read);

    const auto turnAbout = [angle](Point middle) {
        const auto turn = platform::AffineTransform::translation(-middle.x, -middle.y)
                              .then(platform::AffineTransform::rotation(angle))
                              .then(platform::AffineTransform::translation(middle.x, middle.y));
        return fmt::format("transform {} {} {} {} {} {}", turn.a, turn.b, turn.c, turn.d, turn.tx,
                           turn.ty);
    };
    EXPECT_THAT(lines, Contains(turnAbout({110.0, 110.0})));
    EXPECT_THAT(lines, Contains(turnAbout({second.x + 20.0, second.y + 10.0})));
}

TEST_F(TextDrawing, ALevelTextFromAFileIsNotTurned)
{
    const auto read = readBack(turned({30.0, 0.0}, u"ab\rcdef"));
    EXPECT_THAT(drawn(*read), Not(Contains(HasSubstr("transform"))));
}

/// The caret of a text on a surface of 200 points square: all that is black, with y up.
struct Caret {
    /// In square points; with a width of 1 that is its length.
    double area = 0.0;
    Point middle;

    explicit Caret(Annotation &annotation)
    {
        annotation.setColor(platform::Color(1.0, 0.0, 0.0));
        platform::Image image(200, 200);
        {
            platform::RasterContext context(image, {{200.0, 200.0}, 1.0});
            annotation.draw(context);
        }
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 200; ++x) {
                const std::uint32_t pixel = image.pixel(x, 199 - y);
                const bool isBlack = (pixel & 0xFFFFFFU) == 0;
                const double cover = isBlack ? (pixel >> 24U) / 255.0 : 0.0;
                area += cover;
                middle = middle + Point{cover * (x + 0.5), cover * (y + 0.5)};
            }
        }
        middle = {middle.x / area, middle.y / area};
    }
};

Size measured(std::u16string_view words)
{
    platform::Image none(1, 1);
    return platform::RasterContext(none, {{1.0, 1.0}, 1.0}).measureText(words, {"Helvetica", 20.0});
}

/// Where the middle of a caret of 20 points lies for a baseline that ends there.
Point caretMiddle(Point baseline, double angle, double gap)
{
    constexpr double rise = 7.5;
    return baseline + Point{gap * std::cos(angle) - rise * std::sin(angle),
                            gap * std::sin(angle) + rise * std::cos(angle)};
}

void expectCaretAt(const Caret &caret, Point middle)
{
    EXPECT_NEAR(caret.area, 20.0, 0.3);
    EXPECT_NEAR(caret.middle.x, middle.x, 0.1);
    EXPECT_NEAR(caret.middle.y, middle.y, 0.1);
}

/// A line's baseline lies this far above the lower edge of its rectangle.
constexpr double kBaseline = 20.0 * (1.15 - 0.92);

TEST_F(TextDrawing, TheCaretFollowsTheWidthOfTheText)
{
    for (const std::u16string_view words : {u"Hi", u"Hi  ", u"  ", u"\u05D0\u05D1 "}) {
        const auto annotation = turned({30.0, 0.0}, words);
        const Point end{100.0 + measured(words).width, 100.0 + kBaseline};
        expectCaretAt(Caret(*annotation), caretMiddle(end, 0.0, 2.0));
    }
}

TEST_F(TextDrawing, TheCaretOfAnEmptyTextStandsWhereItWasClicked)
{
    expectCaretAt(Caret(*turned({30.0, 0.0}, u"")), caretMiddle({100.0, 100.0}, 0.0, 0.0));
    const auto below = turned({30.0, 0.0}, u"Hi\r");
    expectCaretAt(Caret(*below),
                  caretMiddle({100.0, 100.0 - double{below->lineHeight()}}, 0.0, 0.0));
}

TEST_F(TextDrawing, TheCaretOfATurnedTextLiesAtTheEndOfItsTurnedBaseline)
{
    for (const Point to : {Point{30.0, 40.0}, Point{0.0, 50.0}, Point{40.0, -30.0}}) {
        const auto annotation = turned(to, u"Hi ");
        const double angle = annotation->textAngle();
        const Size size = measured(u"Hi ");
        const Point middle{100.0 + size.width / 2.0, 100.0 + size.height / 2.0};
        const Point end = middle + platform::AffineTransform::rotation(angle).apply(
                                       {size.width / 2.0, kBaseline - size.height / 2.0});
        expectCaretAt(Caret(*annotation), caretMiddle(end, angle, 2.0));
    }
}

TEST_F(TextDrawing, TheCaretOfATurnedEmptyLineLiesOnTheStepsOfItsLines)
{
    const auto annotation = turned({30.0, 40.0}, u"Hi\r");
    const double angle = annotation->textAngle();
    const double step = annotation->lineHeight();

    expectCaretAt(
        Caret(*annotation),
        caretMiddle({100.0 + std::sin(angle) * step, 100.0 - std::cos(angle) * step}, angle, 0.0));
}

TEST_F(TextDrawing, TypedTextIsSeenOnTheDisplayInItsColour)
{
    canvas->setCurrentTool(std::make_shared<FakeTool>(annotation_type::text, 40.0F));
    click({100.0, 200.0});
    type(u"H");
    drain();

    const auto at = pixels();
    EXPECT_EQ(at(105, 220), 0xFF0000U) << "in the left stem";
    EXPECT_EQ(at(115, 212), 0x3366AAU) << "between the stems, below the bar";
    EXPECT_EQ(at(105, 206), 0x3366AAU) << "below the baseline";
}

TEST_F(TextDrawing, ALoneSurrogateDrawsAsTheReplacementCharacter)
{
    click({100.0, 200.0});
    const char16_t half = 0xD83D;
    type({&half, 1});

    EXPECT_THAT(drawn(*text()), Contains(HasSubstr("text \"\uFFFD\" in")));
}

} // namespace
} // namespace orv::test
