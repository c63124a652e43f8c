#include "orvane-streamer/picture/FrameWriter.h"

#include "apps/orvane-streamer/picture/SeenFrame.h"

#include <gmock/gmock.h>

#include <cstddef>

namespace orv::apps::test {

namespace {

/// Red at the left of x 50, blue from there on.
Picture twoColours()
{
    Picture picture(TileGrid(101, 71));
    for (int y = 0; y < 71; ++y) {
        for (int x = 0; x < 101; ++x) {
            picture.pixels[static_cast<std::size_t>(y * 101 + x)] = x < 50 ? 0xffff0000 : 0x0000ff;
        }
    }
    return picture;
}

} // namespace

TEST(FrameWriter, writesTheHeaderInLittleEndian)
{
    const std::vector<std::uint8_t> coded{0xaa, 0xbb};

    const auto message =
        FrameWriter::message({0x01020304, {0x0506, 0x0708, 0x090a, 0x0b0c}, 0x0d0e, 0x0f10}, coded);

    EXPECT_THAT(message, testing::ElementsAre(3, 1, 0, 0, 4, 3, 2, 1, 6, 5, 8, 7, 0x0a, 9, 0x0c,
                                              0x0b, 0x0e, 0x0d, 0x10, 0x0f, 0xaa, 0xbb));
}

TEST(FrameWriter, codesTheBoxOfThePicture)
{
    FrameWriter writer;
    const PixelBox box{40, 30, 61, 41};

    const auto frame = seen(FrameWriter::message(
        {1, box, 101, 71}, writer.code(twoColours(), box, kPictureLevels[kBestLevel])));

    EXPECT_EQ(frame.width, 61);
    EXPECT_EQ(frame.height, 41);
    EXPECT_TRUE(frame.hasFineColour);
    EXPECT_TRUE(isNear(frame.at(49, 50), 0xff0000, 40)) << std::hex << frame.at(49, 50);
    EXPECT_TRUE(isNear(frame.at(50, 50), 0x0000ff, 40)) << std::hex << frame.at(50, 50);
    EXPECT_TRUE(isNear(frame.at(41, 70), 0xff0000, 4)) << std::hex << frame.at(41, 70);
    EXPECT_TRUE(isNear(frame.at(100, 31), 0x0000ff, 4)) << std::hex << frame.at(100, 31);
}

TEST(FrameWriter, needsFewerBytesFromLevelToLevel)
{
    FrameWriter writer;
    Picture noise(TileGrid(256, 256));
    std::uint32_t value = 1;
    for (std::uint32_t &pixel : noise.pixels) {
        value = value * 1664525 + 1013904223;
        pixel = value >> 8;
    }

    std::vector<std::size_t> sizes;
    for (const PictureLevel &level : kPictureLevels) {
        sizes.push_back(writer.code(noise, {0, 0, 256, 256}, level).size());
    }

    for (std::size_t i = 1; i < sizes.size(); ++i) {
        EXPECT_LT(sizes[i] * 10, sizes[i - 1] * 9) << i;
    }
}

TEST(FrameWriter, shrinksAtTheLastLevel)
{
    FrameWriter writer;
    const PixelBox box{40, 30, 61, 41};

    const auto frame = seen(FrameWriter::message(
        {1, box, 101, 71}, writer.code(twoColours(), box, kPictureLevels[kLastLevel])));

    EXPECT_EQ(frame.width, 31);
    EXPECT_EQ(frame.height, 21);
    EXPECT_FALSE(frame.hasFineColour);
    EXPECT_TRUE(isNear(frame.at(100, 70), 0x0000ff, 24)) << std::hex << frame.at(100, 70);
    EXPECT_TRUE(isNear(frame.at(41, 31), 0xff0000, 60)) << std::hex << frame.at(41, 31);
}

TEST(FrameWriter, codesASinglePixel)
{
    FrameWriter writer;

    for (const PictureLevel &level : kPictureLevels) {
        const auto frame = seen(FrameWriter::message(
            {1, {100, 70, 1, 1}, 101, 71}, writer.code(twoColours(), {100, 70, 1, 1}, level)));
        EXPECT_TRUE(isNear(frame.at(100, 70), 0x0000ff, 24)) << std::hex << frame.at(100, 70);
    }
}

} // namespace orv::apps::test
