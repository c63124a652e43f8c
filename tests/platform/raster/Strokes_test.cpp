#include "Surface.h"

#include <gtest/gtest.h>

#include <limits>

namespace orv::platform {
namespace {

TEST(Strokes, AreAsWideAsTheyAreToldAndEndWhereTheyEndUnderAButtCap)
{
    Surface surface(8, 4);

    surface.paint([](GraphicsContext &context) {
        context.setLineWidth(2.0);
        context.strokePath(linePath({2.0, 2.0}, {6.0, 2.0}));
    });

    EXPECT_EQ(surface.coverage(), "........\n"
                                  "..####..\n"
                                  "..####..\n"
                                  "........\n");
}

TEST(Strokes, GoHalfAWidthFurtherUnderASquareCap)
{
    Surface surface(8, 4);

    surface.paint([](GraphicsContext &context) {
        context.setLineWidth(2.0);
        context.setLineCap(LineCap::square);
        context.strokePath(linePath({2.0, 2.0}, {6.0, 2.0}));
    });

    EXPECT_EQ(surface.coverage(), "........\n"
                                  ".######.\n"
                                  ".######.\n"
                                  "........\n");
}

TEST(Strokes, HaveRoundEndsUnderARoundCap)
{
    Surface surface(8, 4);

    surface.paint([](GraphicsContext &context) {
        context.setLineWidth(2.0);
        context.setLineCap(LineCap::round);
        context.strokePath(linePath({2.0, 2.0}, {6.0, 2.0}));
    });

    EXPECT_EQ(surface.coverage(), "........\n"
                                  ".o####o.\n"
                                  ".o####o.\n"
                                  "........\n");
}

TEST(Strokes, CornersArePointedBevelledOrRound)
{
    Path corner;
    corner.moveTo({2.0, 2.0});
    corner.lineTo({8.0, 2.0});
    corner.lineTo({8.0, 8.0});
    const auto tip = [&corner](LineJoin join) {
        Surface surface(12, 10);
        surface.paint([&](GraphicsContext &context) {
            context.setLineWidth(4.0);
            context.setLineJoin(join);
            context.strokePath(corner);
        });
        return surface.at(9, 9) >> 24U;
    };

    EXPECT_EQ(tip(LineJoin::miter), 255U);
    EXPECT_EQ(tip(LineJoin::bevel), 0U);
    EXPECT_GT(tip(LineJoin::round), 0U);
    EXPECT_LT(tip(LineJoin::round), 255U);
}

TEST(Strokes, DashesCountInPointsWhateverTheWidth)
{
    Surface surface(16, 4);

    surface.paint([](GraphicsContext &context) {
        context.setLineWidth(2.0);
        context.setLineDash(0.0, {4.0, 2.0});
        context.strokePath(linePath({0.0, 2.0}, {16.0, 2.0}));
    });

    EXPECT_EQ(surface.coverage(), "................\n"
                                  "####..####..####\n"
                                  "####..####..####\n"
                                  "................\n");
}

TEST(Strokes, DashPhaseShiftsThePatternBackAndMayBeNegative)
{
    const auto painted = [](double phase) {
        Surface surface(12, 2);
        surface.paint([phase](GraphicsContext &context) {
            context.setLineWidth(2.0);
            context.setLineDash(phase, {4.0, 2.0});
            context.strokePath(linePath({0.0, 1.0}, {12.0, 1.0}));
        });
        return surface.coverage();
    };

    EXPECT_EQ(painted(1.0), "###..####..#\n###..####..#\n");
    EXPECT_EQ(painted(-5.0), painted(1.0));
}

TEST(Strokes, OddDashListsGoOnTurnedOver)
{
    Surface surface(12, 2);

    surface.paint([](GraphicsContext &context) {
        context.setLineWidth(2.0);
        context.setLineDash(0.0, {3.0});
        context.strokePath(linePath({0.0, 1.0}, {12.0, 1.0}));
    });

    EXPECT_EQ(surface.coverage(), "###...###...\n###...###...\n");
}

TEST(Strokes, DashListsWithoutALengthAreSolid)
{
    for (const std::vector<double> &lengths : {std::vector<double>{},
                                               {0.0, 0.0},
                                               {-1.0, 3.0},
                                               {std::numeric_limits<double>::quiet_NaN()}}) {
        Surface surface(4, 2);
        surface.paint([&](GraphicsContext &context) {
            context.setLineWidth(2.0);
            context.setLineDash(0.0, lengths);
            context.strokePath(linePath({0.0, 1.0}, {4.0, 1.0}));
        });
        EXPECT_EQ(surface.coverage(), "####\n####\n");
    }
}

TEST(Strokes, AClickLeavesADotUnderARoundCapASquareUnderASquareOneElseNothing)
{
    const auto painted = [](LineCap cap) {
        Surface surface(6, 6);
        surface.paint([cap](GraphicsContext &context) {
            context.setLineWidth(4.0);
            context.setLineCap(cap);
            context.strokePath(linePath({3.0, 3.0}, {3.0, 3.0}));
        });
        return surface.coverage();
    };

    EXPECT_EQ(painted(LineCap::round), "......\n"
                                       ".oooo.\n"
                                       ".o##o.\n"
                                       ".o##o.\n"
                                       ".oooo.\n"
                                       "......\n");
    EXPECT_EQ(painted(LineCap::square).substr(7, 14), ".####.\n.####.\n");
    EXPECT_EQ(painted(LineCap::butt).find('#'), std::string::npos);
}

TEST(Strokes, AMoveAloneLeavesNothing)
{
    Surface surface(6, 6);
    Path path;
    path.moveTo({3.0, 3.0});

    surface.paint([&](GraphicsContext &context) {
        context.setLineWidth(4.0);
        context.setLineCap(LineCap::round);
        context.strokePath(path);
    });

    EXPECT_EQ(surface.image(), Image(6, 6));
}

TEST(Strokes, DoNotAddUpWhereTheyCrossThemselves)
{
    Path cross;
    cross.moveTo({2.0, 5.0});
    cross.lineTo({8.0, 5.0});
    cross.moveTo({5.0, 2.0});
    cross.lineTo({5.0, 8.0});
    Surface surface(10, 10);

    surface.paint([&](GraphicsContext &context) {
        context.setLineWidth(2.0);
        context.setStrokeColor(kBlue.setAlphaValue(0.5F));
        context.strokePath(cross);
    });

    EXPECT_EQ(surface.at(5, 5), 0x80000080U);
    EXPECT_EQ(surface.at(2, 5), 0x80000080U);
}

TEST(Strokes, AHighlighterOverWhiteIsHalfWay)
{
    Surface surface(6, 4);
    surface.fill(0xFFFFFFFF);

    surface.paint([](GraphicsContext &context) {
        context.setLineWidth(4.0);
        context.setStrokeColor(kBlue.setAlphaValue(0.5F));
        context.strokePath(linePath({0.0, 2.0}, {6.0, 2.0}));
    });

    // Alpha 128: 255 * 127 / 255 of the white remains.
    EXPECT_EQ(surface.at(3, 2), 0xFF7F7FFFU);
}

TEST(Strokes, AnEraserTakesTheInkAwayAndABackdropFillsTheGapFromBehind)
{
    Surface surface(10, 10);

    surface.paint([](GraphicsContext &context) {
        context.setLineWidth(10.0);
        context.setStrokeColor(kRed);
        context.strokePath(linePath({0.0, 5.0}, {10.0, 5.0}));
        context.setBlendMode(BlendMode::clear);
        context.setLineWidth(2.0);
        context.setStrokeColor(Color::black());
        context.strokePath(linePath({5.0, 0.0}, {5.0, 10.0}));
    });
    EXPECT_EQ(surface.at(4, 5), 0x00000000U);
    EXPECT_EQ(surface.at(5, 5), 0x00000000U);
    EXPECT_EQ(surface.at(3, 5), 0xFFFF0000U);

    surface.paint([](GraphicsContext &context) {
        context.setFillColor(Color::white());
        context.fillRect(Rect::make(0.0, 0.0, 10.0, 10.0), CompositingOperation::destinationOver);
    });
    EXPECT_EQ(surface.at(4, 5), 0xFFFFFFFFU);
    EXPECT_EQ(surface.at(3, 5), 0xFFFF0000U);
}

TEST(Strokes, AnEraserWithRoundEndsTakesAwayAsMuchOfAPixelAsItCovers)
{
    Surface surface(20, 10);
    surface.fill(0xFFFF0000);

    surface.paint([](GraphicsContext &context) {
        context.setBlendMode(BlendMode::clear);
        context.setLineWidth(3.0);
        context.setLineCap(LineCap::round);
        context.setLineJoin(LineJoin::round);
        context.strokePath(linePath({-5.0, 5.0}, {25.0, 5.0}));
    });

    EXPECT_EQ(surface.at(10, 2), 0xFFFF0000U);
    EXPECT_EQ(surface.at(10, 3), 0x7F7F0000U) << "covered by 128 of 255";
    EXPECT_EQ(surface.at(10, 4), 0U);
    EXPECT_EQ(surface.at(10, 5), 0U);
    EXPECT_EQ(surface.at(10, 6), 0x7F7F0000U);
}

TEST(Strokes, ThinLinesAreFaintAndNotWidened)
{
    Surface surface(6, 3);

    surface.paint([](GraphicsContext &context) {
        context.setLineWidth(0.5);
        context.strokePath(linePath({0.0, 1.5}, {6.0, 1.5}));
    });

    EXPECT_EQ(surface.at(3, 0), 0U);
    EXPECT_NEAR(surface.at(3, 1) >> 24U, 128, 2);
    EXPECT_EQ(surface.at(3, 2), 0U);
}

TEST(Strokes, WithoutAWidthOrWithNumbersThatAreNoneNothingIsPainted)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double width : {0.0, -3.0, nan, infinite}) {
        Surface surface(6, 6);
        surface.paint([width](GraphicsContext &context) {
            context.setLineWidth(width);
            context.strokePath(linePath({0.0, 3.0}, {6.0, 3.0}));
        });
        EXPECT_EQ(surface.image(), Image(6, 6)) << width;
    }

    Surface surface(6, 6);
    surface.paint([&](GraphicsContext &context) {
        context.setLineWidth(2.0);
        context.strokePath(linePath({nan, 3.0}, {infinite, 3.0}));
        context.fillPath(linePath({nan, 3.0}, {infinite, 3.0}));
        context.fillRect(Rect::make(nan, 0.0, 3.0, 3.0), CompositingOperation::copy);
        context.fillRect(Rect::make(0.0, 0.0, -3.0, 3.0), CompositingOperation::copy);
    });
    EXPECT_EQ(surface.image(), Image(6, 6));
}

TEST(Fills, FollowTheWindingRule)
{
    Path nested;
    nested.addRect(Rect::make(0.0, 0.0, 8.0, 8.0));
    nested.addRect(Rect::make(2.0, 2.0, 4.0, 4.0));
    Surface surface(8, 8);

    surface.paint([&](GraphicsContext &context) {
        context.setFillColor(kGreen);
        context.fillPath(nested);
    });

    EXPECT_EQ(surface.at(4, 4), 0xFF00FF00U);
}

TEST(Fills, CoverPartsOfPixelsInPart)
{
    Surface surface(3, 1);

    surface.paint([](GraphicsContext &context) {
        context.setFillColor(Color::white());
        context.fillRect(Rect::make(0.5, 0.0, 1.5, 1.0), CompositingOperation::sourceOver);
    });

    EXPECT_NEAR(surface.at(0, 0) >> 24U, 128, 1);
    EXPECT_EQ(surface.at(1, 0), 0xFFFFFFFFU);
    EXPECT_EQ(surface.at(2, 0), 0U);
}

} // namespace
} // namespace orv::platform
