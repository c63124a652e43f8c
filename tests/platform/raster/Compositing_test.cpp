#include "Formulas.h"
#include "Surface.h"
#include "platform/raster/PixelMath.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace orv::platform {
namespace {

constexpr int kPairs = 4000;

std::vector<std::uint32_t> premultipliedPixels(unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<std::uint32_t> pixels{0x00000000, 0xFF000000, 0xFFFFFFFF, 0x80808080, 0x01010101};
    while (pixels.size() < kPairs) {
        const std::uint32_t alpha = random() % 256;
        std::uint32_t pixel = alpha << 24U;
        for (unsigned shift = 0; shift < 24; shift += 8) {
            pixel |= (random() % (alpha + 1)) << shift;
        }
        pixels.push_back(pixel);
    }
    std::shuffle(pixels.begin(), pixels.end(), random);
    return pixels;
}

ImagePtr rowOf(const std::vector<std::uint32_t> &pixels)
{
    auto image = std::make_shared<Image>(static_cast<int>(pixels.size()), 1);
    std::copy(pixels.begin(), pixels.end(), image->data());
    return image;
}

int largestDifference(std::uint32_t a, std::uint32_t b)
{
    int largest = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        largest = std::max(largest, std::abs(static_cast<int>((a >> shift) & 0xFFU) -
                                             static_cast<int>((b >> shift) & 0xFFU)));
    }
    return largest;
}

class CompositingOperations : public testing::TestWithParam<PorterDuff> {};

TEST_P(CompositingOperations, ArePorterAndDuffsToTheLastBit)
{
    const std::vector<std::uint32_t> above = premultipliedPixels(1);
    const std::vector<std::uint32_t> below = premultipliedPixels(2);
    Surface surface(kPairs, 1);
    const Rect whole = Rect::make(0.0, 0.0, kPairs, 1.0);

    surface.paint([&](GraphicsContext &context) {
        context.drawImage(rowOf(below), whole, CompositingOperation::copy, 1.0);
        context.drawImage(rowOf(above), whole, GetParam().operation, 1.0);
    });

    for (int i = 0; i < kPairs; ++i) {
        const auto at = static_cast<std::size_t>(i);
        ASSERT_EQ(surface.at(i, 0), GetParam().of(above[at], below[at]))
            << std::hex << above[at] << " over " << below[at];
    }
}

TEST_P(CompositingOperations, OfABlendModeAreTheSame)
{
    const std::vector<std::uint32_t> below = premultipliedPixels(3);
    const Color color(0.2, 0.6, 1.0, 0.6);
    Surface surface(kPairs, 1);
    const Rect whole = Rect::make(0.0, 0.0, kPairs, 1.0);
    Path rect;
    rect.addRect(whole);

    surface.paint([&](GraphicsContext &context) {
        context.drawImage(rowOf(below), whole, CompositingOperation::copy, 1.0);
        context.setBlendMode(GetParam().mode);
        context.setFillColor(color);
        context.fillPath(rect);
    });

    const std::uint32_t above = 0x991F5C99; // alpha 153, and 51, 153, 255 times 153 / 255
    for (int i = 0; i < kPairs; ++i) {
        const std::uint32_t d = below[static_cast<std::size_t>(i)];
        ASSERT_EQ(surface.at(i, 0), GetParam().of(above, d)) << std::hex << d;
    }
}

TEST_P(CompositingOperations, OfAFilledRectangleAreTheSame)
{
    const std::vector<std::uint32_t> below = premultipliedPixels(4);
    Surface surface(kPairs, 1);
    const Rect whole = Rect::make(0.0, 0.0, kPairs, 1.0);

    surface.paint([&](GraphicsContext &context) {
        context.drawImage(rowOf(below), whole, CompositingOperation::copy, 1.0);
        context.setBlendMode(BlendMode::multiply);
        context.setFillColor({0.2, 0.6, 1.0, 0.6});
        context.fillRect(whole, GetParam().operation);
    });

    for (int i = 0; i < kPairs; ++i) {
        const std::uint32_t d = below[static_cast<std::size_t>(i)];
        ASSERT_EQ(surface.at(i, 0), GetParam().of(0x991F5C99, d)) << std::hex << d;
    }
}

INSTANTIATE_TEST_SUITE_P(All, CompositingOperations, testing::ValuesIn(porterDuffOperations()),
                         [](const auto &made) { return made.param.name; });

class SeparableBlendModes : public testing::TestWithParam<Separable> {};

// The rasteriser works in whole 255ths: it truncates the quotients within a mode and then rounds
// the sum, so a component may be off by 1; soft light chains two of them before the sum and may be
// off by 2.
TEST_P(SeparableBlendModes, FollowTheirFormula)
{
    const std::vector<std::uint32_t> below = premultipliedPixels(5);
    Surface surface(kPairs, 1);
    const Rect whole = Rect::make(0.0, 0.0, kPairs, 1.0);
    Path rect;
    rect.addRect(whole);

    surface.paint([&](GraphicsContext &context) {
        context.drawImage(rowOf(below), whole, CompositingOperation::copy, 1.0);
        context.setBlendMode(GetParam().mode);
        context.setFillColor({0.2, 0.6, 1.0, 0.6});
        context.fillPath(rect);
    });

    for (int i = 0; i < kPairs; ++i) {
        const std::uint32_t d = below[static_cast<std::size_t>(i)];
        const std::uint32_t expected = GetParam().of(0x991F5C99, d);
        ASSERT_LE(largestDifference(surface.at(i, 0), expected), GetParam().tolerance)
            << std::hex << d << ": " << surface.at(i, 0) << " for " << expected;
    }
}

INSTANTIATE_TEST_SUITE_P(All, SeparableBlendModes, testing::ValuesIn(separableModes()),
                         [](const auto &made) { return made.param.name; });

TEST(PuttingBehind, EqualsTheGeneralWayForEveryPairOfAlphas)
{
    // One pixel border beside a half pixel: the general way; on the border: the fast one.
    for (int alpha = 0; alpha <= 255; ++alpha) {
        Surface fast(256, 1);
        Surface general(256, 1);
        for (Surface *surface : {&fast, &general}) {
            std::vector<std::uint32_t> pixels;
            for (std::uint32_t a = 0; a <= 255; ++a) {
                pixels.push_back((a << 24U) | (a << 16U) | ((a / 2) << 8U) | (a / 3));
            }
            surface->paint([&](GraphicsContext &context) {
                context.drawImage(rowOf(pixels), Rect::make(0, 0, 256, 1),
                                  CompositingOperation::copy, 1.0);
            });
        }
        const Color color(1.0, 0.4, 0.2, alpha / 255.0);
        Path rect;
        rect.addRect(Rect::make(0, 0, 256, 1));

        fast.paint([&](GraphicsContext &context) {
            context.setFillColor(color);
            context.fillRect(Rect::make(0, 0, 256, 1), CompositingOperation::destinationOver);
        });
        general.paint([&](GraphicsContext &context) {
            context.setFillColor(color);
            context.setBlendMode(BlendMode::destinationOver);
            context.fillPath(rect);
        });

        ASSERT_EQ(fast.image(), general.image()) << "alpha " << alpha;
    }
}

TEST(PuttingBehind, KeepsToTheClipAndToPartsOfPixels)
{
    Surface surface(4, 1);

    surface.paint([](GraphicsContext &context) {
        context.clipToRect(Rect::make(1.0, 0.0, 2.0, 1.0));
        context.setFillColor(Color::white());
        context.fillRect(Rect::make(0.0, 0.0, 2.5, 1.0), CompositingOperation::destinationOver);
    });

    EXPECT_EQ(surface.at(0, 0), 0x00000000U);
    EXPECT_EQ(surface.at(1, 0), 0xFFFFFFFFU);
    EXPECT_NEAR(surface.at(2, 0) >> 24U, 128, 1);
    EXPECT_EQ(surface.at(3, 0), 0x00000000U);
}

TEST(PixelMath, MultipliesEveryByteAsTheFormulasDo)
{
    for (int value = 0; value <= 255; ++value) {
        for (int factor = 0; factor <= 255; ++factor) {
            const auto pixel = static_cast<std::uint32_t>(value) * 0x01010101U;
            const auto expected = static_cast<std::uint32_t>(dividedBy255(value * factor));
            ASSERT_EQ(byteMultiplied(pixel, static_cast<std::uint32_t>(factor)),
                      expected * 0x01010101U)
                << value << " times " << factor;
        }
    }
}

} // namespace
} // namespace orv::platform
