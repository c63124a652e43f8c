#include "platform/desktop/VisualFormat.h"

#include <bit>
#include <cstring>

namespace orv::platform {

namespace {

constexpr std::uint32_t kRed = 0x00ff0000U;
constexpr std::uint32_t kGreen = 0x0000ff00U;
constexpr std::uint32_t kBlue = 0x000000ffU;
constexpr std::uint8_t kAlphaDepth = 32;
constexpr int kByteBits = 8;
constexpr std::uint32_t kByteMax = 0xffU;

/// A channel's byte at the bits of `mask`.
std::uint32_t channel(std::uint32_t byte, std::uint32_t mask)
{
    if (mask == 0) {
        return 0;
    }
    const int shift = std::countr_zero(mask);
    const std::uint64_t most = mask >> shift;
    return static_cast<std::uint32_t>((byte * most + kByteMax / 2) / kByteMax) << shift;
}

std::uint32_t encoded(std::uint32_t pixel, const VisualFormat &format)
{
    return channel(pixel >> 16U & kByteMax, format.red) |
           channel(pixel >> 8U & kByteMax, format.green) | channel(pixel & kByteMax, format.blue) |
           channel(pixel >> 24U, format.alpha);
}

void setChannels(VisualFormat &format, std::uint8_t depth, const xcb_visualtype_t &visual)
{
    format.depth = depth;
    format.red = visual.red_mask;
    format.green = visual.green_mask;
    format.blue = visual.blue_mask;
    format.alpha = depth == kAlphaDepth ? ~(format.red | format.green | format.blue) : 0;
}

} // namespace

bool VisualFormat::isThatOfImages() const
{
    return bitsPerPixel == 32 && red == kRed && green == kGreen && blue == kBlue &&
           isLowByteFirst == (std::endian::native == std::endian::little);
}

std::size_t VisualFormat::bytesPerRow(int width) const
{
    const int units = (width * bitsPerPixel + bitsPerRowUnit - 1) / bitsPerRowUnit;
    return static_cast<std::size_t>(units * bitsPerRowUnit / kByteBits);
}

VisualFormat formatOfVisual(const xcb_setup_t *setup, xcb_visualid_t visual)
{
    VisualFormat format;
    format.isLowByteFirst = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    for (auto screen = xcb_setup_roots_iterator(setup); screen.rem > 0; xcb_screen_next(&screen)) {
        for (auto depth = xcb_screen_allowed_depths_iterator(screen.data); depth.rem > 0;
             xcb_depth_next(&depth)) {
            const xcb_visualtype_t *visuals = xcb_depth_visuals(depth.data);
            for (int i = 0; i < xcb_depth_visuals_length(depth.data); ++i) {
                if (visuals[i].visual_id == visual) {
                    setChannels(format, depth.data->depth, visuals[i]);
                }
            }
        }
    }
    const xcb_format_t *formats = xcb_setup_pixmap_formats(setup);
    for (int i = 0; i < xcb_setup_pixmap_formats_length(setup); ++i) {
        if (formats[i].depth == format.depth) {
            format.bitsPerPixel = formats[i].bits_per_pixel;
            format.bitsPerRowUnit = formats[i].scanline_pad;
        }
    }
    return format;
}

void appendRow(std::vector<std::uint8_t> &bytes, const std::uint32_t *pixels, int width,
               const VisualFormat &format)
{
    const std::size_t start = bytes.size();
    bytes.resize(start + format.bytesPerRow(width));
    std::uint8_t *to = bytes.data() + start;
    if (format.isThatOfImages()) {
        std::memcpy(to, pixels, static_cast<std::size_t>(width) * sizeof(std::uint32_t));
        return;
    }
    const int count = format.bitsPerPixel / kByteBits;
    for (int x = 0; x < width; ++x) {
        const std::uint32_t value = encoded(pixels[x], format);
        for (int i = 0; i < count; ++i) {
            const int place = format.isLowByteFirst ? i : count - 1 - i;
            *to++ = static_cast<std::uint8_t>(value >> (place * kByteBits));
        }
    }
}

} // namespace orv::platform
