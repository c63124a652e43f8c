#pragma once

#include "orvane-streamer/picture/Tiles.h"

#include <turbojpeg.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <vector>

namespace orv::apps::test {

/// A picture message as the page reads it.
struct SeenFrame {
    std::uint32_t frame = 0;
    PixelBox box;
    int pictureWidth = 0;
    int pictureHeight = 0;
    /// The size of the coded pixels, and these as 0x00RRGGBB.
    int width = 0;
    int height = 0;
    bool hasFineColour = false;
    std::vector<std::uint32_t> pixels;

    /// By its place in the picture; stretched as the page does.
    [[nodiscard]] std::uint32_t at(int x, int y) const
    {
        const int column = (x - box.x) * width / box.width;
        const int row = (y - box.y) * height / box.height;
        return pixels.at(static_cast<std::size_t>(row * width + column)) & 0xffffff;
    }
    [[nodiscard]] bool has(int x, int y) const
    {
        return x >= box.x && x < box.x + box.width && y >= box.y && y < box.y + box.height;
    }
};

/// Throws `std::runtime_error` for a message that is no picture frame.
inline SeenFrame seen(const std::vector<std::uint8_t> &message)
{
    constexpr std::size_t kHeader = 20;
    if (message.size() < kHeader || message[0] != 3 || message[1] != 1 || message[2] != 0 ||
        message[3] != 0) {
        throw std::runtime_error("No header of a picture frame.");
    }
    const auto number = [&message](std::size_t offset) {
        return message[offset] | message[offset + 1] << 8;
    };
    SeenFrame seen;
    seen.frame = static_cast<std::uint32_t>(number(4) | number(6) << 16);
    seen.box = {number(8), number(10), number(12), number(14)};
    seen.pictureWidth = number(16);
    seen.pictureHeight = number(18);
    const std::unique_ptr<void, int (*)(void *)> decoder(tjInitDecompress(), &tjDestroy);
    const auto bytes = static_cast<unsigned long>(message.size() - kHeader);
    int sampling = 0;
    int space = 0;
    if (tjDecompressHeader3(decoder.get(), message.data() + kHeader, bytes, &seen.width,
                            &seen.height, &sampling, &space) != 0) {
        throw std::runtime_error("No JPEG.");
    }
    seen.hasFineColour = sampling == TJSAMP_444;
    seen.pixels.resize(static_cast<std::size_t>(seen.width * seen.height));
    if (tjDecompress2(decoder.get(), message.data() + kHeader, bytes,
                      reinterpret_cast<unsigned char *>(seen.pixels.data()), seen.width, 0,
                      seen.height, TJPF_BGRX, 0) != 0) {
        throw std::runtime_error("A broken JPEG.");
    }
    return seen;
}

/// Whether no part of the colour is farther off than so much of 255.
inline bool isNear(std::uint32_t colour, std::uint32_t expected, int off)
{
    for (const unsigned shift : {0U, 8U, 16U}) {
        const auto part = [shift](std::uint32_t value) {
            return static_cast<int>(value >> shift & 0xff);
        };
        if (std::abs(part(colour) - part(expected)) > off) {
            return false;
        }
    }
    return true;
}

} // namespace orv::apps::test
