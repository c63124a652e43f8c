#include "platform/values/Path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
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

/// What a search near an area visits, with the number of points that it passes over.
struct Visits {
    int visited = 0;
    std::vector<Point> skippedTo;

    Visits(const Path &path, const Rect &area)
    {
        path.forEachNear(
            area, [this](const Path::Element & /*element*/) { ++visited; },
            [this](Point end) { skippedTo.push_back(end); });
    }
};

Path levelLine(int points)
{
    Path path;
    path.moveTo({0.0, 5.0});
    for (int i = 1; i < points; ++i) {
        path.lineTo({static_cast<double>(i), 5.0});
    }
    return path;
}

TEST(Path, aSearchNearAnAreaPassesOverWhatStaysOutOfIt)
{
    const Path path = levelLine(1000);

    const Visits visits(path, Rect::make(500.0, 0.0, 3.0, 10.0));

    EXPECT_LT(visits.visited, 200);
    EXPECT_GT(visits.visited, 3);
    ASSERT_FALSE(visits.skippedTo.empty());
    EXPECT_EQ(visits.skippedTo.back(), (Point{999.0, 5.0}));
    for (const Point end : visits.skippedTo) {
        EXPECT_FALSE(end.x >= 500.0 && end.x <= 503.0);
    }
}

TEST(Path, aSearchNearAnAreaFindsALineThatOnlyCrossesIt)
{
    Path path = levelLine(64);
    path.lineTo({1000.0, 5.0});

    const Visits visits(path, Rect::make(500.0, 0.0, 3.0, 10.0));

    EXPECT_GE(visits.visited, 1);
}

TEST(Path, aSearchNearAnAreaNeverPassesOverMovesAndClosesNorPointsThatAreNoNumbers)
{
    const Rect farAway = Rect::make(5000.0, 0.0, 3.0, 10.0);
    Path closed = levelLine(100);
    closed.close();
    Path moved = levelLine(100);
    moved.moveTo({0.0, 9.0});
    Path holed = levelLine(100);
    holed.lineTo({std::nan(""), 9.0});

    for (const Path &path : {closed, moved, holed}) {
        EXPECT_EQ(Visits(path, farAway).visited, 101);
    }
    EXPECT_EQ(Visits(levelLine(101), farAway).visited, 64) << "those with the first move";
}

TEST(Path, aSearchNearAnAreaVisitsWhatComesFromAPointThatIsNoNumber)
{
    Path path = levelLine(63);
    path.lineTo({std::nan(""), 9.0});
    for (int i = 0; i < 64; ++i) {
        path.lineTo({static_cast<double>(i), 9.0});
    }

    const Visits visits(path, Rect::make(5000.0, 0.0, 3.0, 10.0));

    EXPECT_EQ(visits.visited, 128);
}

TEST(Path, aCopyThatWasLeftBehindIsSearchedToItsOwnEnd)
{
    Path path = levelLine(100);
    const Path copy = path;
    for (int i = 0; i < 100; ++i) {
        path.lineTo({0.0, 1000.0 + i});
    }

    const Visits all(copy, Rect::make(0.0, 0.0, 2000.0, 2000.0));
    const Visits none(copy, Rect::make(0.0, -50.0, 10.0, 10.0));

    EXPECT_EQ(all.visited, 100);
    EXPECT_EQ(none.visited, 64) << "those with the move";
    EXPECT_EQ(none.skippedTo, std::vector{(Point{99.0, 5.0})});
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
