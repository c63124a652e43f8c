#pragma once

#include "common/ScriptReader.h"

namespace orv::apps {

class ReplaySession;

/// The command that calls a host operation of the controller; a `ReplayCommand`. After "release"
/// there is nobody to call, and nothing happens.
void runCall(ReplaySession &session, const Json &line);

} // namespace orv::apps
