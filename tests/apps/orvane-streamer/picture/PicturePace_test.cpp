#include "orvane-streamer/picture/PicturePace.h"

#include "orvane-streamer/picture/PictureLevels.h"

#include <gtest/gtest.h>

namespace orv::apps::test {

namespace {

using std::chrono::milliseconds;

class Pace : public testing::Test {
protected:
    /// One frame after the other that each takes so long.
    void draw(int frames, milliseconds took)
    {
        for (int i = 0; i < frames; ++i) {
            pace.drawn(now, now + took);
            now += took;
        }
    }

    PicturePace pace;
    PicturePace::Time now{std::chrono::hours(1)};
};

} // namespace

TEST_F(Pace, beginsInTheMiddle)
{
    EXPECT_GT(pace.level(), kBestLevel);
    EXPECT_LT(pace.level(), kLastLevel);
}

TEST_F(Pace, risesToTheBestWhileFramesAreQuick)
{
    draw(300, milliseconds(20));

    EXPECT_EQ(pace.level(), kBestLevel);
}

TEST_F(Pace, risesAtMostOnceASecond)
{
    const int first = pace.level();
    draw(1, milliseconds(20));

    draw(49, milliseconds(20));

    EXPECT_EQ(pace.level(), first - 1);
}

TEST_F(Pace, fallsAtOnceWhenAFrameIsLate)
{
    draw(300, milliseconds(20));

    draw(1, milliseconds(100));

    EXPECT_EQ(pace.level(), kBestLevel + 1);
}

TEST_F(Pace, fallsFartherWhenAFrameIsVeryLate)
{
    draw(300, milliseconds(20));

    draw(1, milliseconds(400));

    EXPECT_EQ(pace.level(), kBestLevel + 2);
}

TEST_F(Pace, fallsWhileItStillWaits)
{
    draw(300, milliseconds(20));

    pace.waiting(now, now + milliseconds(60));
    const int inTime = pace.level();
    pace.waiting(now, now + milliseconds(90));

    EXPECT_EQ(inTime, kBestLevel);
    EXPECT_EQ(pace.level(), kBestLevel + 1);
}

TEST_F(Pace, fallsOnceForFramesThatWereUnderWayTogether)
{
    draw(300, milliseconds(20));

    pace.waiting(now, now + milliseconds(90));
    pace.drawn(now, now + milliseconds(100));
    pace.drawn(now + milliseconds(1), now + milliseconds(110));

    EXPECT_EQ(pace.level(), kBestLevel + 1);
}

TEST_F(Pace, endsAtTheLastLevel)
{
    draw(20, milliseconds(30));

    draw(20, milliseconds(5000));

    EXPECT_EQ(pace.level(), kLastLevel);
}

TEST_F(Pace, keepsItsLevelBetweenQuickAndLate)
{
    draw(300, milliseconds(20));
    draw(1, milliseconds(100));

    draw(100, milliseconds(60));

    EXPECT_EQ(pace.level(), kBestLevel + 1);
}

TEST_F(Pace, doesNotFallForAWayThatIsSlowWithTheSmallestFrame)
{
    draw(1, milliseconds(70));
    const int before = pace.level();

    draw(50, milliseconds(120));

    EXPECT_EQ(pace.level(), before);
}

TEST_F(Pace, staysLowOnAWayThatIsFull)
{
    draw(1, milliseconds(2000));

    draw(100, milliseconds(2000));

    EXPECT_EQ(pace.level(), kLastLevel);
}

} // namespace orv::apps::test
