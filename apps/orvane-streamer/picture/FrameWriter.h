#pragma once

#include "orvane-streamer/picture/ChangedTiles.h"
#include "orvane-streamer/picture/PictureLevels.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace orv::apps {

/// Makes picture messages, as they go to the page.
///
/// Thread   one at a time.
class FrameWriter {
public:
    struct Header {
        std::uint32_t frame = 0;
        /// In pixels of the whole picture.
        PixelBox box;
        int pictureWidth = 0;
        int pictureHeight = 0;
    };

    FrameWriter();

    /// A box of the picture as JPEG. Throws `std::runtime_error` when there is no memory for it.
    std::vector<std::uint8_t> code(const Picture &picture, const PixelBox &box,
                                   const PictureLevel &level);
    static std::vector<std::uint8_t> message(const Header &header,
                                             std::span<const std::uint8_t> coded);

private:
    void shrink(const Picture &picture, const PixelBox &box, int by);

    std::unique_ptr<void, int (*)(void *)> compressor_;
    std::vector<std::uint32_t> shrunk_;
};

} // namespace orv::apps
