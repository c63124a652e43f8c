#pragma once

#include "platform/views/PictureResource.h"

#include <string>
#include <vector>

namespace orv {

/// Builds the names of families of pictures, and the pictures from names.
class AnnotationMenuUtilities {
public:
    using Names = std::vector<std::string>;

    /// For each descriptor, in order: prefix, descriptor, suffix.
    [[nodiscard]] static Names imageNamesWithPrefix(const std::string &prefix,
                                                    const Names &descriptors,
                                                    const std::string &suffix);
    /// One flat list, the prefixes outside.
    [[nodiscard]] static Names imageNamesWithPrefixArray(const Names &prefixes,
                                                         const Names &descriptors,
                                                         const std::string &suffix);
    /// A picture of the library for each name, in order; it is read when it is first shown.
    [[nodiscard]] static std::vector<platform::PictureResourcePtr>
    imagesWithNames(const Names &names);
};

} // namespace orv
