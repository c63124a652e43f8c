#include "orvane-streamer/picture/ScreenArea.h"

#include <gtest/gtest.h>

#include <limits>

namespace orv::apps::test {

TEST(ScreenArea, isClippedToTheScreen)
{
    const ScreenArea area{-10, 1000, 100, 200};

    const ScreenArea visible = onScreen(area, 1920, 1080);

    EXPECT_EQ(visible, (ScreenArea{0, 1000, 90, 80}));
}

TEST(ScreenArea, isNothingOutsideTheScreen)
{
    constexpr int kMost = std::numeric_limits<int>::max();
    constexpr int kLeast = std::numeric_limits<int>::min();

    for (const ScreenArea &area :
         {ScreenArea{1920, 0, 10, 10}, ScreenArea{0, -10, 10, 10}, ScreenArea{0, 0, -5, 10},
          ScreenArea{5, 5, 0, 0}, ScreenArea{kMost, 0, kMost, 1}, ScreenArea{kLeast, 0, kMost, 1},
          ScreenArea{kLeast, kLeast, kLeast, kLeast}}) {
        EXPECT_EQ(onScreen(area, 1920, 1080), ScreenArea()) << area.x;
    }
}

TEST(ScreenArea, isTheScreenWhenItHoldsIt)
{
    const ScreenArea area{-10, -10, std::numeric_limits<int>::max(), 5000};

    const ScreenArea visible = onScreen(area, 1920, 1080);

    EXPECT_EQ(visible, (ScreenArea{0, 0, 1920, 1080}));
}

} // namespace orv::apps::test
