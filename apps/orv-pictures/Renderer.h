#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QSvgRenderer>

#include <string>

namespace orv::pictures {

/// One drawing, read once and painted in any size. What it does not cover is clear.
///
/// Thread   any, one at a time.
class Renderer {
public:
    /// Throws `PictureError` that begins with `name` when `svg` is no whole drawing.
    Renderer(const std::string &svg, const std::string &name);

    [[nodiscard]] QImage image(QSize pixels);

private:
    QSvgRenderer renderer_;
};

[[nodiscard]] QByteArray pngOf(const QImage &image);

} // namespace orv::pictures
