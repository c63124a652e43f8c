#pragma once

#include "OrvAnnotation/Records.h"

#include <string>

namespace orv::apps {

/// What a record of the library tells its client, in words; of an unknown one its numbers.
[[nodiscard]] std::string recordText(const stCommand_mgs &record);

} // namespace orv::apps
