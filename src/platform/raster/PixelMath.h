#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

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
    for (std::size_t i = 0; i < count; ++i) {
        pixels[i] = withBehind(pixels[i], color);
    }
}

/// How many of `count` pixels on end, in eights, are covered as `like` says of eight of them.
inline std::size_t evenlyCovered(const std::uint8_t *coverage, std::size_t count,
                                 std::uint64_t like)
{
    std::size_t found = 0;
    for (std::uint64_t eight = like; count - found >= sizeof eight; found += sizeof eight) {
        std::memcpy(&eight, coverage + found, sizeof eight);
        if (eight != like) {
            break;
        }
    }
    return found;
}

/// Calls `some(i)` for each of `count` pixels that is covered in part, and `all(i, length)` for
/// those on end that are covered wholly.
template <class Some, class All>
void forEachCovered(const std::uint8_t *coverage, std::size_t count, Some &&some, All &&all)
{
    for (std::size_t i = 0; i < count;) {
        if (coverage[i] == 0) {
            i += std::max<std::size_t>(1, evenlyCovered(coverage + i, count - i, 0));
        } else if (coverage[i] == 255U) {
            const std::size_t length =
                std::max<std::size_t>(1, evenlyCovered(coverage + i, count - i, ~std::uint64_t{0}));
            all(i, length);
            i += length;
        } else {
            some(i);
            ++i;
        }
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
