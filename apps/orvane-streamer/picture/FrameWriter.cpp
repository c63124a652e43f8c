#include "orvane-streamer/picture/FrameWriter.h"

#include <turbojpeg.h>

#include <algorithm>
#include <stdexcept>

namespace orv::apps {

namespace {

constexpr std::uint8_t kPictureFrame = 3;
constexpr std::uint8_t kJpeg = 1;
constexpr std::size_t kHeaderBytes = 20;
constexpr int kByteBits = 8;

void append(std::vector<std::uint8_t> &bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(value >> (i * kByteBits)));
    }
}

/// The mean colour of a square that may be cut off at the right and below.
std::uint32_t mean(const std::uint32_t *pixels, std::size_t stride, int width, int height)
{
    constexpr std::uint32_t kByte = 0xff;
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = pixels[x];
            red += pixel >> (2 * kByteBits) & kByte;
            green += pixel >> kByteBits & kByte;
            blue += pixel & kByte;
        }
        pixels += stride;
    }
    const auto count = static_cast<std::uint32_t>(width * height);
    return red / count << (2 * kByteBits) | green / count << kByteBits | blue / count;
}

} // namespace

FrameWriter::FrameWriter() : compressor_(tjInitCompress(), &tjDestroy)
{
    if (compressor_ == nullptr) {
        throw std::runtime_error("There is no memory to code the picture.");
    }
}

std::vector<std::uint8_t> FrameWriter::code(const Picture &picture, const PixelBox &box,
                                            const PictureLevel &level)
{
    const std::uint32_t *pixels =
        picture.pixels.data() +
        static_cast<std::size_t>(box.y) * static_cast<std::size_t>(picture.grid.width()) +
        static_cast<std::size_t>(box.x);
    int stride = picture.grid.width();
    int width = box.width;
    int height = box.height;
    if (level.shrunkBy > 1) {
        shrink(picture, box, level.shrunkBy);
        width = (box.width + level.shrunkBy - 1) / level.shrunkBy;
        height = (box.height + level.shrunkBy - 1) / level.shrunkBy;
        stride = width;
        pixels = shrunk_.data();
    }
    unsigned char *coded = nullptr;
    unsigned long size = 0;
    const int failed =
        tjCompress2(compressor_.get(), reinterpret_cast<const unsigned char *>(pixels), width,
                    stride * 4, height, TJPF_BGRX, &coded, &size,
                    level.fineColour ? TJSAMP_444 : TJSAMP_420, level.quality, 0);
    const std::unique_ptr<unsigned char, decltype(&tjFree)> owner(coded, &tjFree);
    if (failed != 0) {
        throw std::runtime_error("A box of the picture cannot be coded.");
    }
    return {coded, coded + size};
}

void FrameWriter::shrink(const Picture &picture, const PixelBox &box, int by)
{
    const auto stride = static_cast<std::size_t>(picture.grid.width());
    shrunk_.clear();
    for (int y = box.y; y < box.y + box.height; y += by) {
        const std::uint32_t *row = picture.pixels.data() + static_cast<std::size_t>(y) * stride;
        const int height = std::min(by, box.y + box.height - y);
        for (int x = box.x; x < box.x + box.width; x += by) {
            shrunk_.push_back(mean(row + x, stride, std::min(by, box.x + box.width - x), height));
        }
    }
}

std::vector<std::uint8_t> FrameWriter::message(const Header &header,
                                               std::span<const std::uint8_t> coded)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(kHeaderBytes + coded.size());
    bytes.assign({kPictureFrame, kJpeg, 0, 0});
    append(bytes, header.frame, 4);
    for (const int number : {header.box.x, header.box.y, header.box.width, header.box.height,
                             header.pictureWidth, header.pictureHeight}) {
        append(bytes, static_cast<std::uint32_t>(number), 2);
    }
    bytes.insert(bytes.end(), coded.begin(), coded.end());
    return bytes;
}

} // namespace orv::apps
