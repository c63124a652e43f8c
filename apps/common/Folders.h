#pragma once

#include <string>

namespace orv::apps {

/// An absolute path without "." and ".." in it and without a slash at its end.
[[nodiscard]] std::string plainPath(const std::string &path);
/// Where `path`, relative to `folder`, leads; empty when that is not below the folder. An absolute
/// path has to lie below the folder as well. `folder` is a plain path.
[[nodiscard]] std::string pathBelow(const std::string &folder, const std::string &path);
/// Where layouts, pictures and lessons lie: beside the installed program, else in the build tree.
[[nodiscard]] std::string resourceFolder();
/// Where programs keep what outlives them and is nobody's document: XDG_STATE_HOME, or its usual
/// place. Throws `std::runtime_error` when there is no home either.
[[nodiscard]] std::string stateFolder();

} // namespace orv::apps
