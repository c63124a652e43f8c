#pragma once

#include "platform/values/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace orv::platform {

/// A picture in memory: premultiplied 0xAARRGGBB pixels, rows from the top down, no padding.
class Image {
public:
    Image(int width, int height)
        : width_(width), height_(height),
          pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    {
    }

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] std::uint32_t *data() { return pixels_.data(); }
    [[nodiscard]] const std::uint32_t *data() const { return pixels_.data(); }
    [[nodiscard]] std::uint32_t *row(int y)
    {
        return pixels_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }
    [[nodiscard]] const std::uint32_t *row(int y) const
    {
        return pixels_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }
    /// x from the left, y from the top; the caller keeps both inside.
    [[nodiscard]] std::uint32_t pixel(int x, int y) const { return row(y)[x]; }
    [[nodiscard]] Size size() const
    {
        return {static_cast<double>(width_), static_cast<double>(height_)};
    }

    friend bool operator==(const Image &, const Image &) = default;

private:
    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
};

using ImagePtr = std::shared_ptr<const Image>;

} // namespace orv::platform
