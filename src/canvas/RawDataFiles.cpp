#include "canvas/RawDataFiles.h"

#include "platform/ports/Files.h"

namespace orv {

std::string folderOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string stemOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

RawDataFiles::RawDataFiles(const std::string &picturePath)
    : folder(platform::joinPath(folderOf(picturePath), ".RawData")),
      data(platform::joinPath(folder, stemOf(picturePath) + ".data")),
      background(platform::joinPath(folder, stemOf(picturePath) + ".RawBG"))
{
}

} // namespace orv
