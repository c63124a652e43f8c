#include "FigureDesk.h"

#include "annotations/StampAnnotation.h"
#include "platform/foundation/Exception.h"
#include "platform/raster/Pictures.h"
#include "platform/raster/Surface.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <limits>

namespace orv::test {
namespace {

using platform::Color;
using platform::Point;
using platform::Size;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::uint32_t kGreen = 0xFF00FF00U;

std::shared_ptr<StampAnnotation> stamp(int kind, float size, Point at)
{
    auto annotation =
        figure<StampAnnotation>(annotation_type::stamp, size, 0, Color(0.0, 0.0, kind / 255.0));
    annotation->mouseDownEventAtPoint(at);
    return annotation;
}

platform::VirtualSettings settingsIn(const std::string &home)
{
    platform::VirtualSettings settings;
    settings.home = home;
    settings.resources = home + "/resources";
    return settings;
}

/// A desk whose only pictures are the test's own.
class Stamps : public ::testing::Test {
protected:
    Stamps() : desk(settingsIn(home.path())) { platform::Platform::install(&desk); }
    ~Stamps() override { platform::Platform::install(nullptr); }

    void makePicture(const std::string &name, int width, int height,
                     std::uint32_t pixel = kGreen) const
    {
        const std::string folder = home.path() + "/resources/pictures/";
        std::filesystem::create_directories(folder);
        platform::Image image(width, height);
        std::fill_n(image.data(), width * height, pixel);
        ASSERT_TRUE(platform::writePng(folder + name, image));
    }

    TemporaryFolder home;
    platform::VirtualPlatform desk;
};

TEST(StampKinds, TheBlueOfTheColourSaysWhichPictureItIs)
{
    const std::vector<std::string> names{"pointer", "star", "heart", "smile", "check", "x"};
    for (int kind = 0; kind < 6; ++kind) {
        const auto annotation = stamp(kind, 1.0F, {0.0, 0.0});

        EXPECT_EQ(annotation->getRGB(), kind);
        EXPECT_EQ(annotation->stampType(), names[static_cast<std::size_t>(kind)]);
        EXPECT_EQ(annotation->stampAlign(), kind == 0 ? 6 : 1);
    }
}

TEST(StampKinds, RedAndGreenCountAboveTheBlue)
{
    StampAnnotation annotation;
    annotation.setColor(Color(1.0 / 255.0, 2.0 / 255.0, 3.0 / 255.0));
    EXPECT_EQ(annotation.getRGB(), 0x01020003);

    annotation.setColor(Color(0.0, 0.0, 1.99 / 255.0));
    EXPECT_EQ(annotation.getRGB(), 1) << "cut, not rounded";
}

TEST(StampKinds, AColourThatIsNoStampsIsRefusedByItsNumber)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const Color &color :
         {Color(0.0, 0.0, 6.0 / 255.0), Color(0.0, 1.0 / 255.0, 0.0), Color(1.0, 0.0, 0.0),
          Color(256.0 / 255.0, 0.0, 1.0 / 255.0), Color(0.0, 0.0, -1.0), Color(0.0, 0.0, infinity),
          Color(notANumber, 0.0, 0.0), Color(0.0, 1e300, 0.0)}) {
        StampAnnotation annotation;
        annotation.setColor(color);

        EXPECT_THROW(annotation.updateStampInfo(), platform::Exception)
            << RecordingContext::text(color);
    }

    StampAnnotation annotation;
    annotation.setColor(Color(0.0, 0.0, 6.0 / 255.0));
    try {
        annotation.updateStampInfo();
        FAIL() << "nothing was thrown";
    } catch (const platform::Exception &exception) {
        EXPECT_STREQ(exception.what(), "stamp: there is no kind 6, only 0 to 5");
    }
}

TEST(StampSizes, TwoToFourAndAHundredAndMoreHaveVariantsOfTheirOwn)
{
    const auto variantAt = [](float size) { return stamp(1, size, {})->sizeIndex(); };

    EXPECT_EQ(variantAt(1.0F), 1);
    EXPECT_EQ(variantAt(1.9F), 1);
    EXPECT_EQ(variantAt(2.0F), 2);
    EXPECT_EQ(variantAt(3.99F), 3);
    EXPECT_EQ(variantAt(4.0F), 4);
    EXPECT_EQ(variantAt(4.99F), 4);
    EXPECT_EQ(variantAt(5.0F), 1);
    EXPECT_EQ(variantAt(99.9F), 1);
    EXPECT_EQ(variantAt(100.0F), 4);
    EXPECT_EQ(variantAt(350.0F), 4);
    EXPECT_EQ(variantAt(std::numeric_limits<float>::infinity()), 4);
}

TEST(StampAlignment, TheClickPointLiesWhereTheNumberSays)
{
    const Size size{30.0, 50.0};
    const std::vector<Point> points{{15.0, 50.0}, {15.0, 25.0}, {15.0, 0.0}, {30.0, 50.0},
                                    {30.0, 25.0}, {30.0, 0.0},  {0.0, 50.0}, {0.0, 25.0}};
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(StampAnnotation::setStampAlignment(static_cast<std::int32_t>(i), size), points[i])
            << i;
    }
    EXPECT_EQ(StampAnnotation::setStampAlignment(8, size), Point{});
    EXPECT_EQ(StampAnnotation::setStampAlignment(-1, size), Point{});
}

TEST_F(Stamps, ThePointersTipLiesOnTheClick)
{
    makePicture("pointer2.png", 12, 20);

    EXPECT_THAT(linesOf(*stamp(0, 2.0F, {100.0, 200.0})),
                ElementsAre("save", "dash 0",
                            "image 12x20 in [100 180 12 20] operation 2 fraction 1", "blend 0",
                            "restore"));
}

TEST_F(Stamps, AStarLiesRoundTheClick)
{
    makePicture("star3.png", 30, 40);

    EXPECT_THAT(linesOf(*stamp(1, 3.0F, {100.0, 200.0})),
                ::testing::Contains("image 30x40 in [85 180 30 40] operation 2 fraction 1"));
}

TEST_F(Stamps, AClientsSizeIsThePercentageOfTheLargestPicture)
{
    makePicture("heart4.png", 64, 48);
    const auto placeAt = [](float size) { return linesOf(*stamp(2, size, {100.0, 100.0}))[2]; };

    EXPECT_THAT(placeAt(4.0F), HasSubstr("in [68 76 64 48]"));
    EXPECT_THAT(placeAt(100.0F), HasSubstr("in [68 76 64 48]"));
    EXPECT_THAT(placeAt(150.0F), HasSubstr("in [84 88 32 24]"));
    EXPECT_THAT(placeAt(200.0F), HasSubstr("in [68 76 64 48]"));
    EXPECT_THAT(placeAt(300.0F), HasSubstr("in [36 52 128 96]"));

    const double scale = static_cast<float>((double{133.3F} - 100.0) / 100.0);
    EXPECT_THAT(placeAt(133.3F), HasSubstr(fmt::format("{} {}]", 64.0 * scale, 48.0 * scale)))
        << "a single float";
}

TEST_F(Stamps, APictureIsShownAsItIsWhateverTheColour)
{
    makePicture("check1.png", 10, 10);
    const auto annotation = stamp(4, 1.0F, {50.0, 30.0});
    platform::Surface surface(100.0, 60.0);

    surface.paint([&](platform::GraphicsContext &context) { annotation->draw(context); });

    EXPECT_EQ(surface.at(45, 25), kGreen);
    EXPECT_EQ(surface.at(54, 34), kGreen);
    EXPECT_EQ(surface.at(44, 30), 0U);
    EXPECT_EQ(surface.at(55, 30), 0U);
    EXPECT_EQ(surface.at(50, 24), 0U);
    EXPECT_EQ(surface.at(50, 35), 0U);
}

TEST_F(Stamps, AMissingPictureDrawsNothing)
{
    EXPECT_THAT(linesOf(*stamp(3, 1.0F, {0.0, 0.0})),
                ElementsAre("save", "dash 0", "blend 0", "restore"));
}

TEST_F(Stamps, APictureThatChangesShowsAtTheNextDraw)
{
    makePicture("x1.png", 10, 10);
    const auto annotation = stamp(5, 1.0F, {0.0, 0.0});
    EXPECT_THAT(linesOf(*annotation)[2], HasSubstr("image 10x10"));

    makePicture("x1.png", 24, 24);
    EXPECT_THAT(linesOf(*annotation)[2], HasSubstr("image 24x24 in [-12 -12 24 24]"));
}

TEST_F(Stamps, AnUnchangedPictureIsDecodedOnce)
{
    makePicture("x1.png", 10, 10);
    const auto annotation = stamp(5, 1.0F, {0.0, 0.0});

    linesOf(*annotation);
    linesOf(*annotation);

    EXPECT_EQ(desk.pictures().decoded(), 1U);
}

TEST_F(Stamps, AFileBringsPlaceKindAndSizeBack)
{
    makePicture("check4.png", 40, 40);
    for (int kind = 0; kind < 6; ++kind) {
        const auto annotation = stamp(kind, 150.0F, {12.5, 77.1});

        const auto read = archivedAndRead(annotation);

        ASSERT_NE(read, nullptr);
        EXPECT_THAT(read->archiveClassNames(), ElementsAre("StampAnnotation", "Annotation"));
        EXPECT_EQ(read->stampType(), annotation->stampType());
        EXPECT_EQ(read->stampAlign(), annotation->stampAlign());
        EXPECT_EQ(read->sizeIndex(), 4);
        EXPECT_EQ(read->dragOrigin(), (Point{12.5, double{77.1F}}));
    }
    EXPECT_THAT(linesOf(*archivedAndRead(stamp(4, 150.0F, {50.0, 50.0}))),
                ::testing::Contains("image 40x40 in [40 40 20 20] operation 2 fraction 1"));
}

TEST_F(Stamps, AFileWithAStampOfNoKindIsRefused)
{
    const auto read = [](float blue) {
        return readFrom<StampAnnotation>("StampAnnotation", [blue](platform::KeyedArchiver &coder) {
            coder.encodeFloat("annotationSize", 2.0F);
            coder.encodeFloat("blueComponent", blue);
            coder.encodeFloat("originX", 5.0F);
            coder.encodeFloat("originY", 6.0F);
        });
    };

    const auto heart = read(2.0F / 255.0F);
    ASSERT_NE(heart, nullptr);
    EXPECT_EQ(heart->stampType(), "heart");
    EXPECT_EQ(heart->dragOrigin(), (Point{5.0, 6.0}));
    EXPECT_THROW(read(1.0F), platform::Exception);
    EXPECT_THROW(read(std::numeric_limits<float>::quiet_NaN()), platform::Exception);
}

TEST_F(FigureDesk, AStampIsCompleteAtItsClickAndCannotBeDragged)
{
    use(annotation_type::stamp, 2.0F, 0, Color(0.0, 0.0, 1.0 / 255.0));
    press({50.0, 60.0});
    drag({90.0, 90.0});
    release({90.0, 90.0});

    ASSERT_THAT(annotations(), SizeIs(1));
    EXPECT_EQ(last<StampAnnotation>()->dragOrigin(), (Point{50.0, 60.0}));
    EXPECT_FALSE(last<StampAnnotation>()->isActive());
    EXPECT_TRUE(canvas->isPressed()) << "until the release of another annotation";

    canvas->setCurrentTool(pen);
    EXPECT_THAT(annotations(), SizeIs(1)) << "it deserves to stay";
    stroke({1.0, 1.0}, {2.0, 2.0});
    EXPECT_FALSE(canvas->isPressed());
}

TEST_F(FigureDesk, AStampAnswersEveryKeyWithARedraw)
{
    const auto annotation = stamp(1, 2.0F, {0.0, 0.0});

    EXPECT_TRUE(annotation->shouldRedrawWithKeyDownEvent(keyOf(0)));
}

TEST_F(FigureDesk, AColourThatIsNoStampsAddsNothingToTheList)
{
    use(annotation_type::stamp, 2.0F, 0, Color(1.0, 0.0, 0.0));

    EXPECT_THROW(press({50.0, 60.0}), platform::Exception);
    EXPECT_THAT(annotations(), IsEmpty());
}

} // namespace
} // namespace orv::test
