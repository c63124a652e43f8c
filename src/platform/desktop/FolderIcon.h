#pragma once

#include "platform/values/Image.h"

#include <string>
#include <vector>

namespace orv::platform {

/// Gives a folder an icon by what file managers look for: a hidden picture in it with the folder's
/// settings file beside it, and the note that others keep about a file.
///
/// Files that are already as they would be written are left as they are, and so are settings that
/// somebody else wrote: they are the user's. Through a link it acts on the folder itself.
///
/// Thread   any.
/// Fails    false when there is no such folder, the picture has no pixels, or a file can't be
///          written.
bool writeFolderIcon(const std::string &folder, const Image &icon);

/// A program with its arguments, the program first.
using CommandLine = std::vector<std::string>;

/// What notes down the picture for a folder where there are a program for that and a session that
/// it can reach; else empty. Absolute paths.
[[nodiscard]] CommandLine folderIconNote(const std::string &folder, const std::string &picture);

} // namespace orv::platform
