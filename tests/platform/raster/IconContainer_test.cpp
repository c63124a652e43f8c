#include "platform/raster/IconContainer.h"

#include "platform/foundation/AtomicFile.h"
#include "platform/raster/Pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace orv::platform {
namespace {

Data png(int side, std::uint32_t pixel)
{
    Image image(side, side);
    std::fill_n(image.data(), side * side, pixel);
    return pngOf(image);
}

void append(Data &bytes, const std::string &name, std::size_t length)
{
    bytes.insert(bytes.end(), name.begin(), name.end());
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        bytes.push_back(static_cast<std::uint8_t>(length >> shift));
    }
}

Data container(const std::vector<std::pair<std::string, Data>> &members)
{
    Data body;
    for (const auto &[name, data] : members) {
        append(body, name, data.size() + 8);
        body.insert(body.end(), data.begin(), data.end());
    }
    Data whole;
    append(whole, "icns", body.size() + 8);
    whole.insert(whole.end(), body.begin(), body.end());
    return whole;
}

/// The same bytes with another length at a place.
Data withLength(Data bytes, std::size_t place, std::size_t length)
{
    Data number;
    append(number, "", length);
    std::copy(number.begin(), number.end(), bytes.begin() + static_cast<std::ptrdiff_t>(place));
    return bytes;
}

Data pictureIn(const Data &bytes)
{
    const auto found = largestPngMember(bytes);
    return {found.begin(), found.end()};
}

const Data kSmall = png(16, 0xFFFF0000);
const Data kLarge = png(64, 0xFF0000FF);
const Data kOldStyle = {1, 2, 3, 4, 5};
const Data kSome = container({{"ic07", kSmall}, {"il32", kOldStyle}});
constexpr std::size_t kFirstLength = 12;

TEST(IconContainer, GivesThePngWithTheMostPixelsWhereverItStands)
{
    EXPECT_EQ(pictureIn(container({{"ic07", kSmall}, {"ic09", kLarge}})), kLarge);
    EXPECT_EQ(pictureIn(container({{"ic09", kLarge}, {"ic07", kSmall}})), kLarge);
    EXPECT_EQ(pictureIn(kSome), kSmall);
}

TEST(IconContainer, WithoutAPngGivesNothing)
{
    EXPECT_EQ(pictureIn(container({{"il32", kOldStyle}})), Data{});
    EXPECT_EQ(pictureIn(container({})), Data{});
    EXPECT_EQ(pictureIn(container({{"ic07", Data(kSmall.begin(), kSmall.begin() + 20)}})), Data{})
        << "a PNG that ends before its size";
    EXPECT_EQ(pictureIn(kSmall), Data{}) << "no container";
}

TEST(IconContainer, ThatIsCutOffAnywhereGivesNothing)
{
    for (std::size_t length = 0; length < kSome.size(); ++length) {
        EXPECT_EQ(
            pictureIn(Data(kSome.begin(), kSome.begin() + static_cast<std::ptrdiff_t>(length))),
            Data{})
            << length;
    }
}

TEST(IconContainer, WhoseLengthsLieGivesNothing)
{
    for (const std::size_t lie : {0UL, 1UL, 7UL, 9UL, 0x7FFFFFFFUL, 0xFFFFFFF8UL, 0xFFFFFFFFUL}) {
        EXPECT_EQ(pictureIn(withLength(kSome, kFirstLength, lie)), Data{}) << lie;
    }
    for (const std::size_t lie : {0UL, 7UL, 9UL, kSome.size() + 1, 0xFFFFFFFFUL}) {
        EXPECT_EQ(pictureIn(withLength(kSome, 4, lie)), Data{}) << lie;
    }
}

TEST(IconContainer, MayHaveMoreAfterItsEnd)
{
    Data longer = kSome;
    longer.insert(longer.end(), 100, 0xAB);

    EXPECT_EQ(pictureIn(longer), kSmall);
}

class IconFiles : public testing::Test {
protected:
    IconFiles()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "orv-icons-XXXXXX";
        folder_ = ::mkdtemp(pattern.data());
    }
    ~IconFiles() override { std::filesystem::remove_all(folder_); }
    ImagePtr read(const Data &bytes)
    {
        const std::string path = folder_ + "/icon.icns";
        EXPECT_TRUE(writeFileAtomically(path, bytes));
        return readPicture(path);
    }

private:
    std::string folder_;
};

TEST_F(IconFiles, AreReadAsPictures)
{
    const ImagePtr icon = read(container({{"ic07", kSmall}, {"ic09", kLarge}}));

    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(icon->width(), 64);
    EXPECT_EQ(icon->pixel(63, 63), 0xFF0000FFU);
}

TEST_F(IconFiles, WithAPngThatIsBrokenOrNoneAreNothing)
{
    Data broken = kLarge;
    broken.resize(40);

    EXPECT_EQ(read(container({{"ic09", broken}})), nullptr);
    EXPECT_EQ(read(container({{"il32", kOldStyle}})), nullptr);
    EXPECT_EQ(read({'i', 'c', 'n', 's'}), nullptr);
}

} // namespace
} // namespace orv::platform
