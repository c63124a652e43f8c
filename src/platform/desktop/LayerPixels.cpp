#include "platform/desktop/LayerPixels.h"

#include "platform/raster/PixelMath.h"

#include <algorithm>
#include <cstddef>

namespace orv::platform {

namespace {

constexpr std::uint32_t kOpaque = 0xff000000U;
constexpr std::uint32_t kFull = 255;

/// The sum of two bytes in each half word, at most 255.
std::uint32_t saturatedPair(std::uint32_t a, std::uint32_t b)
{
    constexpr std::uint32_t kPair = 0x00ff00ffU;
    const std::uint32_t sum = (a & kPair) + (b & kPair);
    const std::uint32_t tooMuch = ((sum >> 8U) & 0x00010001U) * kFull;
    return (sum | tooMuch) & kPair;
}

std::uint32_t over(std::uint32_t upper, std::uint32_t lower)
{
    // Nearly all pixels of an overlay are one or the other.
    if (upper == 0) {
        return lower;
    }
    if (alphaOf(upper) == kFull) {
        return upper;
    }
    const std::uint32_t behind = byteMultiplied(lower, kFull - alphaOf(upper));
    return saturatedPair(upper, behind) | (saturatedPair(upper >> 8U, behind >> 8U) << 8U);
}

std::uint32_t *pixelAt(const ScreenPicture &picture, int x, int y)
{
    return picture.image.row(y - picture.origin.y()) + (x - picture.origin.x());
}

const std::uint32_t *pixelAt(const LayerPixels &layer, int x, int y)
{
    const auto row = static_cast<std::ptrdiff_t>(y - layer.frame.y());
    return layer.first + row * layer.frame.width() + (x - layer.frame.x());
}

/// From 0 to below `size`, also for what lies left of or above the frame.
int placeInTile(int distance, int size)
{
    const int rest = distance % size;
    return rest < 0 ? rest + size : rest;
}

} // namespace

void paintOver(const ScreenPicture &picture, const LayerPixels &layer, const QRegion &where)
{
    const std::uint32_t added = layer.hasAlpha ? 0U : kOpaque;
    const bool hides = !layer.hasAlpha && layer.opacity == kFull;
    const auto mixed = [&](std::uint32_t pixel, std::uint32_t lower) {
        const std::uint32_t whole = pixel | added;
        return over(layer.opacity == kFull ? whole : byteMultiplied(whole, layer.opacity), lower);
    };
    for (const QRect &rect : where) {
        for (int y = rect.y(); y < rect.y() + rect.height(); ++y) {
            const std::uint32_t *from = pixelAt(layer, rect.x(), y);
            std::uint32_t *to = pixelAt(picture, rect.x(), y);
            if (hides) {
                std::transform(from, from + rect.width(), to,
                               [](std::uint32_t pixel) { return pixel | kOpaque; });
            } else {
                std::transform(from, from + rect.width(), to, to, mixed);
            }
        }
    }
}

void paintTiled(const ScreenPicture &picture, const LayerPixels &layer, const QRegion &where)
{
    const QRect &frame = layer.frame;
    for (const QRect &rect : where) {
        for (int y = rect.y(); y < rect.y() + rect.height(); ++y) {
            const int row = frame.y() + placeInTile(y - frame.y(), frame.height());
            const std::uint32_t *from = pixelAt(layer, frame.x(), row);
            std::uint32_t *to = pixelAt(picture, rect.x(), y);
            for (int x = 0; x < rect.width(); ++x) {
                to[x] = from[placeInTile(rect.x() + x - frame.x(), frame.width())] | kOpaque;
            }
        }
    }
}

void paintColor(const ScreenPicture &picture, std::uint32_t color, const QRegion &where)
{
    for (const QRect &rect : where) {
        for (int y = rect.y(); y < rect.y() + rect.height(); ++y) {
            std::fill_n(pixelAt(picture, rect.x(), y), rect.width(), color | kOpaque);
        }
    }
}

} // namespace orv::platform
