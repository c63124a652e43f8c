#include "platform/values/Path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace orv::platform {
namespace {

std::string textOf(const Path &path)
{
    std::string text;
    path.forEach([&text](const Path::Element &element) {
        text += "MLQCZ"[static_cast<int>(element.type)];
        for (int i = 0; i < pointCount(element.type); ++i) {
            text += std::to_string(static_cast<int>(element.points[i].x)) + "," +
                    std::to_string(static_cast<int>(element.points[i].y)) + " ";
        }
    });
    return text;
}

Path line(Point from, Point to)
{
    Path path;
    path.moveTo(from);
    path.lineTo(to);
    return path;
}

TEST(Path, elementsComeInTheOrderInWhichTheyWereAdded)
{
    Path path;
    path.moveTo({1, 2});
    path.lineTo({3, 4});
    path.quadCurveTo({5, 6}, {7, 8});
    path.curveTo({9, 10}, {11, 12}, {13, 14});
    path.close();
    path.lineTo({15, 16});

    EXPECT_EQ(textOf(path), "M1,2 L3,4 Q5,6 7,8 C9,10 11,12 13,14 ZL15,16 ");
    EXPECT_EQ(path.elementCount(), 6U);
    EXPECT_EQ(path.pointTotal(), 8U);
}

TEST(Path, elementsFromTheMiddleOnAreVisited)
{
    Path path = line({1, 1}, {2, 2});
    path.quadCurveTo({3, 3}, {4, 4});
    std::vector<double> xs;

    path.forEachFrom(1, 1,
                     [&xs](const Path::Element &element) { xs.push_back(element.points[0].x); });

    EXPECT_THAT(xs, testing::ElementsAre(2, 3));
}

TEST(Path, withoutACurrentPointOnlyAMoveCounts)
{
    Path path;
    path.lineTo({1, 1});
    path.quadCurveTo({1, 1}, {2, 2});
    path.curveTo({1, 1}, {2, 2}, {3, 3});
    path.close();

    EXPECT_TRUE(path.isEmpty());
    EXPECT_EQ(path.currentPoint(), (Point{0, 0}));
    EXPECT_EQ(path.controlBox(), Rect{});
}

TEST(Path, theCurrentPointIsTheLastOneAndAfterACloseTheStart)
{
    Path path = line({1, 2}, {3, 4});
    EXPECT_EQ(path.currentPoint(), (Point{3, 4}));
    path.close();
    EXPECT_EQ(path.currentPoint(), (Point{1, 2}));
}

TEST(Path, theControlBoxHoldsAllPoints)
{
    Path path = line({0, 0}, {10, 0});
    path.quadCurveTo({15, -5}, {10, 20});

    EXPECT_EQ(path.controlBox(), Rect::make(0, -5, 15, 25));
}

TEST(Path, aCopyStaysAsItWasWhenTheOriginalGrows)
{
    Path path = line({0, 0}, {1, 1});
    const Path copy = path;

    path.lineTo({2, 2});

    EXPECT_EQ(copy.elementCount(), 2U);
    EXPECT_EQ(textOf(copy), "M0,0 L1,1 ");
    EXPECT_EQ(copy.currentPoint(), (Point{1, 1}));
    EXPECT_EQ(copy.controlBox(), Rect::make(0, 0, 1, 1));
}

TEST(Path, extendsTheCopiesItHasGrownOutOf)
{
    Path path = line({0, 0}, {1, 1});
    const Path early = path;
    path.lineTo({2, 2});
    const Path late = path;
    path.lineTo({3, 3});

    EXPECT_TRUE(path.extends(early));
    EXPECT_TRUE(path.extends(late));
    EXPECT_TRUE(late.extends(early));
    EXPECT_TRUE(path.extends(path));
    EXPECT_FALSE(early.extends(late));
    EXPECT_FALSE(late.extends(path));
}

TEST(Path, everyPathExtendsAnEmptyOneAndAnEmptyOneExtendsNoOther)
{
    const Path path = line({0, 0}, {1, 1});

    EXPECT_TRUE(path.extends(Path{}));
    EXPECT_TRUE(Path{}.extends(Path{}));
    EXPECT_FALSE(Path{}.extends(path));
}

TEST(Path, twoCopiesThatGrowApartShareNothingAnyMore)
{
    Path first = line({0, 0}, {1, 1});
    Path second = first;
    const Path root = first;

    first.lineTo({2, 2});
    second.lineTo({-2, -2});

    EXPECT_EQ(textOf(first), "M0,0 L1,1 L2,2 ");
    EXPECT_EQ(textOf(second), "M0,0 L1,1 L-2,-2 ");
    EXPECT_EQ(textOf(root), "M0,0 L1,1 ");
    EXPECT_FALSE(first.extends(second));
    EXPECT_FALSE(second.extends(first));
    EXPECT_TRUE(first.extends(root));
    EXPECT_FALSE(second.extends(root)) << "it went on with elements of its own";
}

TEST(Path, extendingIsAboutSharingAndEqualityAboutElements)
{
    const Path path = line({0, 0}, {1, 1});
    const Path twin = line({0, 0}, {1, 1});

    EXPECT_EQ(path, twin);
    EXPECT_FALSE(path.extends(twin));
}

TEST(Path, equalityLooksAtKindsAndPoints)
{
    EXPECT_EQ(Path{}, Path{});
    EXPECT_FALSE(line({0, 0}, {1, 1}) == line({0, 0}, {1, 2}));
    Path moves;
    moves.moveTo({0, 0});
    moves.moveTo({1, 1});
    EXPECT_FALSE(moves == line({0, 0}, {1, 1}));
    Path grown = line({0, 0}, {1, 1});
    const Path before = grown;
    grown.close();
    EXPECT_FALSE(grown == before);
}

TEST(Path, aRectangleIsFourCornersAndAClose)
{
    Path path;
    path.addRect(Rect::make(1, 2, 3, 4));

    EXPECT_EQ(textOf(path), "M1,2 L4,2 L4,6 L1,6 Z");
}

TEST(Path, anEllipseFillsItsRectangle)
{
    Path path;
    path.addEllipse(Rect::make(10, 20, 30, 40));

    EXPECT_EQ(path.controlBox(), Rect::make(10, 20, 30, 40));
    EXPECT_EQ(path.currentPoint(), (Point{40, 40}));
}

TEST(Path, roundCornersAreNoLargerThanHalfTheRectangle)
{
    Path large;
    large.addRoundedRect(Rect::make(0, 0, 10, 20), 100, 100);
    Path ellipse;
    ellipse.addEllipse(Rect::make(0, 0, 10, 20));

    EXPECT_EQ(large, ellipse);
}

} // namespace
} // namespace orv::platform
