#include "FigureDesk.h"

#include "annotations/LineAnnotation.h"

#include <gmock/gmock.h>

#include <fmt/format.h>

#include <cmath>

namespace orv::test {
namespace {

using platform::Point;
using platform::Rect;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr std::uint32_t kInk = 0xFF0000U;
constexpr std::uint32_t kDesktop = 0x3366AAU;

std::shared_ptr<LineAnnotation> line(Point from, Point to, float size, std::int32_t style = 0)
{
    auto annotation = figure<LineAnnotation>(annotation_type::line, size, style);
    annotation->mouseDownEventAtPoint(from);
    annotation->mouseUpEventAtPoint(to);
    return annotation;
}

std::vector<std::string> plain(const std::string &dash)
{
    return {"stroke color 1 0 0 1",
            dash,
            "blend 0",
            "width 2",
            "cap 0",
            "join 1",
            "stroke color 1 0 0 1",
            "stroke 0(10,20) 1(10,20) 1(40,60)"};
}

TEST(Line, APlainLineSetsItsStateAndLeavesItInTheContext)
{
    EXPECT_EQ(linesOf(*line({10.0, 20.0}, {40.0, 60.0}, 2.0F)), plain("dash 0"));
}

TEST(Line, StylesOfNoArrowArePlainLines)
{
    for (const std::int32_t style : {4, 5, 97, 99, 100}) {
        const auto annotation = line({10.0, 20.0}, {40.0, 60.0}, 2.0F, style);

        EXPECT_EQ(linesOf(*annotation), plain("dash 0")) << style;
        EXPECT_FALSE(annotation->dashMode()) << style;
    }
}

TEST(Line, TheDashedStyleTurnsTheDashesOnForGood)
{
    const auto annotation = line({10.0, 20.0}, {40.0, 60.0}, 2.0F, 3);
    ASSERT_FALSE(annotation->dashMode());

    EXPECT_EQ(linesOf(*annotation), plain("dash 0 6 3.5999999999999996"));
    EXPECT_TRUE(annotation->dashMode());
}

TEST(Line, AHeadIsAtLeastFiveAndAFifthLongAndGrowsWithTheWidth)
{
    const auto lengthAt = [](float size) {
        return figure<LineAnnotation>(annotation_type::line, size)->getArrowLen();
    };

    EXPECT_EQ(lengthAt(2.0F), 5.2F);
    EXPECT_EQ(lengthAt(4.0F), 5.2F);
    EXPECT_EQ(lengthAt(4.5F), static_cast<float>(4.5 * 1.3));
    EXPECT_EQ(lengthAt(10.0F), 13.0F);
}

TEST(Line, ASingleArrowHasItsHeadAtTheEndOfTheDrag)
{
    // A head of 13 on a line of 26: half of the line, and 0.8 of that to each side.
    const auto annotation = line({100.0, 100.0}, {126.0, 100.0}, 10.0F, 1);

    EXPECT_THAT(linesOf(*annotation),
                ElementsAre("save", "blend 0", "stroke color 1 0 0 1", "dash 0", "cap 0", "join 0",
                            "width 10", "stroke 0(100,100) 1(113,100)", "stroke color 1 0 0 1",
                            "fill color 1 0 0 1", "width 2",
                            "fill 0(126,100) 1(113,110.4) 1(113,89.6) 1(126,100)",
                            "stroke 0(126,100) 1(113,110.4) 1(113,89.6) 1(126,100)", "restore"));
}

TEST(Line, AnArrowPointsTheWayOfTheDrag)
{
    const auto annotation = line({100.0, 100.0}, {100.0, 74.0}, 10.0F, 98);

    EXPECT_THAT(linesOf(*annotation), Contains("fill 0(100,74) 1(110.4,87) 1(89.6,87) 1(100,74)"));
}

TEST(Line, ADoubleArrowHasAHeadAtEachEndAndTheShaftBetween)
{
    const auto annotation = line({100.0, 100.0}, {100.0, 152.0}, 10.0F, 2);

    EXPECT_THAT(linesOf(*annotation),
                ElementsAre("save", "blend 0", "stroke color 1 0 0 1", "dash 0", "cap 0", "join 0",
                            "width 10", "stroke 0(100,113) 1(100,139)", "stroke color 1 0 0 1",
                            "fill color 1 0 0 1", "width 2",
                            "fill 0(100,152) 1(89.6,139) 1(110.4,139) 1(100,152)",
                            "stroke 0(100,152) 1(89.6,139) 1(110.4,139) 1(100,152)", "width 2",
                            "fill 0(100,100) 1(110.4,113) 1(89.6,113) 1(100,100)",
                            "stroke 0(100,100) 1(110.4,113) 1(89.6,113) 1(100,100)", "restore"));
}

TEST(Line, AHeadIsMeasuredInSingleFloats)
{
    const auto annotation = line({0.0, 0.0}, {30.1, 17.3}, 2.0F, 1);

    const float length = std::hypot(30.1F, 17.3F);
    const float ratio = 5.2F / length;
    const double x = static_cast<float>(30.1 * ratio);
    const double y = static_cast<float>(17.3 * ratio);
    EXPECT_THAT(linesOf(*annotation),
                Contains(fmt::format("stroke 0(0,0) 1({},{})", 30.1 - x, 17.3 - y)));
}

TEST(Line, AnArrowCarriesItsDashesIntoItsHead)
{
    const auto annotation = line({0.0, 0.0}, {100.0, 100.0}, 10.0F, 1);
    annotation->setDashMode(true);

    const auto lines = linesOf(*annotation);

    EXPECT_THAT(lines, Contains("dash 0 30 18"));
    EXPECT_THAT(lines, Not(Contains("dash 0")));
}

TEST(Line, AnArrowNoLongerThanItsHeadsIsNotDrawnAtAll)
{
    RecordingContext context;

    EXPECT_FALSE(line({0.0, 0.0}, {3.0, 4.0}, 2.0F)->drawSingleArrow(context));
    EXPECT_FALSE(line({0.0, 0.0}, {0.0, 5.2}, 2.0F)->drawSingleArrow(context));
    EXPECT_FALSE(line({0.0, 0.0}, {10.4, 0.0}, 2.0F)->drawDoubleArrow(context));
    EXPECT_THAT(context.lines, IsEmpty());

    EXPECT_TRUE(line({0.0, 0.0}, {0.0, 5.21}, 2.0F)->drawSingleArrow(context));
    EXPECT_TRUE(line({0.0, 0.0}, {10.41, 0.0}, 2.0F)->drawDoubleArrow(context));
    EXPECT_THAT(context.lines, Contains(HasSubstr("fill 0(10.41,0)")));
}

TEST(Line, ShiftDoesNotStraightenALine)
{
    const auto annotation = figure<LineAnnotation>(annotation_type::line, 2.0F);
    platform::Event shift;
    shift.modifierFlags = platform::modifier::shift;
    annotation->mouseDownEventAtPoint({10.0, 20.0});
    annotation->shouldRedrawWithFlagsChangedEvent(shift);

    annotation->mouseUpEventAtPoint({40.0, 60.0});

    EXPECT_EQ(annotation->shapeBoundingBox(), Rect::make(10.0, 20.0, 40.0, 40.0));
    EXPECT_EQ(linesOf(*annotation), plain("dash 0"));
}

TEST(Line, AFileKeepsTheDragAndTheStyle)
{
    const auto annotation = line({0.1, 90.3}, {50.7, 20.9}, 2.0F, 2);

    const auto read = archivedAndRead(annotation);

    ASSERT_NE(read, nullptr);
    EXPECT_THAT(read->archiveClassNames(),
                ElementsAre("LineAnnotation", "ShapeAnnotation", "Annotation"));
    EXPECT_EQ(read->annotationStyle(), 2);
    EXPECT_EQ(read->dragOrigin(), (Point{double{0.1F}, double{90.3F}}));
    EXPECT_EQ(read->dragDeltaX(), static_cast<float>(annotation->dragDeltaX()));
    EXPECT_EQ(read->dragDeltaY(), static_cast<float>(annotation->dragDeltaY()));
    EXPECT_TRUE(read->shouldFinalize());
    EXPECT_THAT(linesOf(*read), SizeIs(17));
}

void encodeLine(platform::KeyedArchiver &coder)
{
    coder.encodeFloat("annotationSize", 2.0F);
    coder.encodeFloat("redComponent", 1.0F);
    coder.encodeFloat("alphaComponent", 1.0F);
    coder.encodeFloat("dragOriginX", 10.0F);
    coder.encodeFloat("dragOriginY", 20.0F);
    coder.encodeFloat("dragDeltaX", 30.0F);
    coder.encodeFloat("dragDeltaY", 40.0F);
}

TEST(Line, AFileWithoutAStyleGivesAPlainLine)
{
    const auto read = readFrom<LineAnnotation>("LineAnnotation", encodeLine);

    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->annotationStyle(), 0);
    EXPECT_EQ(linesOf(*read), plain("dash 0"));
}

TEST(Line, ADashedLineOfAFileWithoutDashesIsDashedFromItsFirstDrawOn)
{
    const auto read =
        readFrom<LineAnnotation>("LineAnnotation", [](platform::KeyedArchiver &coder) {
            encodeLine(coder);
            coder.encodeInt("lineType", 3);
        });

    ASSERT_NE(read, nullptr);
    EXPECT_FALSE(read->dashMode());
    EXPECT_EQ(linesOf(*read), plain("dash 0 6 3.5999999999999996"));
    EXPECT_TRUE(read->dashMode());
}

TEST_F(FigureDesk, ALevelLineIsDroppedAtTheReleaseUnlessShiftMadeItsBoxASquare)
{
    use(annotation_type::line, 4.0F);
    stroke({10.0, 10.0}, {300.0, 10.0});
    EXPECT_THAT(annotations(), IsEmpty());

    press({10.0, 10.0});
    drag({300.0, 10.0});
    turnShift(true);
    release({300.0, 10.0});

    EXPECT_THAT(annotations(), SizeIs(1));
    EXPECT_EQ(pixelAt(290, 10), kInk) << "it stays level";
    EXPECT_EQ(pixelAt(290, 290), kDesktop);
}

TEST_F(FigureDesk, AnArrowTooShortForItsHeadStaysUnseenAndCanBeUndone)
{
    use(annotation_type::line, 2.0F, 1);
    stroke({100.0, 100.0}, {103.0, 104.0});

    ASSERT_THAT(annotations(), SizeIs(1));
    EXPECT_THAT(linesOf(*annotations()[0]), IsEmpty());
    EXPECT_EQ(pixelAt(101, 102), kDesktop);

    canvas->undoAnnotation();
    EXPECT_THAT(annotations(), IsEmpty());
    EXPECT_THAT(undoHistory(), SizeIs(1));
}

TEST_F(FigureDesk, AnArrowsHeadIsFilled)
{
    use(annotation_type::line, 20.0F, 1);
    stroke({100.0, 100.0}, {200.0, 200.0});

    EXPECT_EQ(pixelAt(150, 150), kInk) << "the shaft";
    EXPECT_EQ(pixelAt(172, 193), kInk) << "a wing of the head, outside of the shaft's width";
    EXPECT_EQ(pixelAt(118, 142), kDesktop) << "the shaft is narrower";
}

TEST_F(FigureDesk, WhatFollowsAPlainLineSetsItsOwnCorners)
{
    use(annotation_type::line, 10.0F, 3);
    stroke({300.0, 300.0}, {400.0, 400.0});
    use(annotation_type::rectangle, 10.0F);
    stroke({100.0, 100.0}, {200.0, 180.0});

    EXPECT_EQ(pixelAt(96, 96), kInk) << "neither round";
    const Shown picture = shown();
    for (int x = 105; x < 195; ++x) {
        ASSERT_EQ(picture.at(x, 100), kInk) << "nor dashed, at " << x;
    }
}

} // namespace
} // namespace orv::test
