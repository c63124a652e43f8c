#pragma once

#include <string>

namespace orv {

/// The files beside a saved picture that let it be opened again for editing. Paths are absolute.
struct RawDataFiles {
    explicit RawDataFiles(const std::string &picturePath);

    /// ".RawData" beside the picture.
    std::string folder;
    /// The annotations.
    std::string data;
    /// The picture without them; a snapshot's only.
    std::string background;
};

/// The folder that a file lies in, without a slash at its end.
[[nodiscard]] std::string folderOf(const std::string &path);
/// A file's name without its folder and its extension.
[[nodiscard]] std::string stemOf(const std::string &path);

} // namespace orv
