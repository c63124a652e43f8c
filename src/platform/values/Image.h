#pragma once

#include "platform/values/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
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
    /// The same picture at twice the resolution; null when there is none. The size in points of
    /// both is that of this one.
    [[nodiscard]] const std::shared_ptr<const Image> &finer() const { return finer_; }
    void setFiner(std::shared_ptr<const Image> finer) { finer_ = std::move(finer); }
    /// x from the left, y from the top; the caller keeps both inside.
    [[nodiscard]] std::uint32_t pixel(int x, int y) const { return row(y)[x]; }
    /// In points, one for each pixel.
    [[nodiscard]] Size size() const
    {
        return {static_cast<double>(width_), static_cast<double>(height_)};
    }

    /// By the pixels of this resolution.
    friend bool operator==(const Image &a, const Image &b)
    {
        return a.width_ == b.width_ && a.height_ == b.height_ && a.pixels_ == b.pixels_;
    }

private:
    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
    std::shared_ptr<const Image> finer_;
};

using ImagePtr = std::shared_ptr<const Image>;

} // namespace orv::platform
