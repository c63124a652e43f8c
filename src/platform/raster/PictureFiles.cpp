#include "platform/raster/PictureFiles.h"

#include "platform/raster/Pictures.h"

#include <sys/stat.h>

namespace orv::platform {

namespace {

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

ImagePtr withFiner(const ImagePtr &image, const ImagePtr &finer)
{
    if (!image || !finer) {
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
    return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_size, status.st_ino};
}

void PictureFiles::forget(std::list<Entry>::iterator entry)
{
    size_ -= entry->size;
    byPath_.erase(entry->path);
    entries_.erase(entry);
}

ImagePtr PictureFiles::picture(const std::string &path)
{
    const std::scoped_lock lock(mutex_);
    const std::string finer = finerPath(path);
    const Stamp stamp = stampOf(path);
    const Stamp finerStamp = stampOf(finer);
    if (const auto found = byPath_.find(path); found != byPath_.end()) {
        const auto entry = found->second;
        if (entry->stamp == stamp && entry->finerStamp == finerStamp) {
            entries_.splice(entries_.begin(), entries_, entry);
            return entry->image;
        }
        forget(entry);
    }
    if (stamp == Stamp{}) {
        return nullptr;
    }
    ++decoded_;
    const ImagePtr image = withFiner(readPicture(path), readPicture(finer));
    entries_.push_front({path, stamp, finerStamp, image, bytesOf(image)});
    byPath_[path] = entries_.begin();
    size_ += entries_.front().size;
    while (size_ > kept && entries_.size() > 1) {
        forget(std::prev(entries_.end()));
    }
    return image;
}

std::uint64_t PictureFiles::decoded() const
{
    const std::scoped_lock lock(mutex_);
    return decoded_;
}

} // namespace orv::platform
