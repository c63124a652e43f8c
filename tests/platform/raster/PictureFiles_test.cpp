#include "platform/raster/PictureFiles.h"

#include "platform/raster/Pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace orv::platform {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kRedPixel = 0xFFFF0000;
constexpr std::uint32_t kBluePixel = 0xFF0000FF;

Image filled(int side, std::uint32_t pixel)
{
    Image image(side, side);
    std::fill_n(image.data(), side * side, pixel);
    return image;
}

class PictureFilesTest : public testing::Test {
protected:
    PictureFilesTest()
    {
        std::string pattern = fs::temp_directory_path() / "orv-picture-files-XXXXXX";
        folder_ = ::mkdtemp(pattern.data());
    }
    ~PictureFilesTest() override { fs::remove_all(folder_); }
    [[nodiscard]] std::string path(const std::string &name) const
    {
        return (fs::path(folder_) / name).string();
    }
    [[nodiscard]] std::uint32_t colorOf(const std::string &name)
    {
        const ImagePtr image = files.picture(path(name));
        return image ? image->pixel(0, 0) : 0;
    }

    PictureFiles files;

private:
    std::string folder_;
};

TEST_F(PictureFilesTest, DecodesAPictureOnceWhileItDoesNotChange)
{
    ASSERT_TRUE(writePng(path("a.png"), filled(3, kRedPixel)));

    const ImagePtr first = files.picture(path("a.png"));
    const ImagePtr second = files.picture(path("a.png"));

    ASSERT_NE(first, nullptr);
    EXPECT_EQ(*first, filled(3, kRedPixel));
    EXPECT_EQ(first->finer(), nullptr);
    EXPECT_EQ(second, first);
    EXPECT_EQ(files.decoded(), 1U);
}

TEST_F(PictureFilesTest, ShowsAFileThatWasReplacedByOneOfTheSameSizeAndDate)
{
    ASSERT_TRUE(writePng(path("a.png"), filled(3, kRedPixel)));
    const auto date = fs::last_write_time(path("a.png"));
    const ImagePtr before = files.picture(path("a.png"));
    ASSERT_TRUE(writePng(path("b.png"), filled(3, kBluePixel)));
    ASSERT_EQ(fs::file_size(path("a.png")), fs::file_size(path("b.png")));
    fs::last_write_time(path("b.png"), date);

    fs::rename(path("b.png"), path("a.png"));

    EXPECT_EQ(colorOf("a.png"), kBluePixel);
    EXPECT_EQ(before->pixel(0, 0), kRedPixel) << "who holds the old one keeps it";
}

TEST_F(PictureFilesTest, ShowsAFileThatWasWrittenInPlace)
{
    ASSERT_TRUE(writePng(path("a.png"), filled(3, kRedPixel)));
    ASSERT_EQ(colorOf("a.png"), kRedPixel);

    ASSERT_TRUE(writePng(path("b.png"), filled(30, kBluePixel)));
    std::ofstream(path("a.png"), std::ios::binary)
        << std::ifstream(path("b.png"), std::ios::binary).rdbuf();

    EXPECT_EQ(colorOf("a.png"), kBluePixel);
}

TEST_F(PictureFilesTest, AnswersNothingForAFileThatWasRemovedUntilItComesBack)
{
    ASSERT_TRUE(writePng(path("a.png"), filled(3, kRedPixel)));
    ASSERT_EQ(colorOf("a.png"), kRedPixel);

    fs::remove(path("a.png"));

    EXPECT_EQ(files.picture(path("a.png")), nullptr);
    ASSERT_TRUE(writePng(path("a.png"), filled(3, kBluePixel)));
    EXPECT_EQ(colorOf("a.png"), kBluePixel);
}

TEST_F(PictureFilesTest, TakesTheFinerOneBesideItWhenThatIsThere)
{
    ASSERT_TRUE(writePng(path("a.png"), filled(3, kRedPixel)));
    ASSERT_EQ(files.picture(path("a.png"))->finer(), nullptr);

    ASSERT_TRUE(writePng(path("a@2x.png"), filled(6, kBluePixel)));
    const ImagePtr both = files.picture(path("a.png"));
    ASSERT_NE(both->finer(), nullptr);
    EXPECT_EQ(*both, filled(3, kRedPixel));
    EXPECT_EQ(*both->finer(), filled(6, kBluePixel));
    EXPECT_EQ(files.picture(path("a.png")), both);

    fs::remove(path("a@2x.png"));
    EXPECT_EQ(files.picture(path("a.png"))->finer(), nullptr);
    EXPECT_EQ(files.decoded(), 3U);
}

TEST_F(PictureFilesTest, FindsTheFinerOneOfANameWithDotsInItsFolderAndNoneInItself)
{
    fs::create_directory(path("v1.5"));
    ASSERT_TRUE(writePng(path("v1.5/icon"), filled(2, kRedPixel)));
    ASSERT_TRUE(writePng(path("v1.5/icon@2x"), filled(4, kBluePixel)));

    const ImagePtr image = files.picture(path("v1.5/icon"));

    ASSERT_NE(image, nullptr);
    EXPECT_NE(image->finer(), nullptr);
}

TEST_F(PictureFilesTest, LooksAtABrokenFileAgainOnlyWhenItHasChanged)
{
    std::ofstream(path("a.png")) << "no picture";

    EXPECT_EQ(files.picture(path("a.png")), nullptr);
    EXPECT_EQ(files.picture(path("a.png")), nullptr);
    EXPECT_EQ(files.decoded(), 1U);

    ASSERT_TRUE(writePng(path("a.png"), filled(3, kRedPixel)));
    EXPECT_EQ(colorOf("a.png"), kRedPixel);
}

TEST_F(PictureFilesTest, AnswersNothingForAFolderAMissingFileAndAPathThatIsNone)
{
    fs::create_directory(path("folder.png"));

    EXPECT_EQ(files.picture(path("folder.png")), nullptr);
    EXPECT_EQ(files.picture(path("missing.png")), nullptr);
    EXPECT_EQ(files.picture(""), nullptr);
    EXPECT_EQ(files.picture(path("a.png") + std::string(1, '\0')), nullptr);
}

TEST_F(PictureFilesTest, DropsWhatWasNotUsedForLongestWhenItKeepsTooMuch)
{
    const int side = 2048;
    static_assert(5 * side * side * 4 > PictureFiles::kept);
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(writePng(path(std::to_string(i)), filled(side, kRedPixel)));
    }
    for (const char *name : {"0", "1", "2", "0", "3", "4"}) {
        ASSERT_EQ(colorOf(name), kRedPixel);
    }
    ASSERT_EQ(files.decoded(), 5U);

    static_cast<void>(files.picture(path("0")));
    EXPECT_EQ(files.decoded(), 5U) << "used again before the others came";

    static_cast<void>(files.picture(path("1")));
    EXPECT_EQ(files.decoded(), 6U) << "dropped";
}

TEST_F(PictureFilesTest, AnswersSeveralThreadsWhileAFileIsWrittenAnew)
{
    ASSERT_TRUE(writePng(path("a.png"), filled(20, kRedPixel)));
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this, &wrong] {
            for (int n = 0; n < 50; ++n) {
                const std::uint32_t color = colorOf("a.png");
                wrong += color == kRedPixel || color == kBluePixel ? 0 : 1;
            }
        });
    }

    for (int n = 0; n < 20; ++n) {
        EXPECT_TRUE(writePng(path("a.png"), filled(20, n % 2 == 0 ? kBluePixel : kRedPixel)));
    }
    for (std::thread &thread : threads) {
        thread.join();
    }

    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(colorOf("a.png"), kRedPixel);
}

} // namespace
} // namespace orv::platform
