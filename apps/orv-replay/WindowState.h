#pragma once

#include "orv-replay/OutputLines.h"
#include "platform/virtual/VirtualWindowServer.h"

namespace orv::apps {

/// The shown windows from the frontmost to the rearmost, then the others, each with its views.
[[nodiscard]] OutputJson windowsState(const platform::VirtualWindowServer &windows);

} // namespace orv::apps
