#pragma once

#include <span>
#include <string>

namespace orv::pictures {

/// What the program was called with.
struct Options {
    /// The folder of the templates and of families.json.
    std::string templates;
    std::string out;
    bool help = false;
};

/// Without the program's own name. Throws `PictureError`.
[[nodiscard]] Options readOptions(std::span<char *const> arguments);

[[nodiscard]] const char *helpText();

} // namespace orv::pictures
