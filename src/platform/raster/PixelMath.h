#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <numeric>

namespace orv::platform {

/// Arithmetic on premultiplied 0xAARRGGBB pixels, rounded as the rasteriser behind us rounds.

[[nodiscard]] constexpr std::uint32_t alphaOf(std::uint32_t pixel)
{
    return pixel >> 24U;
}

/// All four components times `factor` / 255; `factor` is 0 to 255. A product t is divided as
/// (t + t / 256 + 128) / 256, which is the nearest but for a few just above a half.
[[nodiscard]] constexpr std::uint32_t byteMultiplied(std::uint32_t pixel, std::uint32_t factor)
{
    constexpr std::uint32_t kPair = 0x00FF00FF;
    constexpr std::uint32_t kHalf = 0x00800080;
    std::uint32_t low = (pixel & kPair) * factor;
    low = (low + ((low >> 8U) & kPair) + kHalf) >> 8U;
    std::uint32_t high = ((pixel >> 8U) & kPair) * factor;
    high = high + ((high >> 8U) & kPair) + kHalf;
    return (high & ~kPair) | (low & kPair);
}

/// What `over` looks like with `under` put in behind it: over + under (255 - alpha of over) / 255.
[[nodiscard]] constexpr std::uint32_t withBehind(std::uint32_t over, std::uint32_t under)
{
    return over + byteMultiplied(under, 255U - alphaOf(over));
}

/// Puts one colour in behind `count` pixels, bit for bit as the slow general way does it.
inline void fillBehind(std::uint32_t *pixels, std::size_t count, std::uint32_t color)
{
    const auto one = [color](std::uint32_t &pixel) {
        // Most of what is drawn on is empty, most of what is drawn hides what lies behind.
        if (pixel == 0) {
            pixel = color;
        } else if (alphaOf(pixel) != 255U) {
            pixel = withBehind(pixel, color);
        }
    };
    constexpr std::size_t kStep = 8;
    std::size_t first = 0;
    for (; count - first >= kStep; first += kStep) {
        std::uint32_t *step = pixels + first;
        if (std::accumulate(step, step + kStep, 0U, std::bit_or<>()) == 0) {
            std::fill_n(step, kStep, color);
        } else {
            std::for_each(step, step + kStep, one);
        }
    }
    std::for_each(pixels + first, pixels + count, one);
}

/// Calls `some(i)` for each of `count` pixels that is covered in part, and `all(i, length)` for
/// some on end that are covered wholly.
template <class Some, class All>
void forEachCovered(const std::uint8_t *coverage, std::size_t count, Some &&some, All &&all)
{
    const auto one = [&](std::size_t i) {
        if (coverage[i] == 255U) {
            all(i, std::size_t{1});
        } else if (coverage[i] != 0) {
            some(i);
        }
    };
    constexpr std::size_t kStep = sizeof(std::uint64_t);
    std::size_t first = 0;
    for (; count - first >= kStep; first += kStep) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, coverage + first, kStep);
        if (eight == ~std::uint64_t{0}) {
            all(first, kStep);
        } else if (eight != 0) {
            for (std::size_t i = first; i < first + kStep; ++i) {
                one(i);
            }
        }
    }
    for (; first < count; ++first) {
        one(first);
    }
}

/// Paints one colour over `count` pixels, each as far as it is covered, 0 to 255.
inline void paintCovered(std::uint32_t *pixels, const std::uint8_t *coverage, std::size_t count,
                         std::uint32_t color)
{
    forEachCovered(
        coverage, count,
        [&](std::size_t i) {
            pixels[i] = withBehind(byteMultiplied(color, coverage[i]), pixels[i]);
        },
        [&](std::size_t first, std::size_t length) {
            std::uint32_t *end = pixels + first + length;
            if (alphaOf(color) == 255U) {
                std::fill(pixels + first, end, color);
            } else {
                std::transform(pixels + first, end, pixels + first,
                               [color](std::uint32_t below) { return withBehind(color, below); });
            }
        });
}

/// Takes away from `count` pixels as much as is covered of each, 0 to 255.
inline void clearCovered(std::uint32_t *pixels, const std::uint8_t *coverage, std::size_t count)
{
    forEachCovered(
        coverage, count,
        [&](std::size_t i) { pixels[i] = byteMultiplied(pixels[i], 255U - coverage[i]); },
        [&](std::size_t first, std::size_t length) {
            std::fill_n(pixels + first, length, std::uint32_t{0});
        });
}

/// Multiplies `count` pixels by `factor` / 255.
inline void fade(std::uint32_t *pixels, std::size_t count, std::uint32_t factor)
{
    for (std::size_t i = 0; i < count; ++i) {
        pixels[i] = byteMultiplied(pixels[i], factor);
    }
}

} // namespace orv::platform
