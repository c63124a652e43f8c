#pragma once

#include "common/ClientRecords.h"

#include <string>
#include <string_view>
#include <vector>

namespace orv::apps {

/// The argument of a script's "type" command as records of the client's keyboard: one for each
/// 16-bit unit of the text, spread evenly over the time. A line feed is the Return key.
///
/// {"text": "...", "seconds": s}. Throws `ScriptError` that names what does not fit.
[[nodiscard]] std::vector<TimedRecord> typedRecords(const Json &argument, std::uint16_t pluginID);

/// `text` is valid UTF-8, as what a script's reader hands out always is.
[[nodiscard]] std::u16string utf16Of(std::string_view text);

} // namespace orv::apps
