#pragma once

#include "platform/values/Geometry.h"

#include <string>

namespace orv::apps {

class ReplayHost;

/// Where a click on the view goes, in global points: the middle of the one visible view whose
/// outlet has this name. "NAME@CLASS" says of which controller, window or view it is a part.
///
/// Throws `ScriptError` when there is no such view, or more than one.
[[nodiscard]] platform::Point middleOfView(ReplayHost &host, const std::string &name);

} // namespace orv::apps
