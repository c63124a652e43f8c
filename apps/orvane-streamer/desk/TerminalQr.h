#pragma once

#include <string>

namespace orv::apps {

/// A text as QR code in lines of half blocks, with its quiet zone.
///
/// With `colours`, escape sequences make it black on white on any terminal; without, it is right
/// where the writing is darker than the ground. Throws `std::runtime_error` when the text is empty,
/// holds a zero byte, or is longer than a QR code can be.
[[nodiscard]] std::string terminalQr(const std::string &text, bool colours);

} // namespace orv::apps
