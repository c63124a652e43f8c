#include "platform/raster/PixelRect.h"

#include <gtest/gtest.h>

namespace orv::platform {
namespace {

TEST(PixelGrid, TurnsYOverAtTheTopEdge)
{
    const PixelGrid grid{{100.0, 50.0}, 2.0};

    EXPECT_EQ(grid.toDevice().apply({0.0, 50.0}), (Point{0.0, 0.0}));
    EXPECT_EQ(grid.toDevice().apply({100.0, 0.0}), (Point{200.0, 100.0}));
}

TEST(PixelGrid, RoundsItsPixelsUpAndHasAtLeastOne)
{
    EXPECT_EQ((PixelGrid{{101.0, 50.0}, 1.25}.pixelWidth()), 127);
    EXPECT_EQ((PixelGrid{{100.0, 50.0}, 1.25}.pixelWidth()), 125);
    EXPECT_EQ((PixelGrid{{0.0, 0.0}, 1.0}.pixelHeight()), 1);
}

TEST(PixelGrid, GivesAllPixelsThatARectangleTouches)
{
    const PixelGrid grid{{10.0, 10.0}, 1.5};

    EXPECT_EQ(grid.pixelsTouching(Rect::make(1.0, 1.0, 1.0, 1.0)), (PixelRect{1, 12, 2, 2}));
    EXPECT_EQ(grid.pixelsTouching(Rect::make(-5.0, -5.0, 50.0, 50.0)), (PixelRect{0, 0, 15, 15}));
    EXPECT_TRUE(grid.pixelsTouching(Rect::make(20.0, 20.0, 5.0, 5.0)).isEmpty());
}

TEST(PixelGrid, PointsOfPixelsHoldTheRectangleThatTouchedThem)
{
    const PixelGrid grid{{10.0, 10.0}, 1.25};
    const Rect asked = Rect::make(3.1, 4.2, 1.3, 2.4);

    const Rect given = grid.points(grid.pixelsTouching(asked));

    EXPECT_LE(given.minX(), asked.minX());
    EXPECT_LE(given.minY(), asked.minY());
    EXPECT_GE(given.maxX(), asked.maxX());
    EXPECT_GE(given.maxY(), asked.maxY());
    EXPECT_LT(given.size.width, asked.size.width + 2.0 / 1.25);
}

TEST(PixelRect, ApartRectanglesHaveAnEmptyIntersection)
{
    EXPECT_EQ((PixelRect{0, 0, 5, 5}.intersection({5, 0, 5, 5})), PixelRect{});
    EXPECT_EQ((PixelRect{0, 0, 5, 5}.intersection({3, 2, 9, 1})), (PixelRect{3, 2, 2, 1}));
}

} // namespace
} // namespace orv::platform
