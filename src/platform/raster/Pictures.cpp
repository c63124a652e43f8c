#include "platform/raster/Pictures.h"

#include "platform/foundation/AtomicFile.h"
#include "platform/raster/ImageConversion.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>

#include <cstdint>
#include <span>

namespace orv::platform {

namespace {

constexpr std::uint64_t kMaxFileBytes = 512ULL * 1024 * 1024;
constexpr int kMaxSide = 16384;

} // namespace

ImagePtr readPicture(const std::string &path)
{
    const auto bytes = readFile(path, kMaxFileBytes);
    if (!bytes || bytes->empty()) {
        return nullptr;
    }
    QByteArray raw = QByteArray::fromRawData(reinterpret_cast<const char *>(bytes->data()),
                                             static_cast<qsizetype>(bytes->size()));
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

bool writePng(const std::string &path, const Image &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !viewOf(image).save(&buffer, "PNG")) {
        return false;
    }
    return writeFileAtomically(path, std::span(reinterpret_cast<const std::uint8_t *>(bytes.data()),
                                               static_cast<std::size_t>(bytes.size())));
}

} // namespace orv::platform
