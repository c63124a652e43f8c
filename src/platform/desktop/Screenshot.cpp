#include "platform/desktop/Screenshot.h"

#include "platform/desktop/PixelReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace orv::platform {

namespace {

constexpr std::uint32_t kOpaque = 0xff000000U;

} // namespace

std::optional<Image> readScreen(const XConnection &x, const QRect &area)
{
    std::optional<Image> image = readPixels(x, x.root(), area);
    if (image) {
        const std::size_t count =
            static_cast<std::size_t>(image->width()) * static_cast<std::size_t>(image->height());
        std::for_each_n(image->data(), count, [](std::uint32_t &pixel) { pixel |= kOpaque; });
    }
    return image;
}

} // namespace orv::platform
