#include "apps/orvane-streamer/picture/display/Stage.h"

#include <gmock/gmock.h>

namespace orv::apps::test {

namespace {

/// Whatever the display is: with a compositor, without, without shared memory.
class AnyDisplay : public testing::Test, public Stage {};

using Boxes = std::vector<PixelBox>;

} // namespace

TEST_F(AnyDisplay, showsANewcomerTheWholeScreen)
{
    ASSERT_TRUE(begin({kAnna}));

    const SeenFrame first = anna.frame(0);

    EXPECT_EQ(first.frame, 1U);
    EXPECT_EQ(first.box, (PixelBox{0, 0, 1920, 1080}));
    EXPECT_EQ(first.pictureWidth, 1920);
    EXPECT_EQ(first.pictureHeight, 1080);
    EXPECT_TRUE(isNear(anna.at(100, 100), kGreen, 40));
    EXPECT_TRUE(isNear(anna.at(50, 50), painter.pixel(50, 50), 8));
    EXPECT_TRUE(isNear(anna.at(1919, 1079), painter.pixel(1919, 1079), 8));
}

TEST_F(AnyDisplay, showsWhatIsDrawnAndNothingElse)
{
    ASSERT_TRUE(begin({kAnna}));
    const std::size_t before = anna.frameCount();

    painter.fill(200, 200, 20, 10, kRed);

    ASSERT_TRUE(anna.comesToShow(210, 205, kRed, 24));
    EXPECT_EQ(anna.boxesSince(before), (Boxes{{192, 192, 32, 32}}));
    EXPECT_TRUE(isNear(anna.at(197, 197), kGreen, 40)) << std::hex << anna.at(197, 197);
    EXPECT_TRUE(isNear(anna.at(217, 207), kRed, 60)) << std::hex << anna.at(217, 207);
}

TEST_F(AnyDisplay, showsNothingWhereTheSameIsDrawnAgain)
{
    ASSERT_TRUE(begin({kAnna}));
    const std::size_t before = anna.frameCount();

    for (int i = 0; i < 20; ++i) {
        painter.fill(300, 300, 100, 50, kGreen);
    }
    painter.fill(110, 110, 4, 4, kBlue);

    ASSERT_TRUE(anna.comesToShow(111, 111, kBlue, 40));
    EXPECT_EQ(anna.boxesSince(before), (Boxes{{96, 96, 32, 32}}));
}

TEST_F(AnyDisplay, showsWindowsThatComeAndGo)
{
    ASSERT_TRUE(begin({kAnna}));
    const std::uint32_t below = anna.at(110, 110);
    Painter other;

    other.showWindow(90, 90, 60, 60, kBlue);
    EXPECT_TRUE(anna.comesToShow(110, 110, kBlue));
    other.hideWindow();

    EXPECT_TRUE(anna.comesToShow(110, 110, below));
}

TEST_F(AnyDisplay, bringsExactPixelsWhenItIsCalm)
{
    ASSERT_TRUE(begin({kAnna}));
    for (int i = 0; i < 50; ++i) {
        painter.fill(100, 100 + i * 6, 400, 3, i % 2 == 0 ? kRed : kBlue);
    }

    // Bright red lines of one pixel would be pale with coarse colours.
    painter.fill(300, 100, 1, 300, kRed);
    painter.fill(310, 100, 1, 300, kBlue);

    EXPECT_TRUE(anna.comesToShow(300, 398, kRed, 70));
    EXPECT_TRUE(anna.comesToShow(310, 398, kBlue, 70));
    EXPECT_TRUE(anna.comesToRest());
    EXPECT_TRUE(isNear(anna.at(110, 103), kGreen, 40)) << std::hex << anna.at(110, 103);
}

TEST_F(AnyDisplay, withholdsTheThirdFrameAndThenShowsThePresent)
{
    ASSERT_TRUE(begin({kAnna, kBen}));
    const std::size_t before = anna.frameCount();
    anna.answer(false);
    painter.fill(110, 110, 10, 10, kRed);
    ASSERT_TRUE(anna.comesToHave(before + 1));
    painter.fill(200, 200, 10, 10, kRed);
    ASSERT_TRUE(anna.comesToHave(before + 2));

    painter.fill(300, 300, 10, 10, kRed);
    ASSERT_TRUE(ben.comesToShow(305, 305, kRed, 24));
    painter.fill(300, 300, 10, 10, kBlue);
    ASSERT_TRUE(ben.comesToShow(305, 305, kBlue, 24));
    const std::size_t meanwhile = anna.frameCount();
    anna.answer(true);
    for (const std::uint32_t frame : anna.unanswered()) {
        stream.shown(kAnna, frame);
    }

    EXPECT_EQ(meanwhile, before + 2);
    ASSERT_TRUE(anna.comesToShow(305, 305, kBlue, 24));
    EXPECT_TRUE(isNear(anna.frame(before + 2).at(305, 305), kBlue, 24))
        << "never the red of before";
    EXPECT_EQ(anna.frame(before + 2).frame, before + 3);
}

TEST_F(AnyDisplay, showsOneWhoComesLaterTheSame)
{
    ASSERT_TRUE(begin({kAnna}));
    painter.fill(200, 200, 20, 10, kRed);
    ASSERT_TRUE(anna.comesToShow(210, 205, kRed, 24));

    stream.join(kBen);

    EXPECT_TRUE(ben.comesToShow(210, 205, kRed, 24));
    EXPECT_EQ(ben.frame(0).frame, 1U);
    EXPECT_EQ(ben.frame(0).box, (PixelBox{0, 0, 1920, 1080}));
}

TEST_F(AnyDisplay, showsNothingToOneWhoHasLeft)
{
    ASSERT_TRUE(begin({kAnna, kBen}));
    const std::size_t before = anna.frameCount();

    stream.leave(kAnna);
    painter.fill(200, 200, 20, 10, kRed);

    ASSERT_TRUE(ben.comesToShow(210, 205, kRed, 24));
    painter.fill(200, 200, 20, 10, kBlue);
    ASSERT_TRUE(ben.comesToShow(210, 205, kBlue, 24));
    EXPECT_EQ(anna.frameCount(), before);
}

TEST_F(AnyDisplay, showsWhatChangedWhileNobodyLookedOn)
{
    ASSERT_TRUE(begin({kAnna}));
    stream.leave(kAnna);

    painter.fill(200, 200, 20, 10, kRed);
    stream.join(kBen);

    EXPECT_TRUE(ben.comesToShow(210, 205, kRed, 24));
    painter.fill(200, 200, 20, 10, kBlue);
    EXPECT_TRUE(ben.comesToShow(210, 205, kBlue, 24));
}

TEST_F(AnyDisplay, showsAnotherAreaWhole)
{
    ASSERT_TRUE(begin({kAnna}));

    stream.setArea({90, 80, 200, 100});

    ASSERT_TRUE(anna.comesToShow(10, 20, kGreen, 40));
    ASSERT_TRUE(anna.comesToRest());
    const SeenFrame last = anna.frame(anna.frameCount() - 1);
    EXPECT_EQ(last.pictureWidth, 200);
    EXPECT_EQ(last.pictureHeight, 100);
    EXPECT_TRUE(isNear(anna.at(0, 0), painter.pixel(90, 80), 24));
    painter.fill(200, 100, 10, 10, kRed);
    EXPECT_TRUE(anna.comesToShow(115, 25, kRed, 24));
}

TEST_F(AnyDisplay, showsOfAnAreaWhatTheScreenHas)
{
    ASSERT_TRUE(begin({kAnna}));
    const std::size_t before = anna.frameCount();

    stream.setArea({-40, 1000, 200, 200});
    ASSERT_TRUE(anna.comesToHave(before + 1));
    const SeenFrame clipped = anna.frame(before);
    stream.setArea({5000, 5000, 100, 100});
    stream.setArea({-7, -7, 0, 0});
    stream.setArea({0, 0, 1 << 30, 1 << 30});
    stream.setArea({0, 0, 640, 480});

    EXPECT_EQ(clipped.box, (PixelBox{40, 0, 160, 80}));
    EXPECT_EQ(clipped.pictureWidth, 200);
    EXPECT_EQ(clipped.pictureHeight, 200);
    EXPECT_TRUE(anna.comesToShow(450, 350, kGreen));
}

TEST_F(AnyDisplay, endsWithFramesUnderWay)
{
    painter.showWindow(100, 100, 400, 300, kGreen);
    anna.answer(false);
    {
        PictureStream second(
            {0, 0, 1920, 1080},
            [this](PictureStream::Viewer, const PictureStream::Message &message) {
                anna.take(*message, nullptr);
            },
            [](const std::string &) {});
        second.join(7);
        second.shown(99, 12);
        second.leave(55);
        ASSERT_TRUE(anna.comesToHave(1));
        painter.fill(200, 200, 20, 10, kRed);
    }
    const std::size_t atTheEnd = anna.frameCount();

    painter.fill(200, 200, 20, 10, kBlue);

    EXPECT_EQ(anna.frameCount(), atTheEnd);
}

} // namespace orv::apps::test
