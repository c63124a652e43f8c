#pragma once

#include "orv-replay/OutputLines.h"

namespace orv::apps {

class ReplayHost;

/// The whole state of the session and of the windows as one object.
///
/// Numbers of 32 bits are the doubles that equal them; paths below the home folder are relative to
/// it. Without a controller only the windows are left.
[[nodiscard]] OutputJson stateReport(ReplayHost &host);

} // namespace orv::apps
