#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/values/Color.h"
#include "platform/values/Geometry.h"
#include "platform/values/Image.h"

#include <functional>
#include <string>

namespace orv {

/// Makes the picture of a page's background and writes it as a JPEG; made for one drawing.
///
/// Units    points of the page, one to a pixel of the picture.
/// Thread   the main thread.
/// Fails    every operation answers true. A size that is below one pixel, above 16384 or no number
///          makes no picture, and without one nothing is written.
class DefaultBackgroundUtilities {
public:
    /// The picture's size is cut to whole pixels; what is drawn is measured by `size` itself.
    explicit DefaultBackgroundUtilities(platform::Size size);

    /// Null until something is drawn.
    [[nodiscard]] const platform::ImagePtr &image() const { return image_; }

    /// One colour all over, its alpha too.
    bool addTileColor(const platform::Color &color);
    /// As `addTileColor`, with copies of a picture from the bottom left corner.
    bool addTilePattern(const platform::ImagePtr &pattern);
    bool addVenn2();
    bool addVenn3();
    bool addQuardrant();
    bool addKWL();

    /// Over the file in place; `quality` from 0.0 to 1.0. True even if it can't be written.
    bool saveToFile(const std::string &path, float quality) const;

private:
    bool paint(const std::function<void(platform::GraphicsContext &)> &body);

    platform::Size size_;
    platform::ImagePtr image_;
};

} // namespace orv
