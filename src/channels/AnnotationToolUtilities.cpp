#include "channels/AnnotationToolUtilities.h"

#include <algorithm>
#include <cctype>

namespace orv {

namespace {

std::string lowerExtension(const std::string &path)
{
    const std::size_t dot = path.find_last_of("./");
    if (dot == std::string::npos || path[dot] != '.') {
        return {};
    }
    std::string extension = path.substr(dot + 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

} // namespace

std::int32_t AnnotationToolUtilities::getImageSaveType(const std::string &path)
{
    constexpr std::int32_t jpeg = 0;
    constexpr std::int32_t png = 1;
    constexpr std::int32_t bmp = 2;
    const std::string extension = lowerExtension(path);
    if (extension == "png") {
        return png;
    }
    return extension == "bmp" ? bmp : jpeg;
}

} // namespace orv
