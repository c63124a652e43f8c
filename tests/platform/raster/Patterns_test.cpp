#include "Surface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace orv::platform {
namespace {

constexpr std::uint32_t kRedPixel = 0xFFFF0000;
constexpr std::uint32_t kGreenPixel = 0xFF00FF00;
constexpr std::uint32_t kBluePixel = 0xFF0000FF;
constexpr std::uint32_t kWhitePixel = 0xFFFFFFFF;

/// Red and green above blue and white.
ImagePtr fourColors()
{
    auto image = std::make_shared<Image>(2, 2);
    image->row(0)[0] = kRedPixel;
    image->row(0)[1] = kGreenPixel;
    image->row(1)[0] = kBluePixel;
    image->row(1)[1] = kWhitePixel;
    return image;
}

ImagePtr oneColor(int width, int height, std::uint32_t pixel)
{
    auto image = std::make_shared<Image>(width, height);
    std::fill_n(image->data(), width * height, pixel);
    return image;
}

ImagePtr noise(int width, int height)
{
    auto image = std::make_shared<Image>(width, height);
    std::mt19937 random(3);
    std::uniform_int_distribution<std::uint32_t> byte(0, 255);
    for (int i = 0; i < width * height; ++i) {
        image->data()[i] =
            0xFF000000U | (byte(random) << 16U) | (byte(random) << 8U) | byte(random);
    }
    return image;
}

void fillAll(GraphicsContext &context, const ImagePtr &pattern)
{
    context.fillPattern(Rect::make(-100.0, -100.0, 300.0, 300.0), pattern,
                        CompositingOperation::copy);
}

/// R, G, B and W for the four colours, '.' for nothing, '?' for the rest; rows from the top.
std::string colors(const Surface &surface)
{
    std::string text;
    for (int y = 0; y < surface.image().height(); ++y) {
        for (int x = 0; x < surface.image().width(); ++x) {
            const std::uint32_t pixel = surface.at(x, y);
            text += pixel == kRedPixel     ? 'R'
                    : pixel == kGreenPixel ? 'G'
                    : pixel == kBluePixel  ? 'B'
                    : pixel == kWhitePixel ? 'W'
                    : pixel == 0           ? '.'
                                           : '?';
        }
        text += '\n';
    }
    return text;
}

TEST(Patterns, BeginAtTheBottomLeftAndStandUpright)
{
    Surface surface(5, 3);

    surface.paint([](GraphicsContext &context) { fillAll(context, fourColors()); });

    EXPECT_EQ(colors(surface), "BWBWB\n"
                               "RGRGR\n"
                               "BWBWB\n");
}

TEST(Patterns, BeginAtTheOriginOfPresentCoordinates)
{
    Surface surface(4, 3);

    surface.paint([](GraphicsContext &context) {
        context.concatenate(AffineTransform::translation(3.0, 1.0));
        fillAll(context, fourColors());
    });

    EXPECT_EQ(colors(surface), "GRGR\n"
                               "WBWB\n"
                               "GRGR\n");
}

TEST(Patterns, BeginAtTheSamePlaceWhateverIsFilled)
{
    Surface surface(5, 3);

    surface.paint([](GraphicsContext &context) {
        context.fillPattern(Rect::make(1.0, 0.0, 1.0, 2.0), fourColors(),
                            CompositingOperation::copy);
        context.fillPattern(Rect::make(3.0, 1.0, 2.0, 2.0), fourColors(),
                            CompositingOperation::copy);
    });

    EXPECT_EQ(colors(surface), "...WB\n"
                               ".G.GR\n"
                               ".W...\n");
}

TEST(Patterns, BetweenPixelsComeToTheNearest)
{
    Surface surface(3, 2);

    surface.paint([](GraphicsContext &context) {
        context.concatenate(AffineTransform::translation(0.6, 0.0));
        fillAll(context, fourColors());
    });

    EXPECT_EQ(colors(surface), "GRG\nWBW\n");
}

TEST(Patterns, CoverPixelsInPartAsColorsDo)
{
    Surface pattern(4, 4);
    Surface color(4, 4);
    const Rect rect = Rect::make(0.5, 1.25, 2.25, 2.0);

    pattern.paint([&](GraphicsContext &context) {
        context.fillPattern(rect, oneColor(3, 3, kBluePixel), CompositingOperation::sourceOver);
    });
    color.paint([&](GraphicsContext &context) {
        context.setFillColor(kBlue);
        context.fillRect(rect, CompositingOperation::sourceOver);
    });

    EXPECT_EQ(pattern.image(), color.image());
    EXPECT_NE(pattern.coverage().find('o'), std::string::npos);
}

TEST(Patterns, AreComposedAsTheyAreTold)
{
    Surface behind(2, 2);
    Surface instead(2, 2);
    behind.fill(kBluePixel);
    instead.fill(kBluePixel);

    behind.paint([](GraphicsContext &context) {
        context.setBlendMode(BlendMode::clear);
        context.fillPattern(Rect::make(0.0, 0.0, 2.0, 2.0), fourColors(),
                            CompositingOperation::destinationOver);
    });
    instead.paint([](GraphicsContext &context) {
        context.setBlendMode(BlendMode::multiply);
        context.fillPattern(Rect::make(0.0, 0.0, 2.0, 1.0), oneColor(1, 1, 0x80800000),
                            CompositingOperation::copy);
        context.fillPattern(Rect::make(0.0, 1.0, 2.0, 1.0), oneColor(1, 1, 0x80800000),
                            CompositingOperation::sourceOver);
    });

    EXPECT_EQ(colors(behind), "BB\nBB\n");
    EXPECT_EQ(instead.at(0, 1), 0x80800000U);
    EXPECT_NEAR(instead.at(0, 0) & 0xFFU, 127, 1);
    EXPECT_EQ(instead.at(0, 0) >> 24U, 255U);
}

TEST(Patterns, StayWithinTheClipAndTheLayer)
{
    Surface surface(6, 2);

    surface.paint([](GraphicsContext &context) {
        context.saveState();
        context.clipToRect(Rect::make(3.0, 0.0, 2.0, 2.0));
        context.beginLayer(1.0);
        fillAll(context, fourColors());
        context.endLayer();
        context.restoreState();
        context.clipToRect(Rect::make(0.0, 0.0, 1.0, 1.0));
        fillAll(context, fourColors());
    });

    EXPECT_EQ(colors(surface), "...GR.\n"
                               "B..WB.\n");
}

TEST(Patterns, AreFinerWhereAPixelWouldCoverMoreThanOneOfTheDevice)
{
    auto pattern = std::make_shared<Image>(1, 1);
    pattern->setFiner(fourColors());
    Surface surface(2, 1, 2.0);

    surface.paint([&](GraphicsContext &context) { fillAll(context, pattern); });

    EXPECT_EQ(colors(surface), "RGRG\nBWBW\n");
}

TEST(Patterns, HaveNoSeamsBetweenDevicePixels)
{
    for (const std::uint32_t pixel : {kBluePixel, 0x80402010U}) {
        Surface surface(20, 20, 1.3);

        surface.paint([&](GraphicsContext &context) {
            context.fillPattern(Rect::make(0.0, 0.0, 20.0, 20.0), oneColor(3, 7, pixel),
                                CompositingOperation::sourceOver);
        });

        for (int y = 0; y < 26; ++y) {
            for (int x = 0; x < 26; ++x) {
                ASSERT_EQ(surface.at(x, y), pixel) << x << ", " << y;
            }
        }
    }
}

TEST(Patterns, GoOnSmoothlyFromCopyToCopy)
{
    const ImagePtr pattern = noise(2, 4);
    Surface surface(20, 20, 1.5);

    surface.paint([&](GraphicsContext &context) { fillAll(context, pattern); });

    for (int y = 0; y < 30 - 6; ++y) {
        for (int x = 0; x < 30 - 3; ++x) {
            ASSERT_EQ(surface.at(x, y), surface.at(x + 3, y)) << x << ", " << y;
            ASSERT_EQ(surface.at(x, y), surface.at(x, y + 6)) << x << ", " << y;
        }
    }
    EXPECT_NE(surface.at(0, 0), surface.at(1, 0));
    EXPECT_NE(surface.at(0, 0), surface.at(0, 1));
}

TEST(Patterns, AreTheSameUnderAClipInPiecesAndAsAWhole)
{
    const ImagePtr pattern = noise(7, 5);
    for (const double scale : {1.0, 1.25, 2.0, 2.6}) {
        const auto painting = [&](GraphicsContext &context) {
            context.concatenate(AffineTransform::translation(2.4, -3.0));
            context.fillPattern(Rect::make(-10.0, 0.0, 26.7, 24.0), pattern,
                                CompositingOperation::sourceOver);
        };
        Surface whole(20, 20, scale);
        Surface pieces(20, 20, scale);

        whole.paint(painting);
        for (int y = 0; y < 52; y += 11) {
            for (int x = 0; x < 52; x += 9) {
                pieces.paint(painting, PixelRect{x, y, 9, 11});
            }
        }

        EXPECT_EQ(whole.image(), pieces.image()) << scale;
    }
}

TEST(Patterns, TurnWithTheirCoordinates)
{
    Surface surface(4, 4);

    surface.paint([](GraphicsContext &context) {
        context.concatenate(AffineTransform{0.0, 1.0, -1.0, 0.0, 0.0, 0.0});
        fillAll(context, fourColors());
    });

    EXPECT_EQ(colors(surface), "GWGW\n"
                               "RBRB\n"
                               "GWGW\n"
                               "RBRB\n");
}

TEST(Patterns, ShrinkToTheMeanOfWhatTheyHold)
{
    auto checkered = std::make_shared<Image>(2, 2);
    checkered->row(0)[0] = checkered->row(1)[1] = kWhitePixel;
    checkered->row(0)[1] = checkered->row(1)[0] = 0xFF000000;
    Surface surface(3, 3);

    surface.paint([&](GraphicsContext &context) {
        context.concatenate(AffineTransform::scale(0.5, 0.5));
        fillAll(context, checkered);
    });

    EXPECT_EQ(surface.image(), *oneColor(3, 3, 0xFF808080));
}

TEST(Patterns, ReducedBeyondRecognitionPaintNothing)
{
    Surface surface(10, 10);

    surface.paint([](GraphicsContext &context) {
        context.concatenate(AffineTransform::scale(1e-5, 1e-5));
        context.fillPattern(Rect::make(0.0, 0.0, 1e6, 1e6), fourColors(),
                            CompositingOperation::copy);
    });

    EXPECT_EQ(surface.image(), Image(10, 10));
}

TEST(Patterns, ThatAreMissingOrHaveNoAreaPaintNothing)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Surface surface(2, 2);

    surface.paint([nan](GraphicsContext &context) {
        const Rect whole = Rect::make(0.0, 0.0, 2.0, 2.0);
        context.fillPattern(whole, nullptr, CompositingOperation::copy);
        context.fillPattern(whole, std::make_shared<Image>(0, 0), CompositingOperation::copy);
        context.fillPattern(Rect{}, fourColors(), CompositingOperation::copy);
        context.fillPattern(Rect::make(50.0, 0.0, 3.0, 3.0), fourColors(),
                            CompositingOperation::copy);
        context.fillPattern(Rect::make(nan, 0.0, 3.0, 3.0), fourColors(),
                            CompositingOperation::copy);
        for (const AffineTransform &broken :
             {AffineTransform::scale(nan, 1.0), AffineTransform::translation(nan, 0.0),
              AffineTransform::scale(0.0, 0.0)}) {
            context.saveState();
            context.concatenate(broken);
            context.fillPattern(whole, fourColors(), CompositingOperation::copy);
            context.restoreState();
        }
    });

    EXPECT_EQ(surface.image(), Image(2, 2));
}

TEST(Patterns, FillNoFurtherThanTheSurfaceHoweverLargeTheRectangle)
{
    Surface surface(5, 3);

    surface.paint([](GraphicsContext &context) {
        context.fillPattern(Rect::make(-1e6, -1e6, 2e6, 2e6), fourColors(),
                            CompositingOperation::copy);
    });

    EXPECT_EQ(colors(surface), "BWBWB\nRGRGR\nBWBWB\n");
}

} // namespace
} // namespace orv::platform
