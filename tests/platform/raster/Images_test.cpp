#include "Surface.h"

#include <gtest/gtest.h>

namespace orv::platform {
namespace {

ImagePtr twoByTwo()
{
    auto image = std::make_shared<Image>(2, 2);
    image->row(0)[0] = 0xFFFF0000;
    image->row(0)[1] = 0xFF00FF00;
    image->row(1)[0] = 0xFF0000FF;
    image->row(1)[1] = 0xFFFFFFFF;
    return image;
}

TEST(Images, StandUprightPixelByPixel)
{
    Surface surface(4, 4);

    surface.paint([](GraphicsContext &context) {
        context.drawImage(twoByTwo(), Rect::make(1.0, 1.0, 2.0, 2.0),
                          CompositingOperation::sourceOver, 1.0);
    });

    EXPECT_EQ(surface.at(1, 1), 0xFFFF0000U);
    EXPECT_EQ(surface.at(2, 1), 0xFF00FF00U);
    EXPECT_EQ(surface.at(1, 2), 0xFF0000FFU);
    EXPECT_EQ(surface.at(2, 2), 0xFFFFFFFFU);
    EXPECT_EQ(surface.coverage(), "....\n.##.\n.##.\n....\n");
}

TEST(Images, OfDevicePixelsAreNotSmoothedOnAScaledSurface)
{
    Surface surface(2, 2, 2.0);

    surface.paint([](GraphicsContext &context) {
        context.drawImage(twoByTwo(), Rect::make(0.0, 0.0, 1.0, 1.0),
                          CompositingOperation::sourceOver, 1.0);
    });

    EXPECT_EQ(surface.at(0, 2), 0xFFFF0000U);
    EXPECT_EQ(surface.at(1, 3), 0xFFFFFFFFU);
    EXPECT_EQ(surface.at(2, 2), 0U);
}

TEST(Images, BetweenPixelsComeToTheNearest)
{
    Surface surface(4, 2);

    surface.paint([](GraphicsContext &context) {
        context.drawImage(twoByTwo(), Rect::make(0.6, 0.0, 2.0, 2.0),
                          CompositingOperation::sourceOver, 1.0);
    });

    EXPECT_EQ(surface.at(0, 0), 0U);
    EXPECT_EQ(surface.at(1, 0), 0xFFFF0000U);
    EXPECT_EQ(surface.at(2, 0), 0xFF00FF00U);
}

TEST(Images, TakeTheirFractionAsTheirAlpha)
{
    Surface surface(2, 2);
    surface.fill(0xFF000000);

    surface.paint([](GraphicsContext &context) {
        context.drawImage(twoByTwo(), Rect::make(0.0, 0.0, 2.0, 2.0),
                          CompositingOperation::sourceOver, 0.4);
    });

    EXPECT_EQ(surface.at(0, 0), 0xFF660000U);
    EXPECT_EQ(surface.at(1, 1), 0xFF666666U);
}

TEST(Images, GrowSmoothlyAndKeepTheirEdges)
{
    Surface surface(8, 8);

    surface.paint([](GraphicsContext &context) {
        context.drawImage(twoByTwo(), Rect::make(0.0, 0.0, 8.0, 8.0), CompositingOperation::copy,
                          1.0);
    });

    EXPECT_EQ(surface.at(0, 0), 0xFFFF0000U);
    EXPECT_EQ(surface.at(7, 7), 0xFFFFFFFFU);
    // Column 3 stands at 1.25 less half a pixel between the first (weight .625) and the second.
    EXPECT_EQ(surface.at(3, 0), 0xFF9F6000U);
    EXPECT_EQ(surface.coverage().find_first_not_of("#\n"), std::string::npos);
}

TEST(Images, ShrinkToTheMeanOfWhatTheyHold)
{
    auto checkered = std::make_shared<Image>(8, 8);
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            checkered->row(y)[x] = (x + y) % 2 == 0 ? 0xFFFFFFFF : 0xFF000000;
        }
    }
    Surface surface(2, 2);

    surface.paint([&](GraphicsContext &context) {
        context.drawImage(checkered, Rect::make(0.0, 0.0, 2.0, 2.0), CompositingOperation::copy,
                          1.0);
    });

    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(surface.at(i % 2, i / 2), 0xFF808080U);
    }
}

TEST(Images, StretchedOverPartsOfPixelsCoverThemInPart)
{
    Surface surface(3, 1);

    surface.paint([](GraphicsContext &context) {
        context.drawImage(onePixel(0xFFFFFFFF), Rect::make(0.5, 0.0, 1.5, 1.0),
                          CompositingOperation::sourceOver, 1.0);
    });

    EXPECT_NEAR(surface.at(0, 0) >> 24U, 128, 1);
    EXPECT_EQ(surface.at(1, 0), 0xFFFFFFFFU);
    EXPECT_EQ(surface.at(2, 0), 0U);
}

/// One blue point, with four colours in its finer one.
ImagePtr bluePointWithFinerTwoByTwo()
{
    auto image = std::make_shared<Image>(1, 1);
    *image->data() = 0xFF0000FF;
    image->setFiner(twoByTwo());
    return image;
}

TEST(Images, AreFinerWhereAPixelWouldCoverMoreThanOneOfTheDevice)
{
    Surface scaled(1, 1, 2.0);
    Surface enlarged(2, 2);

    scaled.paint([](GraphicsContext &context) {
        context.drawImage(bluePointWithFinerTwoByTwo(), Rect::make(0.0, 0.0, 1.0, 1.0),
                          CompositingOperation::sourceOver, 1.0);
    });
    enlarged.paint([](GraphicsContext &context) {
        context.concatenate(AffineTransform{2.0, 0.0, 0.0, 2.0, 0.0, 0.0});
        context.drawImage(bluePointWithFinerTwoByTwo(), Rect::make(0.0, 0.0, 1.0, 1.0),
                          CompositingOperation::sourceOver, 1.0);
    });

    EXPECT_EQ(scaled.image(), *twoByTwo());
    EXPECT_EQ(enlarged.image(), *twoByTwo());
}

TEST(Images, AreFinerWhereTheyAreStretchedOneWayOnly)
{
    Surface surface(2, 1);

    surface.paint([](GraphicsContext &context) {
        context.drawImage(bluePointWithFinerTwoByTwo(), Rect::make(0.0, 0.0, 2.0, 1.0),
                          CompositingOperation::copy, 1.0);
    });

    EXPECT_EQ(surface.at(0, 0), 0xFF800080U) << "the mean of the left column";
    EXPECT_EQ(surface.at(1, 0), 0xFF80FF80U) << "the mean of the right column";
}

TEST(Images, AreNotFinerThanTheirPlace)
{
    Surface surface(2, 1);

    surface.paint([](GraphicsContext &context) {
        context.drawImage(bluePointWithFinerTwoByTwo(), Rect::make(0.0, 0.0, 1.0, 1.0),
                          CompositingOperation::sourceOver, 1.0);
        context.drawImage(bluePointWithFinerTwoByTwo(), Rect::make(1.0, 0.0, 0.5, 1.0),
                          CompositingOperation::sourceOver, 1.0);
    });

    EXPECT_EQ(surface.at(0, 0), 0xFF0000FFU);
    EXPECT_EQ(surface.at(1, 0) & 0x00FFFFFFU, surface.at(1, 0) >> 24U) << "blue alone";
}

TEST(Images, WithoutPixelsInTheirFinerOneAreDrawnFromThemselves)
{
    auto image = std::make_shared<Image>(1, 1);
    *image->data() = 0xFF0000FF;
    image->setFiner(std::make_shared<Image>(0, 0));
    Surface surface(1, 1, 2.0);

    surface.paint([&](GraphicsContext &context) {
        context.drawImage(image, Rect::make(0.0, 0.0, 1.0, 1.0), CompositingOperation::sourceOver,
                          1.0);
    });

    EXPECT_EQ(surface.at(1, 1), 0xFF0000FFU);
}

TEST(Images, ThatAreMissingOrHaveNoAreaPaintNothing)
{
    Surface surface(2, 2);

    surface.paint([](GraphicsContext &context) {
        const Rect whole = Rect::make(0.0, 0.0, 2.0, 2.0);
        context.drawImage(nullptr, whole, CompositingOperation::copy, 1.0);
        context.drawImage(std::make_shared<Image>(0, 0), whole, CompositingOperation::copy, 1.0);
        context.drawImage(onePixel(0xFFFFFFFF), Rect{}, CompositingOperation::copy, 1.0);
        context.drawImage(onePixel(0xFFFFFFFF), Rect::make(50.0, 0.0, 3.0, 3.0),
                          CompositingOperation::copy, 1.0);
    });

    EXPECT_EQ(surface.image(), Image(2, 2));
}

} // namespace
} // namespace orv::platform
