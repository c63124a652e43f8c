#pragma once

#include "platform/raster/RasterContext.h"
#include "platform/values/Image.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orv::platform {

/// A surface in memory that a test paints on and looks at by device pixel.
class Surface {
public:
    Surface(double width, double height, double scale = 1.0)
        : grid_{{width, height}, scale}, image_(grid_.pixelWidth(), grid_.pixelHeight())
    {
    }

    Surface &paint(const std::function<void(GraphicsContext &)> &painting,
                   std::optional<PixelRect> clip = std::nullopt)
    {
        RasterContext context(image_, grid_, clip);
        painting(context);
        return *this;
    }
    Surface &fill(std::uint32_t pixel)
    {
        std::fill_n(image_.data(), image_.width() * image_.height(), pixel);
        return *this;
    }
    [[nodiscard]] std::uint32_t at(int x, int y) const { return image_.pixel(x, y); }
    [[nodiscard]] const Image &image() const { return image_; }
    [[nodiscard]] const PixelGrid &grid() const { return grid_; }

    /// Rows from the top: '#' opaque, '.' transparent, 'o' between the two.
    [[nodiscard]] std::string coverage() const
    {
        std::string text;
        for (int y = 0; y < image_.height(); ++y) {
            for (int x = 0; x < image_.width(); ++x) {
                const std::uint32_t alpha = at(x, y) >> 24U;
                text += alpha == 255 ? '#' : alpha == 0 ? '.' : 'o';
            }
            text += '\n';
        }
        return text;
    }

private:
    PixelGrid grid_;
    Image image_;
};

inline ImagePtr onePixel(std::uint32_t pixel)
{
    auto image = std::make_shared<Image>(1, 1);
    *image->data() = pixel;
    return image;
}

inline Path linePath(Point from, Point to)
{
    Path path;
    path.moveTo(from);
    path.lineTo(to);
    return path;
}

inline const Color kRed{1.0, 0.0, 0.0};
inline const Color kGreen{0.0, 1.0, 0.0};
inline const Color kBlue{0.0, 0.0, 1.0};

} // namespace orv::platform
