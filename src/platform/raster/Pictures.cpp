#include "platform/raster/Pictures.h"

#include "platform/foundation/AtomicFile.h"
#include "platform/raster/IconContainer.h"
#include "platform/raster/ImageConversion.h"

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

/// The number that the toolkit takes; what is no number counts as 0.
int percent(float quality)
{
    return quality > 0.0F ? static_cast<int>(std::lround(std::min(quality, 1.0F) * 100.0F)) : 0;
}

/// Empty when it can't be encoded.
QByteArray encoded(const Image &image, PictureKind kind, float quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    bool done = false;
    if (!buffer.open(QIODevice::WriteOnly)) {
        return {};
    }
    switch (kind) {
    case PictureKind::jpeg:
        done = overWhite(image).save(&buffer, "JPEG", percent(quality));
        break;
    case PictureKind::bmp:
        done = overWhite(image).save(&buffer, "BMP");
        break;
    case PictureKind::png:
        done = viewOf(image).save(&buffer, "PNG");
        break;
    }
    return done ? bytes : QByteArray();
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
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !viewOf(image).save(&buffer, "PNG")) {
        return {};
    }
    return {bytes.begin(), bytes.end()};
}

bool writePicture(const std::string &path, const Image &image, PictureKind kind, float quality)
{
    const bool isPath = !path.empty() && path.find('\0') == std::string::npos;
    if (!isPath || image.width() <= 0 || image.height() <= 0) {
        return false;
    }
    const QByteArray bytes = encoded(image, kind, quality);
    QFile file(QString::fromStdString(path));
    return !bytes.isEmpty() && file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size() && file.flush();
}

bool writePng(const std::string &path, const Image &image)
{
    const Data bytes = pngOf(image);
    return !bytes.empty() && writeFileAtomically(path, bytes);
}

} // namespace orv::platform
