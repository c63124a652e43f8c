#pragma once

#include "orv-pictures/TemplateText.h"

#include <string>
#include <vector>

namespace orv::pictures {

/// What a picture's files are.
enum class Container {
    /// NAME.png and NAME@2x.png.
    png,
    /// NAME.icns with the sizes of an icon.
    icns,
};

/// One picture to be drawn.
struct Picture {
    std::string name;
    /// As `TemplateText` calls it.
    std::string templateName;
    Values values;
    /// In points; 0 in a container that has sizes of its own.
    int width = 0;
    int height = 0;
};

/// Pictures of one kind, in the order of the lists that their names go through.
struct Family {
    std::string caption;
    Container container = Container::png;
    std::vector<Picture> pictures;
};

/// Reads a description of families.
///
/// "lists" holds entries by list name: an object with an "id" and values for placeholders. "frames"
/// holds by name a "template", a "container" ("png" unless told) and values. A member of "families"
/// has a "caption", the "frame", "values" and a "pattern": `{list}` in it stands for each entry of
/// that list in turn, or of those that "only" keeps by their ids; the last list goes round first.
/// An entry's value comes before the family's, and that before the frame's. The values "width" and
/// "height" are the picture's size in points.
///
/// Throws `PictureError`, which names the file and the family.
[[nodiscard]] std::vector<Family> readFamilies(const std::string &path);

} // namespace orv::pictures
