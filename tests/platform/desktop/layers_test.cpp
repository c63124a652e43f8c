#include "platform/desktop/LayerPixels.h"
#include "platform/desktop/ScreenLayers.h"

#include <gmock/gmock.h>

#include <array>
#include <vector>

namespace orv::platform {

namespace {

constexpr std::uint32_t kRed = 0xffff0000U;
constexpr std::uint32_t kGreen = 0xff00ff00U;
constexpr QPoint kOrigin(100, 50);

/// One row of pixels of the screen, of the left half of which the layer holds two.
class PaintOver : public testing::Test {
protected:
    [[nodiscard]] std::uint32_t painted(std::uint32_t pixel, bool hasAlpha,
                                        std::uint32_t opacity = 255)
    {
        const QRect frame(kOrigin, QSize(1, 1));
        paintOver(picture, {&pixel, frame, hasAlpha, opacity}, frame);
        return image.pixel(0, 0);
    }

    Image image{4, 1};
    ScreenPicture picture{image, kOrigin};
};

ScreenLayer layerAt(const QRect &frame, bool hasAlpha = false)
{
    ScreenLayer layer;
    layer.frame = frame;
    layer.shape = frame;
    layer.hasAlpha = hasAlpha;
    return layer;
}

} // namespace

TEST_F(PaintOver, copiesPixelsWithoutAlphaAsOpaqueOnes)
{
    paintColor(picture, kGreen, QRect(kOrigin, QSize(4, 1)));

    EXPECT_EQ(painted(0x00123456U, false), 0xff123456U);
    EXPECT_EQ(image.pixel(1, 0), kGreen);
}

TEST_F(PaintOver, mixesByAlphaAndByTheLayersOpacity)
{
    const QRegion all = QRect(kOrigin, QSize(4, 1));

    paintColor(picture, kGreen, all);
    EXPECT_EQ(painted(0x80800000U, true), 0xff807f00U);
    paintColor(picture, kGreen, all);
    EXPECT_EQ(painted(kRed, true, 128), 0xff807f00U);
    paintColor(picture, kGreen, all);
    EXPECT_EQ(painted(0x00ff0000U, false, 128), 0xff807f00U);
    paintColor(picture, kGreen, all);
    EXPECT_EQ(painted(kRed, true, 0), kGreen);
    EXPECT_EQ(painted(0, true), kGreen);
}

TEST_F(PaintOver, keepsColoursThatAreStrongerThanTheirAlphaInTheirByte)
{
    paintColor(picture, 0xff808080U, QRect(kOrigin, QSize(4, 1)));

    EXPECT_EQ(painted(0x00ff00ffU, true), 0xffff80ffU);
}

TEST_F(PaintOver, readsAndWritesOnlyWhatIsAskedFor)
{
    const std::array<std::uint32_t, 4> pixels = {1, 2, 3, 4};
    const LayerPixels layer{pixels.data(), QRect(kOrigin - QPoint(1, 0), QSize(2, 2))};

    paintOver(picture, layer, QRect(kOrigin, QSize(1, 1)));

    EXPECT_EQ(image.pixel(0, 0), 0xff000002U);
    EXPECT_EQ(image.pixel(1, 0), 0U);
}

TEST_F(PaintOver, fillsWithCopiesInEveryDirectionFromTheFrame)
{
    const std::array<std::uint32_t, 6> pixels = {1, 2, 3, 4, 5, 6};
    const LayerPixels tile{pixels.data(), QRect(QPoint(101, 51), QSize(3, 2))};

    paintTiled(picture, tile, QRect(kOrigin, QSize(4, 1)));

    const std::vector<std::uint32_t> row(image.row(0), image.row(0) + 4);
    EXPECT_THAT(row, testing::ElementsAre(0xff000006U, 0xff000004U, 0xff000005U, 0xff000006U));
}

TEST(HiddenParts, areThoseBelowAnOpaqueLayer)
{
    std::vector<ScreenLayer> layers;
    layers.push_back(layerAt(QRect(0, 0, 50, 100)));
    layers.push_back(layerAt(QRect(20, 0, 30, 100)));

    const QRegion open = withoutHiddenParts(layers, QRect(0, 0, 60, 100));

    EXPECT_EQ(layers[0].shape, QRegion(0, 0, 20, 100));
    EXPECT_EQ(layers[1].shape, QRegion(20, 0, 30, 100));
    EXPECT_EQ(open, QRegion(50, 0, 10, 100));
}

TEST(HiddenParts, areNoneBelowALayerThatLetsThrough)
{
    std::vector<ScreenLayer> layers;
    layers.push_back(layerAt(QRect(0, 0, 50, 100)));
    layers.push_back(layerAt(QRect(0, 0, 50, 100), true));
    layers.push_back(layerAt(QRect(0, 0, 50, 100)));
    layers.back().opacity = 254;

    const QRegion open = withoutHiddenParts(layers, QRect(0, 0, 60, 100));

    EXPECT_EQ(layers[0].shape, QRegion(0, 0, 50, 100));
    EXPECT_EQ(layers[1].shape, QRegion(0, 0, 50, 100));
    EXPECT_EQ(open, QRegion(50, 0, 10, 100));
}

TEST(HiddenParts, areNoneBesideAWindowsShapeAndNoneAreOutsideItsFrameOrTheArea)
{
    std::vector<ScreenLayer> layers;
    layers.push_back(layerAt(QRect(0, 0, 50, 100)));
    layers.push_back(layerAt(QRect(0, 0, 50, 100)));
    layers.back().shape = QRegion(10, 10, 100, 20);

    const QRegion open = withoutHiddenParts(layers, QRect(0, 0, 60, 25));

    EXPECT_EQ(layers[1].shape, QRegion(10, 10, 40, 15));
    EXPECT_EQ(layers[0].shape, QRegion(0, 0, 50, 25) - QRegion(10, 10, 40, 15));
    EXPECT_EQ(open, QRegion(50, 0, 10, 25));
}

} // namespace orv::platform
