#include "platform/values/Geometry.h"

#include <gtest/gtest.h>

#include <numbers>

namespace orv::platform {
namespace {

void expectNear(Point found, Point wanted)
{
    EXPECT_NEAR(found.x, wanted.x, 1e-12);
    EXPECT_NEAR(found.y, wanted.y, 1e-12);
}

TEST(Rect, containsItsNearEdgesAndNotItsFarOnes)
{
    const Rect rect = Rect::make(10, 20, 30, 40);

    EXPECT_TRUE(rect.contains({10, 20}));
    EXPECT_TRUE(rect.contains({39.999, 59.999}));
    EXPECT_FALSE(rect.contains({40, 30}));
    EXPECT_FALSE(rect.contains({20, 60}));
    EXPECT_FALSE(rect.contains({9.999, 30}));
}

TEST(Rect, containsAMouseOnItsTopEdgeAndNotOnItsBottomEdge)
{
    const Rect rect = Rect::make(10, 20, 30, 40);

    EXPECT_TRUE(rect.containsMouse({10, 60}));
    EXPECT_FALSE(rect.containsMouse({10, 20}));
    EXPECT_TRUE(rect.containsMouse({10, 20.001}));
    EXPECT_FALSE(rect.containsMouse({40, 60}));
}

TEST(Rect, isEmptyWithoutAWidthOrAHeight)
{
    EXPECT_TRUE(Rect::make(1, 1, 0, 5).isEmpty());
    EXPECT_TRUE(Rect::make(1, 1, 5, -1).isEmpty());
    EXPECT_TRUE(Rect::make(1, 1, std::nan(""), 5).isEmpty());
    EXPECT_FALSE(Rect::make(1, 1, 0.1, 0.1).isEmpty());
}

TEST(Rect, insetsOffsetsAndCenter)
{
    const Rect rect = Rect::make(10, 20, 30, 40);

    EXPECT_EQ(rect.insetBy(1, 2), Rect::make(11, 22, 28, 36));
    EXPECT_EQ(rect.insetBy(-1, -2), Rect::make(9, 18, 32, 44));
    EXPECT_EQ(rect.offsetBy(5, -5), Rect::make(15, 15, 30, 40));
    EXPECT_EQ(rect.center(), (Point{25, 40}));
}

TEST(Rect, intersectionIsTheCommonPartOrAllZero)
{
    const Rect rect = Rect::make(0, 0, 10, 10);

    EXPECT_EQ(rect.intersection(Rect::make(5, 6, 10, 10)), Rect::make(5, 6, 5, 4));
    EXPECT_EQ(rect.intersection(Rect::make(10, 0, 10, 10)), Rect{}) << "edges that only touch";
    EXPECT_EQ(rect.intersection(Rect::make(20, 20, 1, 1)), Rect{});
}

TEST(Rect, theUnionLeavesOutEmptyOnes)
{
    const Rect rect = Rect::make(0, 0, 10, 10);

    EXPECT_EQ(rect.united(Rect::make(20, -5, 5, 5)), Rect::make(0, -5, 25, 15));
    EXPECT_EQ(rect.united(Rect::make(100, 100, 0, 5)), rect);
    EXPECT_EQ(Rect::make(100, 100, 0, 5).united(rect), rect);
}

TEST(AffineTransform, appliesWhatItsNameSays)
{
    expectNear(AffineTransform{}.apply({3, 4}), {3, 4});
    expectNear(AffineTransform::translation(1, 2).apply({3, 4}), {4, 6});
    expectNear(AffineTransform::scale(2, -1).apply({3, 4}), {6, -4});
    expectNear(AffineTransform::rotation(std::numbers::pi / 2).apply({1, 0}), {0, 1});
}

TEST(AffineTransform, thenAppliesTheOtherOneAfterwards)
{
    const auto move = AffineTransform::translation(10, 0);
    const auto turn = AffineTransform::rotation(std::numbers::pi / 2);

    expectNear(move.then(turn).apply({1, 0}), turn.apply(move.apply({1, 0})));
    expectNear(turn.then(move).apply({1, 0}), {10, 1});
}

TEST(AffineTransform, theInverseLeadsBack)
{
    const auto transform = AffineTransform::rotation(0.7)
                               .then(AffineTransform::scale(2, 3))
                               .then(AffineTransform::translation(-5, 11));

    expectNear(transform.inverted().apply(transform.apply({3.5, -8})), {3.5, -8});
    EXPECT_EQ(AffineTransform::scale(0, 1).inverted(), AffineTransform{});
}

} // namespace
} // namespace orv::platform
