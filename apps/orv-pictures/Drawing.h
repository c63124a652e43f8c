#pragma once

#include "orv-pictures/Families.h"

#include <QByteArray>
#include <QImage>

#include <string>
#include <vector>

namespace orv::pictures {

/// A file as it is to be written.
struct File {
    std::string name;
    QByteArray bytes;
};

/// A picture that has been drawn.
struct Drawn {
    /// At one pixel a point; the smallest size of an icon.
    QImage image;
    std::vector<File> files;
};

/// Draws all pictures of all families, on two threads. Family by family, in their order.
///
/// Throws `PictureError` that names the first template that does not fit.
[[nodiscard]] std::vector<std::vector<Drawn>> drawAll(const std::vector<Family> &families,
                                                      const TemplateText &templates);

} // namespace orv::pictures
