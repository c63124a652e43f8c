#pragma once

#include "common/ScriptReader.h"

namespace orv::apps {

class ReplaySession;

// The commands of this machine's own mouse and keyboard; each as a `ReplayCommand`.
void runMouse(ReplaySession &session, const Json &line);
void runKey(ReplaySession &session, const Json &line);
void runClick(ReplaySession &session, const Json &line);

} // namespace orv::apps
