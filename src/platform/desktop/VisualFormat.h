#pragma once

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv::platform {

/// How the X server keeps the pixels of windows of one visual.
struct VisualFormat {
    std::uint8_t depth = 0;
    int bitsPerPixel = 32;
    /// A row takes a whole multiple of this.
    int bitsPerRowUnit = 32;
    bool isLowByteFirst = true;
    std::uint32_t red = 0x00ff0000U;
    std::uint32_t green = 0x0000ff00U;
    std::uint32_t blue = 0x000000ffU;
    /// 0 where the visual has no alpha.
    std::uint32_t alpha = 0;

    /// Whether pixels lie in the memory of an `Image` as the server keeps them.
    [[nodiscard]] bool isThatOfImages() const;
    [[nodiscard]] std::size_t bytesPerRow(int width) const;
};

[[nodiscard]] VisualFormat formatOfVisual(const xcb_setup_t *setup, xcb_visualid_t visual);

/// Appends a row in the server's way; `pixels` as those of an `Image`.
void appendRow(std::vector<std::uint8_t> &bytes, const std::uint32_t *pixels, int width,
               const VisualFormat &format);

} // namespace orv::platform
