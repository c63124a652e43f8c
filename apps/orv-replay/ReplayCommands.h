#pragma once

#include "common/ScriptReader.h"

#include <string>

namespace orv::apps {

class ReplaySession;

/// Carries out one line, whose keys are checked. Throws as `ReplaySession::run` does.
using ReplayCommand = void (*)(ReplaySession &session, const Json &line);

/// Throws `ScriptError` for a name that is no command.
[[nodiscard]] ReplayCommand replayCommand(const std::string &name);

} // namespace orv::apps
