#include "FigureDesk.h"

#include "annotations/EraserAnnotation.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

namespace orv::test {
namespace {

using platform::Color;
using platform::Point;
using platform::Rect;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr std::uint32_t kRed = 0xFF0000U;
constexpr std::uint32_t kBlue = 0x0000FFU;
constexpr std::uint32_t kWhite = 0xFFFFFFU;
constexpr std::uint32_t kDesktop = 0x3366AAU;

std::shared_ptr<EraserAnnotation> eraser(float size)
{
    return figure<EraserAnnotation>(annotation_type::eraser, size);
}

std::string ringAt(Point centre, double size)
{
    platform::Path ring;
    ring.addEllipse(Rect::make(centre.x - size / 2.0, centre.y - size / 2.0, size, size));
    return "stroke " + RecordingContext::text(ring);
}

TEST(Eraser, ItClearsAlongItsPathAndShowsARingWhileItIsHeld)
{
    const auto annotation = eraser(20.0F);
    annotation->mouseDownEventAtPoint({10.0, 10.0});
    annotation->mouseDraggedEventAtPoint({30.0, 40.0});

    EXPECT_THAT(linesOf(*annotation),
                ElementsAre("save", "dash 0", "blend 16", "width 20", "cap 1", "join 1",
                            "stroke color 1 0 0 1", "stroke 0(10,10) 1(10,10) 1(30,40)", "restore",
                            "save", "blend 0", "stroke color 1 1 1 1", "dash 0", "width 5",
                            ringAt({30.0, 40.0}, 20.0), "restore"));
}

TEST(Eraser, TheRingFollowsTheMouseFromThePressToTheRelease)
{
    const auto annotation = eraser(20.0F);

    annotation->mouseDownEventAtPoint({10.0, 10.0});
    EXPECT_EQ(annotation->dragOrigin(), (Point{10.0, 10.0}));
    EXPECT_THAT(linesOf(*annotation), Contains(ringAt({10.0, 10.0}, 20.0)));

    annotation->mouseUpEventAtPoint({50.0, 60.0});
    EXPECT_EQ(annotation->dragOrigin(), (Point{50.0, 60.0}));
    EXPECT_THAT(linesOf(*annotation), SizeIs(9)) << "the path alone";
    EXPECT_TRUE(annotation->shouldFinalize());
}

TEST(Eraser, AFileBringsItBackAsAnEraserThatIsNotHeld)
{
    const auto annotation = eraser(20.0F);
    annotation->mouseDownEventAtPoint({10.0, 10.0});

    const auto read = archivedAndRead(annotation);

    ASSERT_NE(read, nullptr);
    EXPECT_THAT(read->archiveClassNames(),
                ElementsAre("EraserAnnotation", "PathAnnotation", "Annotation"));
    EXPECT_EQ(read->blendMode(), platform::BlendMode::clear);
    EXPECT_EQ(read->path(), annotation->path());
    EXPECT_THAT(linesOf(*read), SizeIs(9)) << "no ring";
}

/// A red stroke from left to right that is 20 points wide, and an eraser of the same width.
class ErasedStroke : public FigureDesk {
protected:
    ErasedStroke()
    {
        use(annotation_type::pen, 20.0F);
        stroke({100.0, 300.0}, {300.0, 300.0});
    }
    void eraseAcross()
    {
        use(annotation_type::eraser, 20.0F);
        stroke({200.0, 200.0}, {200.0, 400.0});
    }
};

TEST_F(ErasedStroke, ANewStrokeAcrossTheTrackIsWhole)
{
    eraseAcross();
    ASSERT_EQ(pixelAt(200, 300), kDesktop);
    ASSERT_EQ(pixelAt(150, 300), kRed) << "beside the track";

    use(annotation_type::pen, 6.0F, 0, Color(0.0, 0.0, 1.0));
    stroke({150.0, 300.0}, {250.0, 300.0});

    const Shown picture = shown();
    for (int x = 150; x < 250; ++x) {
        ASSERT_EQ(picture.at(x, 300), kBlue) << x;
    }
    EXPECT_EQ(picture.at(200, 307), kDesktop) << "the track is still clear beside it";
}

TEST_F(ErasedStroke, UndoBringsTheLookOfEverythingUnderItBack)
{
    eraseAcross();
    ASSERT_EQ(pixelAt(200, 300), kDesktop);

    canvas->undoAnnotation();

    const Shown picture = shown();
    for (int x = 100; x < 300; ++x) {
        ASSERT_EQ(picture.at(x, 300), kRed) << x;
    }
    EXPECT_THAT(annotations(), SizeIs(1));
    canvas->redoAnnotation();
    EXPECT_EQ(pixelAt(200, 300), kDesktop);
}

TEST_F(ErasedStroke, TheTrackShowsTheBackdropAndWithoutOneTheDesktop)
{
    eraseAcross();
    EXPECT_EQ(pixelAt(200, 300), kDesktop);

    canvas->setCurrentBackdrop(1);
    EXPECT_EQ(pixelAt(200, 300), kWhite);
    EXPECT_EQ(pixelAt(200, 250), kWhite) << "nor is the backdrop itself erased";
    EXPECT_EQ(pixelAt(150, 300), kRed);
}

TEST_F(ErasedStroke, AWhiteRingOfTheErasersSizeFollowsTheMouse)
{
    use(annotation_type::eraser, 40.0F);
    press({200.0, 300.0});
    EXPECT_EQ(pixelAt(219, 300), kWhite);
    EXPECT_EQ(pixelAt(180, 300), kWhite);
    EXPECT_EQ(pixelAt(200, 318), kWhite);
    EXPECT_EQ(pixelAt(200, 300), kDesktop) << "cleared inside";
    EXPECT_EQ(pixelAt(225, 300), kRed) << "outside";

    drag({260.0, 300.0});
    EXPECT_EQ(pixelAt(278, 300), kWhite);
    EXPECT_EQ(pixelAt(217, 300), kDesktop);

    release({260.0, 300.0});
    EXPECT_EQ(pixelAt(278, 300), kDesktop) << "gone with the release";
}

TEST_F(ErasedStroke, AClickClearsARoundDot)
{
    use(annotation_type::eraser, 16.0F);
    press({200.0, 300.0});
    release({200.0, 300.0});

    EXPECT_THAT(annotations(), SizeIs(2));
    EXPECT_EQ(pixelAt(200, 300), kDesktop);
    EXPECT_EQ(pixelAt(206, 300), kDesktop);
    EXPECT_EQ(pixelAt(207, 307), kRed) << "a square would clear its corner";
    EXPECT_EQ(pixelAt(210, 300), kRed);
}

TEST_F(FigureDesk, TheRingIsSolidAfterADashedLine)
{
    use(annotation_type::line, 10.0F, 3);
    stroke({300.0, 300.0}, {400.0, 400.0});
    use(annotation_type::eraser, 100.0F);
    press({150.0, 150.0});

    const Shown picture = shown();
    for (int degrees = 0; degrees < 360; degrees += 5) {
        const double angle = degrees * std::numbers::pi / 180.0;
        ASSERT_EQ(picture.at(static_cast<int>(std::floor(150.0 + 50.0 * std::cos(angle))),
                             static_cast<int>(std::floor(150.0 + 50.0 * std::sin(angle)))),
                  kWhite)
            << degrees;
    }
}

} // namespace
} // namespace orv::test
