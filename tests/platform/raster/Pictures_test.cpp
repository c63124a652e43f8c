#include "platform/raster/ImageConversion.h"
#include "platform/raster/Pictures.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QByteArray>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>

namespace orv::platform {
namespace {

class Pictures : public testing::Test {
protected:
    Pictures()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "orv-pictures-XXXXXX";
        folder_ = ::mkdtemp(pattern.data());
    }
    ~Pictures() override { std::filesystem::remove_all(folder_); }
    [[nodiscard]] std::string path(const std::string &name) const
    {
        return (std::filesystem::path(folder_) / name).string();
    }
    [[nodiscard]] std::string bytesOf(const std::string &name) const
    {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] std::ptrdiff_t fileCount() const
    {
        return std::distance(std::filesystem::directory_iterator(folder_), {});
    }

private:
    std::string folder_;
};

Image sample()
{
    Image image(3, 2);
    image.row(0)[0] = 0xFFFF0000;
    image.row(0)[1] = 0x80800000;
    image.row(1)[2] = 0xFF0000FF;
    return image;
}

TEST_F(Pictures, AreReadAsTheyWereWritten)
{
    ASSERT_TRUE(writePng(path("a.png"), sample()));

    const ImagePtr read = readPicture(path("a.png"));

    ASSERT_NE(read, nullptr);
    EXPECT_EQ(*read, sample());
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(Pictures, ReplaceAnOldFileAsAWhole)
{
    ASSERT_TRUE(writePng(path("a.png"), Image(9, 9)));
    ASSERT_TRUE(writePng(path("a.png"), sample()));

    EXPECT_EQ(*readPicture(path("a.png")), sample());
}

TEST_F(Pictures, WithoutPixelsOrAFolderAreNotWritten)
{
    EXPECT_FALSE(writePng(path("a.png"), Image(0, 0)));
    EXPECT_FALSE(writePng(path("missing/a.png"), sample()));
    EXPECT_EQ(fileCount(), 0);
}

TEST_F(Pictures, ThatAreMissingEmptyCutOffOrNoneAreNothing)
{
    ASSERT_TRUE(writePng(path("whole.png"), sample()));
    std::ofstream(path("empty.png")).flush();
    std::ofstream(path("text.png")) << "no picture at all";
    std::filesystem::copy_file(path("whole.png"), path("cut.png"));
    std::filesystem::resize_file(path("cut.png"), 30);

    EXPECT_EQ(readPicture(path("missing.png")), nullptr);
    EXPECT_EQ(readPicture(path("empty.png")), nullptr);
    EXPECT_EQ(readPicture(path("text.png")), nullptr);
    EXPECT_EQ(readPicture(path("cut.png")), nullptr);
    EXPECT_EQ(readPicture(std::filesystem::path(path("whole.png")).parent_path()), nullptr);
}

TEST_F(Pictures, TooLargeToHoldAreNothing)
{
    // A bitmap header that claims 20000 by 20000 pixels of 1 bit, and no pixels.
    std::array<unsigned char, 62> header{'B', 'M', 62};
    header[10] = 62;
    header[14] = 40;
    header[18] = header[22] = 0x20;
    header[19] = header[23] = 0x4E;
    header[26] = 1;
    header[28] = 1;
    std::ofstream(path("huge.bmp"), std::ios::binary)
        .write(reinterpret_cast<const char *>(header.data()), header.size());

    EXPECT_EQ(readPicture(path("huge.bmp")), nullptr);
}

/// Noise, which takes more room in a file than anything else.
Image noise(int width, int height)
{
    Image image(width, height);
    std::mt19937 random(5);
    std::generate_n(image.data(), width * height,
                    [&random] { return 0xFF000000U | static_cast<std::uint32_t>(random()); });
    return image;
}

Image decodedJpeg(const QImage &picture, int quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "JPEG", quality);
    return imageOf(QImage::fromData(bytes, "JPEG"));
}

TEST_F(Pictures, AsJpegShowWhatTheToolkitsCoderMakesOfThem)
{
    for (const auto &[width, height] : {std::pair{1, 1}, {17, 33}, {40, 16}, {700, 500}}) {
        for (const int quality : {0, 50, 95, 100}) {
            const Image image = noise(width, height);

            ASSERT_TRUE(writePicture(path("a.jpg"), image, PictureKind::jpeg,
                                     static_cast<float>(quality) / 100.0F));

            EXPECT_TRUE(bytesOf("a.jpg").ends_with("\xFF\xD9")) << "nothing after its end";
            EXPECT_EQ(*readPicture(path("a.jpg")),
                      decodedJpeg(viewOf(image).convertToFormat(QImage::Format_RGB32), quality))
                << width << "x" << height << " at " << quality;
        }
    }
}

TEST_F(Pictures, AsJpegLieOverWhiteWhereverTheyAreTransparent)
{
    const auto colors = {0x00000000U, 0x80800000U, 0xFE102030U};
    for (const int y : {0, 15, 16, 41}) {
        for (const int x : {0, 3, 18}) {
            for (const std::uint32_t color : colors) {
                Image image = noise(19, 42);
                image.row(y)[x] = color;
                QImage laidOver(19, 42, QImage::Format_RGB32);
                laidOver.fill(Qt::white);
                QPainter(&laidOver).drawImage(0, 0, viewOf(image));

                ASSERT_TRUE(writePicture(path("a.jpg"), image, PictureKind::jpeg, 1.0F));

                EXPECT_EQ(*readPicture(path("a.jpg")), decodedJpeg(laidOver, 100))
                    << x << ", " << y << " " << color;
            }
        }
    }
}

TEST(ImageConversion, GoesBothWaysWithoutAChange)
{
    const QImage copy = qImageOf(sample());

    EXPECT_EQ(copy.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(imageOf(copy), sample());
    EXPECT_EQ(imageOf(QImage()), Image(0, 0));
    EXPECT_TRUE(viewOf(Image(0, 0)).isNull());
}

TEST(ImageConversion, PremultipliesWhatIsNot)
{
    QImage picture(1, 1, QImage::Format_ARGB32);
    picture.setPixel(0, 0, 0x80FF0000);

    EXPECT_EQ(imageOf(picture).pixel(0, 0), 0x80800000U);
}

} // namespace
} // namespace orv::platform
