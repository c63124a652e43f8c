#pragma once

#include "common/ScriptReader.h"

#include <string>

namespace orv::apps {

/// Which command a script's line gives: the one of its keys that names one.
///
/// Throws `ScriptError` when there is none or more than one, and for a key that is neither the
/// command nor one of its arguments.
[[nodiscard]] std::string commandOf(const Json &line);

} // namespace orv::apps
