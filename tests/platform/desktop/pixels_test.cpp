#include "platform/desktop/InkRuns.h"
#include "platform/desktop/PixelDifference.h"
#include "platform/desktop/PointerLooks.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>

namespace orv::platform {

namespace {

constexpr std::uint32_t kRed = 0xffff0000U;
constexpr std::uint32_t kPale = 0x20200000U;
constexpr int kVisible = 64;

/// Fills a rectangle.
void fill(Image &image, const PixelRect &rect, std::uint32_t color)
{
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
        std::fill_n(image.row(y) + rect.x, rect.width, color);
    }
}

Image randomPicture(std::mt19937 &random)
{
    Image picture(64, 64);
    for (int i = 0; i < 6; ++i) {
        const auto at = [&](int limit) { return static_cast<int>(random() % limit); };
        fill(picture, {at(60), at(60), 1 + at(4), 1 + at(4)}, kRed + at(200));
    }
    return picture;
}

} // namespace

TEST(ChangedRects, areNoneForEqualPictures)
{
    const Image image(20, 20);
    EXPECT_TRUE(changedRects(rowsOf(image), rowsOf(image), {0, 0, 20, 20}).empty());
}

TEST(ChangedRects, areTheBoxOfWhatDiffersWithinTheArea)
{
    const Image before(100, 100);
    Image after = before;
    fill(after, {10, 20, 5, 3}, kRed);
    fill(after, {30, 24, 2, 2}, kRed);
    fill(after, {90, 90, 1, 1}, kRed);

    EXPECT_THAT(changedRects(rowsOf(before), rowsOf(after), {0, 0, 80, 80}),
                testing::ElementsAre(PixelRect{10, 20, 22, 6}));
}

TEST(ChangedRects, areSeveralWhereMuchBetweenThemIsTheSame)
{
    const Image before(100, 100);
    Image after = before;
    fill(after, {10, 10, 5, 5}, kRed);
    fill(after, {50, 60, 5, 5}, kRed);

    EXPECT_THAT(changedRects(rowsOf(before), rowsOf(after), {0, 0, 100, 100}),
                testing::ElementsAre(PixelRect{10, 10, 5, 5}, PixelRect{50, 60, 5, 5}));
}

TEST(ChangedRects, bringRandomPicturesTogether)
{
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Image before = randomPicture(random);
        const Image after = randomPicture(random);

        for (const PixelRect &rect : changedRects(rowsOf(before), rowsOf(after), {0, 0, 64, 64})) {
            copyPixels(after, before, rect);
        }

        ASSERT_EQ(before, after);
    }
}

TEST(CopyChanges, leavesWhatIsOutsideTheAreaAndTellsWhatItCopied)
{
    const Image before(100, 100);
    Image after = before;
    fill(after, {10, 20, 5, 3}, kRed);
    fill(after, {30, 24, 2, 2}, kRed);
    fill(after, {90, 90, 1, 1}, kRed);
    Image copy = before;

    EXPECT_THAT(copyChanges(rowsOf(after), copy.data(), {0, 0, 80, 80}),
                testing::ElementsAre(PixelRect{10, 20, 22, 6}));

    Image expected = before;
    copyPixels(after, expected, {0, 0, 80, 80});
    EXPECT_EQ(copy, expected);
    EXPECT_TRUE(copyChanges(rowsOf(after), copy.data(), {0, 0, 80, 80}).empty());
}

TEST(CopyChanges, tellsOfRandomPicturesWhatChangedRectsTells)
{
    std::mt19937 random(8);
    for (int round = 0; round < 200; ++round) {
        Image before = randomPicture(random);
        const Image after = randomPicture(random);
        const auto changed = changedRects(rowsOf(before), rowsOf(after), {0, 0, 64, 64});

        ASSERT_EQ(copyChanges(rowsOf(after), before.data(), {0, 0, 64, 64}), changed);

        ASSERT_EQ(before, after);
    }
}

TEST(InkRuns, areThePiecesOfEachRowThatAreVisible)
{
    Image image(20, 4);
    fill(image, {2, 1, 3, 2}, kRed);
    fill(image, {10, 1, 1, 1}, kRed);
    fill(image, {15, 0, 5, 4}, kPale);

    EXPECT_THAT(
        inkRuns(image, 0, 4, kVisible),
        testing::ElementsAre(PixelRect{2, 1, 3, 1}, PixelRect{10, 1, 1, 1}, PixelRect{2, 2, 3, 1}));
    EXPECT_EQ(countRuns(image, 0, kVisible), 0);
    EXPECT_EQ(countRuns(image, 1, kVisible), 2);
    EXPECT_EQ(countRuns(image, 1, 1), 3);
    EXPECT_TRUE(inkRuns(image, 0, 4, 256).empty());
}

TEST(InkRuns, losePreciseRowsButNoInkWhenCoarse)
{
    Image image(20, 5);
    fill(image, {2, 0, 3, 1}, kRed);
    fill(image, {4, 1, 3, 1}, kRed);
    fill(image, {0, 4, 20, 1}, kRed);

    EXPECT_THAT(coarseInkRuns(image, 2, kVisible),
                testing::ElementsAre(PixelRect{2, 0, 5, 2}, PixelRect{0, 4, 20, 1}));
}

TEST(InkChange, tellsWhatCameAndWhatWent)
{
    Image before(20, 3);
    Image after(20, 3);
    fill(before, {0, 1, 10, 1}, kRed);
    fill(after, {5, 1, 10, 1}, kRed);
    fill(after, {0, 2, 20, 1}, kPale);

    InkChange change;
    collectInkChange(before, after, {0, 0, 20, 3}, kVisible, change);

    EXPECT_THAT(change.added, testing::ElementsAre(PixelRect{10, 1, 5, 1}));
    EXPECT_THAT(change.removed, testing::ElementsAre(PixelRect{0, 1, 5, 1}));
}

TEST(OpaqueColor, takesTheTransparencyOutOfThePixel)
{
    EXPECT_EQ(opaqueColor(0x80800000U), 0xffff0000U);
    EXPECT_EQ(opaqueColor(0x80402010U), 0xff804020U);
    EXPECT_EQ(opaqueColor(0xff123456U), 0xff123456U);
    EXPECT_EQ(opaqueColor(0x00000000U), 0xff000000U);
}

TEST(CursorPixels, areTheFinerOnesOnADisplayOfTwiceTheScale)
{
    auto coarse = std::make_shared<Image>(2, 3);
    auto fine = std::make_shared<Image>(4, 6);
    fill(*fine, {1, 2, 2, 2}, kRed);
    coarse->setFiner(fine);

    EXPECT_EQ(cursorPixels(coarse, 1.0), *coarse);
    EXPECT_EQ(cursorPixels(coarse, 2.0), *fine);
}

TEST(CursorPixels, growWithTheScaleWhereThereIsNoFinerPicture)
{
    auto picture = std::make_shared<Image>(2, 3);
    fill(*picture, {0, 0, 2, 3}, kPale);

    const Image grown = cursorPixels(picture, 1.5);

    EXPECT_EQ(grown.width(), 3);
    EXPECT_EQ(grown.height(), 5);
    EXPECT_EQ(grown.pixel(1, 1), kPale);
}

TEST(CursorPixels, areNoneForAPictureWithoutAny)
{
    EXPECT_EQ(cursorPixels(nullptr, 1.0), Image(0, 0));
    EXPECT_EQ(cursorPixels(std::make_shared<Image>(0, 5), 1.0), Image(0, 0));
}

} // namespace orv::platform
