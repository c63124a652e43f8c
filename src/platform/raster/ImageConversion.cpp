#include "platform/raster/ImageConversion.h"

#include <algorithm>

namespace orv::platform {

QImage viewOf(const Image &image)
{
    if (image.width() <= 0 || image.height() <= 0) {
        return {};
    }
    return {reinterpret_cast<const uchar *>(image.data()), image.width(), image.height(),
            static_cast<qsizetype>(image.width()) * 4, QImage::Format_ARGB32_Premultiplied};
}

QImage qImageOf(const Image &image)
{
    return viewOf(image).copy();
}

Image imageOf(const QImage &picture)
{
    const QImage source = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    Image image(source.width(), source.height());
    for (int y = 0; y < image.height(); ++y) {
        const auto *row = reinterpret_cast<const std::uint32_t *>(source.constScanLine(y));
        std::copy_n(row, image.width(), image.row(y));
    }
    return image;
}

} // namespace orv::platform
