#pragma once

#include <cstddef>
#include <cstdint>

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

/// Multiplies `count` pixels by `factor` / 255.
inline void fade(std::uint32_t *pixels, std::size_t count, std::uint32_t factor)
{
    for (std::size_t i = 0; i < count; ++i) {
        pixels[i] = byteMultiplied(pixels[i], factor);
    }
}

} // namespace orv::platform
