#include "platform/raster/PictureFiles.h"
#include "platform/raster/Pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>

namespace orv::platform {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kRedPixel = 0xFFFF0000;

Image filled(int width, int height, std::uint32_t pixel)
{
    Image image(width, height);
    std::fill_n(image.data(), width * height, pixel);
    return image;
}

/// Bright stripes, which a low quality can't keep.
Image striped()
{
    Image image(64, 64);
    for (int i = 0; i < 64 * 64; ++i) {
        image.data()[i] = i % 3 == 0 ? kRedPixel : 0xFF00FFFF;
    }
    return image;
}

class PaintedPictures : public testing::Test {
protected:
    PaintedPictures()
    {
        std::string pattern = fs::temp_directory_path() / "orv-painted-pictures-XXXXXX";
        folder_ = ::mkdtemp(pattern.data());
    }
    ~PaintedPictures() override { fs::remove_all(folder_); }
    [[nodiscard]] std::string path(const std::string &name) const
    {
        return (fs::path(folder_) / name).string();
    }
    [[nodiscard]] std::string bytesOf(const std::string &name) const
    {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    PictureFiles files;

private:
    std::string folder_;
};

TEST_F(PaintedPictures, ShowWhatIsDrawnWithTheOriginAtTheBottomLeft)
{
    const ImagePtr image = files.paint(3, 2, [](GraphicsContext &context) {
        context.setFillColor(Color(1.0, 0.0, 0.0));
        context.fillRect(Rect::make(0.0, 0.0, 2.0, 1.0), CompositingOperation::sourceOver);
    });

    ASSERT_NE(image, nullptr);
    Image expected(3, 2);
    expected.row(1)[0] = expected.row(1)[1] = kRedPixel;
    EXPECT_EQ(*image, expected);
    EXPECT_EQ(image->finer(), nullptr);
}

TEST_F(PaintedPictures, AreWholeThoughStatesAndLayersWereLeftOpen)
{
    const ImagePtr image = files.paint(1, 1, [](GraphicsContext &context) {
        context.saveState();
        context.beginLayer(1.0);
        context.setFillColor(Color(1.0, 0.0, 0.0));
        context.fillRect(Rect::make(0.0, 0.0, 1.0, 1.0), CompositingOperation::sourceOver);
    });

    EXPECT_EQ(*image, filled(1, 1, kRedPixel));
}

TEST_F(PaintedPictures, OfNoPixelsOrTooManyAreNothingAndNothingIsDrawn)
{
    int drawn = 0;
    const auto body = [&drawn](GraphicsContext &) { ++drawn; };

    EXPECT_EQ(files.paint(0, 5, body), nullptr);
    EXPECT_EQ(files.paint(5, 0, body), nullptr);
    EXPECT_EQ(files.paint(-1, 5, body), nullptr);
    EXPECT_EQ(files.paint(16385, 1, body), nullptr);
    EXPECT_EQ(files.paint(1, std::numeric_limits<int>::max(), body), nullptr);
    EXPECT_EQ(drawn, 0);

    EXPECT_NE(files.paint(16384, 1, body), nullptr);
    EXPECT_NE(files.paint(1, 16384, body), nullptr);
    EXPECT_EQ(drawn, 2);
}

TEST_F(PaintedPictures, AreReadAsTheyWereSavedWithTheirAlpha)
{
    Image image = striped();
    image.row(3)[3] = 0x80800000;
    image.row(5)[5] = 0;

    ASSERT_TRUE(files.save(path("a"), image, PictureKind::png, 0.0F));

    EXPECT_EQ(bytesOf("a").substr(1, 3), "PNG");
    EXPECT_EQ(*readPicture(path("a")), image);
}

TEST_F(PaintedPictures, WithoutAlphaComeOutOverWhite)
{
    const Image half = filled(16, 16, 0x80800000);

    ASSERT_TRUE(files.save(path("a.jpg"), half, PictureKind::jpeg, 1.0F));
    ASSERT_TRUE(files.save(path("a.bmp"), half, PictureKind::bmp, 1.0F));

    EXPECT_EQ(bytesOf("a.jpg").substr(0, 3), "\xFF\xD8\xFF");
    EXPECT_EQ(bytesOf("a.bmp").substr(0, 2), "BM");
    for (const char *name : {"a.jpg", "a.bmp"}) {
        const std::uint32_t pixel = readPicture(path(name))->pixel(8, 8);
        EXPECT_EQ(pixel >> 16U, 0xFFFFU) << name;
        EXPECT_NEAR((pixel >> 8U) & 0xFFU, 127, 2) << name;
        EXPECT_NEAR(pixel & 0xFFU, 127, 2) << name;
    }
}

TEST_F(PaintedPictures, TakeTheirQualityForJpegAlone)
{
    const auto sizeAt = [this](PictureKind kind, float quality) {
        EXPECT_TRUE(files.save(path("a"), striped(), kind, quality));
        return bytesOf("a").size();
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();

    EXPECT_LT(sizeAt(PictureKind::jpeg, 0.2F), sizeAt(PictureKind::jpeg, 0.95F));
    EXPECT_LT(sizeAt(PictureKind::jpeg, 0.95F), sizeAt(PictureKind::jpeg, 1.0F));
    EXPECT_EQ(sizeAt(PictureKind::jpeg, 7.0F), sizeAt(PictureKind::jpeg, 1.0F));
    EXPECT_EQ(sizeAt(PictureKind::jpeg, -7.0F), sizeAt(PictureKind::jpeg, 0.0F));
    EXPECT_EQ(sizeAt(PictureKind::jpeg, nan), sizeAt(PictureKind::jpeg, 0.0F));
    EXPECT_EQ(sizeAt(PictureKind::png, 0.0F), sizeAt(PictureKind::png, 1.0F));
    EXPECT_EQ(sizeAt(PictureKind::bmp, 0.0F), sizeAt(PictureKind::bmp, 1.0F));
}

TEST_F(PaintedPictures, AreWrittenInPlaceOverALongerFileAndThroughALink)
{
    std::ofstream(path("a.png")) << std::string(100000, 'x');
    fs::create_symlink(path("a.png"), path("link.png"));
    fs::create_hard_link(path("a.png"), path("same.png"));

    ASSERT_TRUE(files.save(path("link.png"), filled(3, 3, kRedPixel), PictureKind::png, 1.0F));

    EXPECT_TRUE(fs::is_symlink(path("link.png")));
    EXPECT_LT(fs::file_size(path("a.png")), 1000U);
    ASSERT_NE(readPicture(path("same.png")), nullptr);
    EXPECT_EQ(*readPicture(path("same.png")), filled(3, 3, kRedPixel));
}

TEST_F(PaintedPictures, AreShownAnewOnceTheyAreSaved)
{
    ASSERT_TRUE(files.save(path("a.png"), filled(3, 3, kRedPixel), PictureKind::png, 1.0F));
    ASSERT_EQ(files.picture(path("a.png"))->width(), 3);

    ASSERT_TRUE(files.save(path("a.png"), filled(9, 9, kRedPixel), PictureKind::png, 1.0F));

    EXPECT_EQ(files.picture(path("a.png"))->width(), 9);
}

TEST_F(PaintedPictures, ThatCannotBeWrittenAreToldSo)
{
    const Image image = filled(300, 300, kRedPixel);
    const auto saved = [&](const std::string &to) {
        return files.save(to, image, PictureKind::bmp, 1.0F);
    };

    EXPECT_FALSE(saved(path("missing/a.bmp")));
    EXPECT_FALSE(saved(path("")));
    EXPECT_FALSE(saved(""));
    EXPECT_FALSE(saved("/dev/full")) << "no room";
    EXPECT_FALSE(saved(path("a.bmp") + std::string(1, '\0') + "b"));
}

TEST_F(PaintedPictures, ThatCannotBeEncodedLeaveTheFileAsItWas)
{
    for (const char *name : {"empty", "wide", "odd"}) {
        std::ofstream(path(name)) << "old";
    }

    EXPECT_FALSE(files.save(path("empty"), Image(0, 0), PictureKind::png, 1.0F));
    EXPECT_FALSE(files.save(path("wide"), filled(65536, 1, kRedPixel), PictureKind::jpeg, 1.0F));
    EXPECT_FALSE(files.save(path("odd"), filled(1, 1, kRedPixel), PictureKind{2}, 1.0F));

    for (const char *name : {"empty", "wide", "odd"}) {
        EXPECT_EQ(bytesOf(name), "old") << name;
    }
}

} // namespace
} // namespace orv::platform
