#include "platform/raster/Pictures.h"

#include "platform/foundation/AtomicFile.h"
#include "platform/raster/IconContainer.h"
#include "platform/raster/ImageConversion.h"
#include "platform/raster/JpegCoding.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

namespace orv::platform {

namespace {

constexpr std::uint64_t kMaxFileBytes = 512ULL * 1024 * 1024;
constexpr int kMaxSide = 16384;

ImagePtr decoded(std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) {
        return nullptr;
    }
    QByteArray raw = QByteArray::fromRawData(reinterpret_cast<const char *>(bytes.data()),
                                             static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&raw);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (size.width() > kMaxSide || size.height() > kMaxSide) {
        return nullptr;
    }
    const QImage picture = reader.read();
    if (picture.isNull() || picture.width() > kMaxSide || picture.height() > kMaxSide) {
        return nullptr;
    }
    return std::make_shared<const Image>(imageOf(picture));
}

QImage overWhite(const Image &image)
{
    QImage picture(image.width(), image.height(), QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter(&picture).drawImage(0, 0, viewOf(image));
    return picture;
}

/// The number that the coder takes; what is no number counts as 0.
int percent(float quality)
{
    return quality > 0.0F ? static_cast<int>(std::lround(std::min(quality, 1.0F) * 100.0F)) : 0;
}

/// Empty when the toolkit can't encode it.
Data encoded(const QImage &picture, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !picture.save(&buffer, format)) {
        return {};
    }
    return {bytes.begin(), bytes.end()};
}

/// Empty when it can't be encoded.
Data encoded(const Image &image, PictureKind kind, float quality)
{
    switch (kind) {
    case PictureKind::jpeg:
        return jpegOf(image, percent(quality));
    case PictureKind::bmp:
        return encoded(overWhite(image), "BMP");
    case PictureKind::png:
        return pngOf(image);
    }
    return {};
}

} // namespace

ImagePtr readPicture(const std::string &path)
{
    const auto bytes = readFile(path, kMaxFileBytes);
    if (!bytes) {
        return nullptr;
    }
    return decoded(isIconContainer(*bytes) ? largestPngMember(*bytes) : std::span(*bytes));
}

Data pngOf(const Image &image)
{
    return encoded(viewOf(image), "PNG");
}

bool writePicture(const std::string &path, const Image &image, PictureKind kind, float quality)
{
    const bool isPath = !path.empty() && path.find('\0') == std::string::npos;
    if (!isPath || image.width() <= 0 || image.height() <= 0) {
        return false;
    }
    const Data bytes = encoded(image, kind, quality);
    const auto size = static_cast<qint64>(bytes.size());
    QFile file(QString::fromStdString(path));
    return !bytes.empty() && file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(reinterpret_cast<const char *>(bytes.data()), size) == size && file.flush();
}

bool writePng(const std::string &path, const Image &image)
{
    const Data bytes = pngOf(image);
    return !bytes.empty() && writeFileAtomically(path, bytes);
}

} // namespace orv::platform
