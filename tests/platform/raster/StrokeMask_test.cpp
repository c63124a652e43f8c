#include "platform/raster/StrokeMask.h"

#include "Coverage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace orv::platform {
namespace {

constexpr int kSide = 48;
constexpr PixelRect kAll{0, 0, kSide, kSide};

struct Stroke {
    Point from;
    Point to;
    double radius;
};

std::vector<int> covered(const PixelRect &area, const std::vector<Stroke> &strokes)
{
    StrokeMask mask(area);
    for (const Stroke &stroke : strokes) {
        mask.add(stroke.from, stroke.to, stroke.radius);
    }
    return takenCoverage(mask);
}

int at(const std::vector<int> &coverage, int x, int y)
{
    return coverage[static_cast<std::size_t>(y * kSide + x)];
}

std::vector<Stroke> someStrokes(unsigned seed, int count)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> place(-10.0, kSide + 10.0);
    std::uniform_real_distribution<double> radius(0.2, 9.0);
    std::vector<Stroke> strokes;
    for (int i = 0; i < count; ++i) {
        strokes.push_back(
            {{place(random), place(random)}, {place(random), place(random)}, radius(random)});
    }
    return strokes;
}

TEST(StrokeMask, ALevelLineCoversItsRowsAndHalfOfThoseAtItsEdges)
{
    const auto coverage = covered(kAll, {{{10.0, 20.0}, {30.0, 20.0}, 2.5}});

    EXPECT_EQ(at(coverage, 20, 17), 128);
    for (int y = 18; y < 22; ++y) {
        EXPECT_EQ(at(coverage, 20, y), 255) << y;
    }
    EXPECT_EQ(at(coverage, 20, 22), 128);
    EXPECT_EQ(at(coverage, 20, 16), 0);
    EXPECT_EQ(at(coverage, 20, 23), 0);
}

TEST(StrokeMask, EndsAreRoundAndADotIsADisc)
{
    const auto coverage = covered(kAll, {{{24.0, 24.0}, {24.0, 24.0}, 10.0}});

    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const double distance = std::hypot(x + 0.5 - 24.0, y + 0.5 - 24.0);
            const double expected = std::clamp(10.5 - distance, 0.0, 1.0) * 255.0;
            ASSERT_NEAR(at(coverage, x, y), expected, 0.6) << x << ", " << y;
        }
    }
}

TEST(StrokeMask, ALineThinnerThanAPixelIsFaint)
{
    const auto coverage = covered(kAll, {{{0.0, 20.5}, {48.0, 20.5}, 0.25}});

    EXPECT_EQ(at(coverage, 20, 20), 128);
    EXPECT_EQ(at(coverage, 20, 19), 0);
    EXPECT_EQ(at(coverage, 20, 21), 0);
}

TEST(StrokeMask, EveryDirectionIsCoveredAsItsDistanceTells)
{
    for (const Stroke &stroke : someStrokes(1, 200)) {
        const auto coverage = covered(kAll, {stroke});
        const Point way = stroke.to - stroke.from;
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                const Point q{x + 0.5 - stroke.from.x, y + 0.5 - stroke.from.y};
                const double along = std::clamp(
                    (q.x * way.x + q.y * way.y) / (way.x * way.x + way.y * way.y), 0.0, 1.0);
                const double distance = std::hypot(q.x - along * way.x, q.y - along * way.y);
                const double part = std::min(stroke.radius, distance + 0.5) -
                                    std::max(-stroke.radius, distance - 0.5);
                ASSERT_NEAR(at(coverage, x, y), std::max(0.0, part) * 255.0, 0.6) << x << ", " << y;
            }
        }
    }
}

TEST(StrokeMask, TheOrderOfThePiecesDoesNotMatter)
{
    std::vector<Stroke> strokes = someStrokes(2, 30);
    const auto forward = covered(kAll, strokes);

    std::reverse(strokes.begin(), strokes.end());

    EXPECT_EQ(covered(kAll, strokes), forward);
}

TEST(StrokeMask, APartOfAMaskIsWhatTheWholeOneShowsThere)
{
    const std::vector<Stroke> strokes = someStrokes(3, 30);
    const auto whole = covered(kAll, strokes);
    for (const PixelRect &area :
         {PixelRect{5, 7, 1, 1}, {13, 0, 9, 48}, {40, 41, 8, 7}, {3, 20, 31, 2}}) {
        const auto part = covered(area, strokes);

        for (int y = 0; y < area.height; ++y) {
            for (int x = 0; x < area.width; ++x) {
                ASSERT_EQ(part[static_cast<std::size_t>(y * area.width + x)],
                          at(whole, area.x + x, area.y + y))
                    << area.x + x << ", " << area.y + y;
            }
        }
    }
}

TEST(StrokeMask, WhatWasTakenIsNoLongerCovered)
{
    StrokeMask mask(kAll);
    mask.add({0.0, 0.0}, {48.0, 48.0}, 5.0);
    takenCoverage(mask);

    mask.add({40.0, 4.0}, {44.0, 4.0}, 1.0);

    EXPECT_EQ(takenCoverage(mask), covered(kAll, {{{40.0, 4.0}, {44.0, 4.0}, 1.0}}));
}

TEST(StrokeMask, WhatLiesFarAwayCoversNothingAndALongLineIsStillInItsPlace)
{
    StrokeMask mask(kAll);
    mask.add({-1e7, -1e7}, {-1e7, 1e7}, 3.0);
    EXPECT_EQ(takenCoverage(mask), std::vector<int>(kSide * kSide));

    mask.add({-1e7, 20.5}, {1e7, 20.5}, 1.5);

    const auto coverage = takenCoverage(mask);
    EXPECT_EQ(at(coverage, 20, 20), 255);
    EXPECT_EQ(at(coverage, 20, 17), 0);
    EXPECT_EQ(at(coverage, 20, 23), 0);
}

} // namespace
} // namespace orv::platform
