#include "platform/raster/ImageConversion.h"
#include "platform/raster/Pictures.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

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
