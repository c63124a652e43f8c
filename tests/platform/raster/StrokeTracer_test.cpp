#include "platform/raster/StrokeTracer.h"

#include "Coverage.h"
#include "Surface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace orv::platform {
namespace {

constexpr int kSide = 64;

StrokeStyle roundStyle(double width, std::vector<double> dashes = {})
{
    StrokeStyle style;
    style.width = width;
    style.cap = LineCap::round;
    style.join = LineJoin::round;
    style.dashLengths = std::move(dashes);
    return style;
}

std::vector<int> traced(const Path &path, const StrokeStyle &style, const PixelRect &area,
                        const AffineTransform &toDevice = {})
{
    StrokeMask mask(area);
    traceStroke(path, style, toDevice, mask);
    return takenCoverage(mask);
}

constexpr PixelRect kAll{0, 0, kSide, kSide};

int at(const std::vector<int> &coverage, int x, int y)
{
    return coverage[static_cast<std::size_t>(y * kSide + x)];
}

/// A line that wanders over the area and far out of it.
Path wandering(int points)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> step(-9.0, 9.0);
    Path path;
    Point p{30.0, 30.0};
    path.moveTo(p);
    for (int i = 1; i < points; ++i) {
        p = {p.x + step(random) + std::sin(i * 0.01), p.y + step(random)};
        path.lineTo(p);
    }
    return path;
}

TEST(StrokeTracer, OnlyRoundStrokesUnderTransformsThatKeepCirclesAreTraced)
{
    const StrokeStyle round = roundStyle(3.0);
    StrokeStyle pointed = round;
    pointed.join = LineJoin::miter;
    StrokeStyle blunt = round;
    blunt.cap = LineCap::butt;

    EXPECT_TRUE(isTraceable(round, {}));
    EXPECT_TRUE(isTraceable(round, {1.5, 0.0, 0.0, -1.5, 7.0, 9.0}));
    EXPECT_TRUE(isTraceable(round, AffineTransform::rotation(0.7)));
    EXPECT_FALSE(isTraceable(pointed, {}));
    EXPECT_FALSE(isTraceable(blunt, {}));
    EXPECT_FALSE(isTraceable(round, {1.0, 0.0, 0.0, 1.2, 0.0, 0.0}));
    EXPECT_FALSE(isTraceable(round, {1.0, 0.0, 0.5, 1.0, 0.0, 0.0}));
}

TEST(StrokeTracer, WhatStaysOutOfSightMakesNoDifferenceToWhatIsSeen)
{
    const Path path = wandering(5000);
    const AffineTransform turned = AffineTransform::rotation(0.3);
    const auto whole = traced(path, roundStyle(3.0), {-800, -800, 1600, 1600}, turned);

    const auto part = traced(path, roundStyle(3.0), kAll, turned);

    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            ASSERT_EQ(at(part, x, y), whole[static_cast<std::size_t>((y + 800) * 1600 + x + 800)])
                << x << ", " << y;
        }
    }
    EXPECT_GT(std::count(part.begin(), part.end(), 255), 50);
}

TEST(StrokeTracer, DashesStayWhereTheyAreWhateverOfTheLineIsInSight)
{
    const Path path = wandering(3000);
    const StrokeStyle dashed = roundStyle(2.0, {11.0, 5.0, 3.0});
    const auto whole = traced(path, dashed, {-800, -800, 1600, 1600});

    const auto part = traced(path, dashed, kAll);

    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            ASSERT_EQ(at(part, x, y), whole[static_cast<std::size_t>((y + 800) * 1600 + x + 800)])
                << x << ", " << y;
        }
    }
    EXPECT_NE(part, traced(path, roundStyle(2.0), kAll));
}

TEST(StrokeTracer, DashesHaveRoundEndsAndCountAlongTheLine)
{
    Path path;
    path.moveTo({4.0, 20.0});
    path.lineTo({20.0, 20.0});
    path.lineTo({60.0, 20.0});

    const auto coverage = traced(path, roundStyle(4.0, {20.0, 12.0}), kAll);

    EXPECT_EQ(at(coverage, 5, 20), 255);
    EXPECT_EQ(at(coverage, 23, 20), 255);
    EXPECT_EQ(at(coverage, 25, 20), at(coverage, 25, 19));
    EXPECT_GT(at(coverage, 25, 20), 0) << "the round end";
    EXPECT_EQ(at(coverage, 30, 20), 0);
    EXPECT_EQ(at(coverage, 33, 20), 0);
    EXPECT_EQ(at(coverage, 37, 20), 255);
    EXPECT_EQ(at(coverage, 55, 20), 255);
}

TEST(StrokeTracer, ALineOfManyDashesTakesNoLongerThanWhatIsSeenOfIt)
{
    Path path;
    path.moveTo({-9e6, 20.0});
    path.lineTo({9e6, 20.0});

    const auto coverage = traced(path, roundStyle(1.0, {0.2, 0.2}), kAll);

    EXPECT_GT(at(coverage, 20, 20), 0);
    EXPECT_EQ(at(coverage, 20, 30), 0);
}

TEST(StrokeTracer, DashesTooShortToBeToldApartAreALine)
{
    Path path;
    path.moveTo({-9e6, 20.5});
    path.lineTo({9e6, 20.5});

    EXPECT_EQ(traced(path, roundStyle(2.0, {0.001, 0.001}), kAll),
              traced(path, roundStyle(2.0), kAll));
}

TEST(StrokeTracer, CurvesAreSmooth)
{
    // The usual four arcs of a circle, which they follow to a few thousandths of its radius.
    Path circle;
    circle.addEllipse(Rect::make(8.0, 8.0, 48.0, 48.0));

    const auto coverage = traced(circle, roundStyle(4.0), kAll);

    for (int i = 0; i < 360; ++i) {
        const double angle = i * std::numbers::pi / 180.0;
        const auto on = [&](double radius) {
            return at(coverage, static_cast<int>(32.0 + radius * std::cos(angle)),
                      static_cast<int>(32.0 + radius * std::sin(angle)));
        };
        ASSERT_EQ(on(24.0), 255) << i;
        ASSERT_EQ(on(27.8), 0) << i;
        ASSERT_EQ(on(20.2), 0) << i;
    }
}

TEST(StrokeTracer, ACloseDrawsTheWayBackAndDashesBeginAnew)
{
    Path open;
    open.moveTo({10.0, 10.0});
    open.lineTo({50.0, 10.0});
    open.lineTo({50.0, 50.0});
    Path closed = open;
    closed.close();
    Path back = open;
    back.lineTo({10.0, 10.0});

    EXPECT_EQ(traced(closed, roundStyle(3.0), kAll), traced(back, roundStyle(3.0), kAll));
    EXPECT_NE(traced(closed, roundStyle(3.0), kAll), traced(open, roundStyle(3.0), kAll));
}

TEST(StrokeTracer, PointsThatAreNoNumbersAreLeftOut)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Path holed;
    holed.moveTo({10.0, 10.0});
    Path whole = holed;
    for (int i = 1; i < 300; ++i) {
        const Point p{10.0 + i * 0.1, 10.0 + i * 0.15};
        whole.lineTo(p);
        holed.lineTo(p);
        if (i % 60 == 3) {
            holed.lineTo({nan, 5.0});
            holed.lineTo({5.0, -std::numeric_limits<double>::infinity()});
        }
    }

    EXPECT_EQ(traced(holed, roundStyle(3.0), {20, 20, 9, 9}),
              traced(whole, roundStyle(3.0), {20, 20, 9, 9}));
}

TEST(StrokeTracer, AStrokeIsWhatAnOutlineOfItFillsButForItsSmoothEdge)
{
    const Path path = wandering(40);
    Surface filled(kSide, kSide);
    filled.paint([&](GraphicsContext &context) {
        // A mode that the mask does not paint, and that shows the same on an empty surface.
        context.setBlendMode(BlendMode::exclusiveOr);
        context.setLineWidth(6.0);
        context.setLineCap(LineCap::round);
        context.setLineJoin(LineJoin::round);
        context.strokePath(path);
    });

    const auto coverage = traced(path, roundStyle(6.0), kAll, filled.grid().toDevice());

    int inked = 0;
    for (int y = 1; y + 1 < kSide; ++y) {
        for (int x = 1; x + 1 < kSide; ++x) {
            const int other = static_cast<int>(filled.at(x, y) >> 24U);
            ASSERT_NEAR(at(coverage, x, y), other, 128) << x << ", " << y;
            inked += other == 255 && at(coverage, x, y) == 255 ? 1 : 0;
        }
    }
    EXPECT_GT(inked, 300);
}

} // namespace
} // namespace orv::platform
