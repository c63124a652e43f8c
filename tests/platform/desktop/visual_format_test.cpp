#include "platform/desktop/VisualFormat.h"

#include <gmock/gmock.h>

#include <array>

namespace orv::platform {

namespace {

std::vector<std::uint8_t> rowOf(const std::vector<std::uint32_t> &pixels,
                                const VisualFormat &format)
{
    std::vector<std::uint8_t> bytes;
    appendRow(bytes, pixels.data(), static_cast<int>(pixels.size()), format);
    return bytes;
}

} // namespace

TEST(VisualFormat, isThatOfImagesForColoursOfAByteInTheOrderOfThisMachine)
{
    VisualFormat format;
    EXPECT_TRUE(format.isThatOfImages());

    format.alpha = 0xff000000U;
    EXPECT_TRUE(format.isThatOfImages());

    format.isLowByteFirst = false;
    EXPECT_FALSE(format.isThatOfImages());

    VisualFormat turned;
    std::swap(turned.red, turned.blue);
    EXPECT_FALSE(turned.isThatOfImages());
}

TEST(VisualFormat, keepsThePixelsOfImagesAsTheyAre)
{
    EXPECT_THAT(rowOf({0x80402010U, 0xff010203U}, {}),
                testing::ElementsAre(0x10, 0x20, 0x40, 0x80, 0x03, 0x02, 0x01, 0xff));
}

TEST(VisualFormat, turnsTheBytesForAServerOfTheOtherOrder)
{
    VisualFormat format;
    format.isLowByteFirst = false;
    format.alpha = 0xff000000U;

    EXPECT_THAT(rowOf({0x80402010U}, format), testing::ElementsAre(0x80, 0x40, 0x20, 0x10));
}

TEST(VisualFormat, fitsColoursIntoSixteenBitsAndPadsTheRow)
{
    VisualFormat format;
    format.bitsPerPixel = 16;
    format.red = 0xf800U;
    format.green = 0x07e0U;
    format.blue = 0x001fU;

    EXPECT_EQ(format.bytesPerRow(3), 8U);
    EXPECT_THAT(rowOf({0xffff0000U, 0xff00ff00U, 0xff8080ffU}, format),
                testing::ElementsAre(0x00, 0xf8, 0xe0, 0x07, 0x1f, 0x84, 0, 0));
}

TEST(VisualFormat, widensColoursToTenBits)
{
    VisualFormat format;
    format.red = 0x3ff00000U;
    format.green = 0x000ffc00U;
    format.blue = 0x000003ffU;

    EXPECT_THAT(rowOf({0xffff00ffU}, format), testing::ElementsAre(0xff, 0x03, 0xf0, 0x3f));
}

TEST(VisualFormat, appendsToTheRowsBefore)
{
    const std::array<std::uint32_t, 1> pixel = {0x00010203U};
    std::vector<std::uint8_t> bytes = {9};

    appendRow(bytes, pixel.data(), 1, {});

    EXPECT_THAT(bytes, testing::ElementsAre(9, 3, 2, 1, 0));
}

} // namespace orv::platform
