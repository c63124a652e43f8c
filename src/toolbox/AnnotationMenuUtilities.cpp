#include "toolbox/AnnotationMenuUtilities.h"

#include <utility>

namespace orv {

AnnotationMenuUtilities::Names
AnnotationMenuUtilities::imageNamesWithPrefix(const std::string &prefix, const Names &descriptors,
                                              const std::string &suffix)
{
    Names names;
    for (const std::string &descriptor : descriptors) {
        std::string name = prefix;
        name += descriptor;
        name += suffix;
        names.push_back(std::move(name));
    }
    return names;
}

AnnotationMenuUtilities::Names
AnnotationMenuUtilities::imageNamesWithPrefixArray(const Names &prefixes, const Names &descriptors,
                                                   const std::string &suffix)
{
    Names names;
    for (const std::string &prefix : prefixes) {
        for (std::string &name : imageNamesWithPrefix(prefix, descriptors, suffix)) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

std::vector<platform::PictureResourcePtr>
AnnotationMenuUtilities::imagesWithNames(const Names &names)
{
    std::vector<platform::PictureResourcePtr> images;
    for (const std::string &name : names) {
        images.push_back(std::make_shared<platform::PictureResource>(name));
    }
    return images;
}

} // namespace orv
