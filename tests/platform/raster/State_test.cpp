#include "Surface.h"

#include <gtest/gtest.h>

#include <numbers>

namespace orv::platform {
namespace {

void fillWith(GraphicsContext &context, const Color &color, const Rect &rect)
{
    context.setFillColor(color);
    context.fillRect(rect, CompositingOperation::sourceOver);
}

TEST(Coordinates, HaveTheirOriginAtTheBottomLeft)
{
    Surface surface(4, 3);

    surface.paint(
        [](GraphicsContext &context) { fillWith(context, kRed, Rect::make(0.0, 0.0, 1.0, 1.0)); });

    EXPECT_EQ(surface.coverage(), "....\n....\n#...\n");
}

TEST(Coordinates, ScaleTwoPaintsTwiceThePixels)
{
    Surface surface(4, 3, 2.0);

    surface.paint(
        [](GraphicsContext &context) { fillWith(context, kRed, Rect::make(1.0, 1.0, 2.0, 1.0)); });

    EXPECT_EQ(surface.coverage(), "........\n........\n"
                                  "..####..\n..####..\n"
                                  "........\n........\n");
}

TEST(Coordinates, BrokenScalesKeepTheTopEdgeOnAPixelBorder)
{
    Surface surface(5, 5, 1.25);

    surface.paint(
        [](GraphicsContext &context) { fillWith(context, kRed, Rect::make(0.0, 1.0, 5.0, 4.0)); });

    ASSERT_EQ(surface.image().height(), 7);
    EXPECT_EQ(surface.at(0, 0), 0xFFFF0000U);
    EXPECT_EQ(surface.at(0, 4), 0xFFFF0000U);
    EXPECT_EQ(surface.at(0, 5), 0U);
}

TEST(Transforms, AreAppliedToCoordinatesFirst)
{
    Surface surface(8, 4);

    surface.paint([](GraphicsContext &context) {
        context.concatenate(AffineTransform::translation(4.0, 2.0));
        context.concatenate(AffineTransform::scale(2.0, 1.0));
        fillWith(context, kRed, Rect::make(0.0, 0.0, 1.0, 1.0));
    });

    EXPECT_EQ(surface.coverage(), "........\n....##..\n........\n........\n");
}

TEST(Transforms, TurnCounterClockwise)
{
    Surface surface(6, 6);

    surface.paint([](GraphicsContext &context) {
        context.concatenate(AffineTransform::translation(3.0, 3.0));
        context.concatenate(AffineTransform::rotation(std::numbers::pi / 2.0));
        context.setLineWidth(2.0);
        context.strokePath(linePath({0.0, 0.0}, {3.0, 0.0}));
    });

    EXPECT_EQ(surface.at(3, 1), 0xFF000000U);
    EXPECT_EQ(surface.at(3, 4), 0U);
}

TEST(Transforms, WithoutAnAreaPaintNothing)
{
    Surface surface(6, 6);

    surface.paint([](GraphicsContext &context) {
        context.concatenate(AffineTransform::scale(0.0, 1.0));
        context.setLineWidth(2.0);
        context.strokePath(linePath({0.0, 0.0}, {3.0, 0.0}));
        context.drawImage(onePixel(0xFFFFFFFF), Rect::make(0.0, 0.0, 3.0, 3.0),
                          CompositingOperation::sourceOver, 1.0);
    });

    EXPECT_EQ(surface.image(), Image(6, 6));
}

TEST(States, KeepWhatIsSetUntilTheyAreRestored)
{
    Surface surface(4, 1);
    Path left;
    left.addRect(Rect::make(0.0, 0.0, 2.0, 1.0));
    Path right;
    right.addRect(Rect::make(2.0, 0.0, 2.0, 1.0));

    surface.paint([&](GraphicsContext &context) {
        context.setFillColor(kRed);
        context.saveState();
        context.setFillColor(kBlue);
        context.concatenate(AffineTransform::translation(100.0, 0.0));
        context.clipToRect(Rect{});
        context.setBlendMode(BlendMode::clear);
        context.restoreState();
        context.fillPath(left);
        context.fillPath(right);
    });

    EXPECT_EQ(surface.at(0, 0), 0xFFFF0000U);
    EXPECT_EQ(surface.at(3, 0), 0xFFFF0000U);
}

TEST(States, AreAfterALayerWhatTheyWereBeforeIt)
{
    Surface surface(3, 1);

    surface.paint([](GraphicsContext &context) {
        const auto fillPixel = [&context](double x) {
            context.fillRect(Rect::make(x, 0.0, 1.0, 1.0), CompositingOperation::sourceOver);
        };
        context.setFillColor(kRed);
        context.saveState();
        context.setFillColor(kBlue);
        context.saveState();
        context.beginLayer(1.0);
        context.setFillColor(kGreen);
        context.saveState();
        context.endLayer();
        fillPixel(0.0);
        context.restoreState();
        fillPixel(1.0);
        context.restoreState();
        fillPixel(2.0);
    });

    EXPECT_EQ(surface.at(0, 0), 0xFF0000FFU);
    EXPECT_EQ(surface.at(1, 0), 0xFF0000FFU);
    EXPECT_EQ(surface.at(2, 0), 0xFFFF0000U);
}

TEST(States, RestoringMoreOftenThanSavingIsHarmless)
{
    Surface surface(2, 1);

    surface.paint([](GraphicsContext &context) {
        context.setFillColor(kGreen);
        context.restoreState();
        context.saveState();
        context.restoreState();
        context.restoreState();
        context.endLayer();
        context.fillRect(Rect::make(0.0, 0.0, 2.0, 1.0), CompositingOperation::sourceOver);
    });

    EXPECT_EQ(surface.at(1, 0), 0xFF00FF00U);
}

TEST(Clips, NarrowEachOther)
{
    Surface surface(6, 1);

    surface.paint([](GraphicsContext &context) {
        context.clipToRect(Rect::make(1.0, 0.0, 4.0, 1.0));
        context.clipToRect(Rect::make(0.0, 0.0, 3.0, 1.0));
        fillWith(context, kRed, Rect::make(0.0, 0.0, 6.0, 1.0));
    });

    EXPECT_EQ(surface.coverage(), ".##...\n");
}

TEST(Clips, HoldForAStrokeWhenTheyHaveChangedSinceTheLastOne)
{
    Surface surface(12, 4);

    surface.paint([](GraphicsContext &context) {
        context.setLineWidth(2.0);
        context.setLineCap(LineCap::round);
        context.setLineJoin(LineJoin::round);
        context.strokePath(linePath({0.0, 3.0}, {12.0, 3.0}));
        context.saveState();
        context.clipToRect(Rect::make(4.0, 0.0, 4.0, 4.0));
        context.strokePath(linePath({-2.0, 1.0}, {14.0, 1.0}));
        context.restoreState();
    });

    EXPECT_EQ(surface.coverage(), "############\n"
                                  "############\n"
                                  "....####....\n"
                                  "....####....\n");
}

TEST(Clips, MayBeTurned)
{
    Surface surface(10, 10);

    surface.paint([](GraphicsContext &context) {
        context.saveState();
        context.concatenate(AffineTransform::translation(5.0, 5.0));
        context.concatenate(AffineTransform::rotation(std::numbers::pi / 4.0));
        context.clipToRect(Rect::make(-3.0, -3.0, 6.0, 6.0));
        context.concatenate(AffineTransform::rotation(-std::numbers::pi / 4.0));
        fillWith(context, kRed, Rect::make(-5.0, -5.0, 10.0, 10.0));
        context.setFillColor(kBlue);
        context.fillRect(Rect::make(-5.0, -5.0, 10.0, 10.0), CompositingOperation::destinationOver);
        context.restoreState();
    });

    EXPECT_EQ(surface.at(5, 5), 0xFFFF0000U);
    EXPECT_EQ(surface.at(0, 0), 0U);
    EXPECT_EQ(surface.at(9, 9), 0U);
    EXPECT_EQ(surface.at(5, 2), 0xFFFF0000U);
    EXPECT_EQ(surface.at(8, 2), 0U);
}

TEST(Clips, OfTheDeviceLetNothingElseBeTouched)
{
    Surface surface(4, 4);
    surface.fill(0x11111111);

    surface.paint(
        [](GraphicsContext &context) {
            context.setFillColor(kRed);
            context.fillRect(Rect::make(0.0, 0.0, 4.0, 4.0), CompositingOperation::copy);
        },
        PixelRect{1, 2, 2, 9});

    EXPECT_EQ(surface.at(0, 0), 0x11111111U);
    EXPECT_EQ(surface.at(1, 1), 0x11111111U);
    EXPECT_EQ(surface.at(1, 2), 0xFFFF0000U);
    EXPECT_EQ(surface.at(2, 3), 0xFFFF0000U);
    EXPECT_EQ(surface.at(3, 3), 0x11111111U);
}

TEST(Layers, ComeDownAsOnePicture)
{
    Surface surface(6, 1);

    surface.paint([](GraphicsContext &context) {
        context.beginLayer(0.5);
        fillWith(context, kRed, Rect::make(0.0, 0.0, 4.0, 1.0));
        fillWith(context, kBlue, Rect::make(2.0, 0.0, 4.0, 1.0));
        context.endLayer();
    });

    EXPECT_EQ(surface.at(1, 0), 0x80800000U);
    EXPECT_EQ(surface.at(3, 0), 0x80000080U);
    EXPECT_EQ(surface.at(5, 0), 0x80000080U);
}

TEST(Layers, AreTransparentSoThatAnEraserInThemSparesWhatIsBelow)
{
    Surface surface(2, 1);
    surface.fill(0xFF00FF00);

    surface.paint([](GraphicsContext &context) {
        context.setBlendMode(BlendMode::copy);
        context.beginLayer(1.0);
        fillWith(context, kRed, Rect::make(0.0, 0.0, 2.0, 1.0));
        context.fillRect(Rect::make(0.0, 0.0, 1.0, 1.0), CompositingOperation::clear);
        context.endLayer();
    });

    EXPECT_EQ(surface.at(0, 0), 0xFF00FF00U);
    EXPECT_EQ(surface.at(1, 0), 0xFFFF0000U);
}

TEST(Layers, NestAndMultiplyTheirAlphas)
{
    Surface surface(1, 1);

    surface.paint([](GraphicsContext &context) {
        context.beginLayer(0.6);
        context.beginLayer(0.4);
        fillWith(context, Color::white(), Rect::make(0.0, 0.0, 1.0, 1.0));
        context.endLayer();
        context.endLayer();
    });

    // 255 * 102 / 255 * 153 / 255
    EXPECT_EQ(surface.at(0, 0), 0x3D3D3D3DU);
}

TEST(Layers, KeepTheStatesAroundThem)
{
    Surface surface(4, 1);

    surface.paint([](GraphicsContext &context) {
        context.concatenate(AffineTransform::translation(1.0, 0.0));
        context.setFillColor(kRed);
        context.beginLayer(1.0);
        context.restoreState();
        context.saveState();
        context.setFillColor(kBlue);
        context.concatenate(AffineTransform::translation(50.0, 0.0));
        context.endLayer();
        context.fillRect(Rect::make(0.0, 0.0, 1.0, 1.0), CompositingOperation::sourceOver);
    });

    EXPECT_EQ(surface.at(1, 0), 0xFFFF0000U);
}

TEST(Layers, StillOpenAtTheEndComeDownByThemselves)
{
    Surface surface(1, 1);

    surface.paint([](GraphicsContext &context) {
        context.beginLayer(1.0);
        fillWith(context, kRed, Rect::make(0.0, 0.0, 1.0, 1.0));
    });

    EXPECT_EQ(surface.at(0, 0), 0xFFFF0000U);
}

TEST(Layers, UnderAnEmptyClipPaintNothing)
{
    Surface surface(2, 2);

    surface.paint([](GraphicsContext &context) {
        context.clipToRect(Rect{});
        context.beginLayer(1.0);
        fillWith(context, kRed, Rect::make(0.0, 0.0, 2.0, 2.0));
        context.endLayer();
        fillWith(context, kRed, Rect::make(0.0, 0.0, 2.0, 2.0));
    });

    EXPECT_EQ(surface.image(), Image(2, 2));
}

} // namespace
} // namespace orv::platform
