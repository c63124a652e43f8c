#include "platform/raster/PictureFiles.h"

#include "platform/raster/Pictures.h"
#include "platform/raster/RasterContext.h"

#include <sys/stat.h>

#include <utility>

namespace orv::platform {

namespace {

constexpr int kMaxSide = 16384;

std::string finerPath(const std::string &path)
{
    const std::size_t dot = path.find_last_of("./");
    const bool hasExtension = dot != std::string::npos && path[dot] == '.';
    return hasExtension ? path.substr(0, dot) + "@2x" + path.substr(dot) : path + "@2x";
}

std::size_t bytesOf(const ImagePtr &image)
{
    if (!image) {
        return 0;
    }
    const auto pixels =
        static_cast<std::size_t>(image->width()) * static_cast<std::size_t>(image->height());
    return pixels * sizeof(std::uint32_t) + bytesOf(image->finer());
}

ImagePtr readBoth(const std::string &path, const std::string &finerOne)
{
    ImagePtr image = readPicture(path);
    const ImagePtr finer = image ? readPicture(finerOne) : nullptr;
    if (!finer) {
        return image;
    }
    auto both = std::make_shared<Image>(*image);
    both->setFiner(finer);
    return both;
}

} // namespace

PictureFiles::Stamp PictureFiles::stampOf(const std::string &path)
{
    struct stat status {};
    if (path.find('\0') != std::string::npos || ::stat(path.c_str(), &status) != 0) {
        return {};
    }
    return {status.st_ctim.tv_sec, status.st_ctim.tv_nsec, status.st_size, status.st_ino,
            status.st_dev};
}

void PictureFiles::forget(const std::string &path)
{
    const auto found = byPath_.find(path);
    if (found != byPath_.end()) {
        size_ -= found->second->size;
        entries_.erase(found->second);
        byPath_.erase(found);
    }
}

void PictureFiles::keep(Entry entry)
{
    forget(entry.path);
    // Files that are no pictures count too.
    entry.size = bytesOf(entry.image) + sizeof(Entry) + 2 * entry.path.size();
    size_ += entry.size;
    entries_.push_front(std::move(entry));
    byPath_[entries_.front().path] = entries_.begin();
    while (size_ > kept && entries_.size() > 1) {
        forget(std::string(entries_.back().path));
    }
}

ImagePtr PictureFiles::picture(const std::string &path)
{
    const std::string finer = finerPath(path);
    // Before the file is read: what changes meanwhile makes another stamp.
    const Stamp stamp = stampOf(path);
    const Stamp finerStamp = stampOf(finer);
    {
        const std::scoped_lock lock(mutex_);
        if (stamp == Stamp{}) {
            forget(path);
            return nullptr;
        }
        const auto found = byPath_.find(path);
        if (found != byPath_.end() && found->second->stamp == stamp &&
            found->second->finerStamp == finerStamp) {
            entries_.splice(entries_.begin(), entries_, found->second);
            return found->second->image;
        }
        ++decoded_;
    }
    ImagePtr image = readBoth(path, finer);
    const std::scoped_lock lock(mutex_);
    keep({path, stamp, finerStamp, image});
    return image;
}

std::uint64_t PictureFiles::decoded() const
{
    const std::scoped_lock lock(mutex_);
    return decoded_;
}

ImagePtr PictureFiles::paint(int width, int height,
                             const std::function<void(GraphicsContext &)> &body)
{
    if (width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide) {
        return nullptr;
    }
    auto image = std::make_shared<Image>(width, height);
    RasterContext context(*image, PixelGrid{image->size(), 1.0});
    body(context);
    return image;
}

bool PictureFiles::save(const std::string &path, const Image &image, PictureKind kind,
                        float quality)
{
    return writePicture(path, image, kind, quality);
}

} // namespace orv::platform
