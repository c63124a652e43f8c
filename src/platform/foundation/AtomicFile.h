#pragma once

#include "platform/foundation/FileCalls.h"
#include "platform/foundation/UserInfo.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace orv::platform {

/// Writes the whole file or nothing of it: a temporary file in the same folder, flushed to the
/// disk, then renamed over the old one, then the folder flushed.
///
/// Whenever the process or the machine stops, the path names the old bytes or the new ones. The
/// temporary file of a path is always the same hidden one, so that what a killed process left is
/// taken over by the next write; writers of one path wait for each other. An older file's
/// permissions are kept.
///
/// Fails     answers false. The temporary file is then removed and the old file as it was, unless
///           all but the last flush was done: then the new bytes stand there.
bool writeFileAtomically(const std::string &path, std::span<const std::uint8_t> bytes,
                         FileCalls &calls = FileCalls::system());

/// The file's bytes; nothing when it is missing, is no regular file, can't be read, or is larger
/// than `limit` bytes.
[[nodiscard]] std::optional<Data> readFile(const std::string &path, std::uint64_t limit);

} // namespace orv::platform
