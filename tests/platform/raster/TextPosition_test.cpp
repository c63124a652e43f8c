#include "Surface.h"

#include <gtest/gtest.h>

#include <functional>
#include <numbers>

namespace orv::platform {
namespace {

const Font kFont{"Helvetica", 20.0, false};
/// The first baseline lies this far below the upper edge of a rectangle.
constexpr double kAscent = 0.92 * 20.0;
constexpr double kLineHeight = 1.15 * 20.0;
/// A line is given a little more than its rectangle, so that its own width is enough for it.
constexpr double kSlack = 0.11;

using Painting = std::function<void(GraphicsContext &)>;

Point positionAfter(const Painting &painting, double scale = 1.0)
{
    Point position;
    Surface(300, 200, scale).paint([&](GraphicsContext &context) {
        context.setTextPosition({1.0, 2.0});
        painting(context);
        position = context.textPosition();
    });
    return position;
}

Painting drawing(std::u16string_view text, const Rect &rect,
                 TextAlignment alignment = TextAlignment::left)
{
    return [=](GraphicsContext &context) { context.drawText(text, rect, kFont, alignment); };
}

double width(std::u16string_view text)
{
    double answer = 0.0;
    Surface(1, 1).paint(
        [&](GraphicsContext &context) { answer = context.measureText(text, kFont).width; });
    return answer;
}

void expectNear(Point found, Point expected, double tolerance = 1e-6)
{
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
}

TEST(TextPosition, IsTheEndOfTheBaseline)
{
    const Rect rect = Rect::make(10.0, 20.0, 200.0, 100.0);
    expectNear(positionAfter(drawing(u"Hello", rect)), {10.0 + width(u"Hello"), 120.0 - kAscent});
    expectNear(positionAfter(drawing(u"Hello", rect), 2.0),
               {10.0 + width(u"Hello"), 120.0 - kAscent});
}

TEST(TextPosition, IsTheSameInARectangleOfTheTextsOwnSize)
{
    for (const std::u16string_view text : {u"Hello", u"Hello  ", u"   ", u"a b c "}) {
        const Rect rect = Rect::make(10.0, 20.0, width(text), kLineHeight);
        expectNear(positionAfter(drawing(text, rect)),
                   {10.0 + width(text), 20.0 + kLineHeight - kAscent});
    }
}

TEST(TextPosition, CountsSpacesAtTheEnd)
{
    const Rect rect = Rect::make(0.0, 0.0, 200.0, 100.0);
    const double space = width(u" ");
    ASSERT_GT(space, 5.0);

    const double bare = positionAfter(drawing(u"Hello", rect)).x;

    EXPECT_NEAR(positionAfter(drawing(u"Hello ", rect)).x, bare + space, 0.02);
    EXPECT_NEAR(positionAfter(drawing(u"Hello   ", rect)).x, bare + 3.0 * space, 0.02);
}

TEST(TextPosition, SpacesThatHangOverTheWidthEndAtTheEdge)
{
    const double narrow = width(u"Hello") + 3.0;
    const Rect rect = Rect::make(10.0, 0.0, narrow, 100.0);
    expectNear(positionAfter(drawing(u"Hello     ", rect)), {10.0 + narrow, 100.0 - kAscent},
               kSlack);
}

TEST(TextPosition, IsOnTheLastLine)
{
    const Rect rect = Rect::make(10.0, 20.0, 200.0, 100.0);
    const double first = 120.0 - kAscent;

    expectNear(positionAfter(drawing(u"Hello\nHi", rect)),
               {10.0 + width(u"Hi"), first - kLineHeight});
    expectNear(positionAfter(drawing(u"Hello\n", rect)), {10.0, first - kLineHeight});
    const Rect narrow = Rect::make(10.0, 20.0, width(u"Hello") * 1.5, 100.0);
    expectNear(positionAfter(drawing(u"Hello Hello Hi", narrow)),
               {10.0 + width(u"Hi"), first - 2.0 * kLineHeight});
}

TEST(TextPosition, IsOnTheLastLineEvenWhenThatIsClippedAway)
{
    const Rect rect = Rect::make(10.0, 20.0, 200.0, kLineHeight);
    expectNear(positionAfter(drawing(u"Hello\nHi", rect)), {10.0 + width(u"Hi"), 20.0 - kAscent});
}

TEST(TextPosition, FollowsTheAlignment)
{
    const Rect rect = Rect::make(10.0, 0.0, 200.0, 100.0);
    const double baseline = 100.0 - kAscent;

    expectNear(positionAfter(drawing(u"Hello", rect, TextAlignment::right)), {210.0, baseline},
               kSlack);
    expectNear(positionAfter(drawing(u"Hello", rect, TextAlignment::center)),
               {110.0 + width(u"Hello") / 2.0, baseline}, kSlack);
    expectNear(positionAfter(drawing(u"Hello", rect, TextAlignment::natural)),
               {10.0 + width(u"Hello"), baseline});
}

TEST(TextPosition, OfTextFromRightToLeftIsItsRightEndToo)
{
    const std::u16string_view text = u"\u05D0\u05D1\u05D2";
    expectNear(positionAfter(drawing(text, Rect::make(10.0, 0.0, width(text), 100.0))),
               {10.0 + width(text), 100.0 - kAscent});
}

TEST(TextPosition, LiesOnTheSurfaceAndIsToldInPresentCoordinates)
{
    const AffineTransform turn =
        AffineTransform::rotation(0.5).then(AffineTransform::translation(100.0, 30.0));
    const Rect rect = Rect::make(10.0, 20.0, 150.0, 50.0);
    const Point end{10.0 + width(u"Hello"), 70.0 - kAscent};

    const auto turned = [&](GraphicsContext &context) {
        context.concatenate(turn);
        drawing(u"Hello", rect)(context);
    };
    const auto restored = [&](GraphicsContext &context) {
        context.saveState();
        turned(context);
        context.restoreState();
    };

    expectNear(positionAfter(turned), end);
    expectNear(positionAfter(restored), turn.apply(end));
    expectNear(positionAfter(restored, 2.0), turn.apply(end));
}

TEST(TextPosition, ThatIsSetLiesOnTheSurfaceToo)
{
    const AffineTransform quarter = AffineTransform::rotation(std::numbers::pi / 2.0);
    const auto set = [&](GraphicsContext &context) {
        context.saveState();
        context.concatenate(quarter);
        context.setTextPosition({50.0, -40.0});
        context.restoreState();
    };
    expectNear(positionAfter(set), {40.0, 50.0});
}

TEST(TextPosition, StaysWhereNothingIsWritten)
{
    const Rect rect = Rect::make(10.0, 20.0, 200.0, 100.0);
    expectNear(positionAfter(drawing(u"", rect)), {1.0, 2.0});
    expectNear(positionAfter([&](GraphicsContext &context) {
                   context.drawText(u"Hello", rect, {"Helvetica", 0.0, false}, TextAlignment::left);
               }),
               {1.0, 2.0});
}

TEST(TextPosition, ACharacterWithoutWidthHasAPlace)
{
    const std::u16string_view joiner = u"\u200D";
    ASSERT_EQ(width(joiner), 0.0);
    for (const TextAlignment alignment : {TextAlignment::natural, TextAlignment::right}) {
        expectNear(
            positionAfter(drawing(joiner, Rect::make(10.0, 20.0, 0.0, kLineHeight), alignment)),
            {10.0, 20.0 + kLineHeight - kAscent});
    }
}

} // namespace
} // namespace orv::platform
