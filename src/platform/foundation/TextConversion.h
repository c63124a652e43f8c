#pragma once

#include <string>
#include <string_view>

namespace orv::platform {

/// UTF-8 to 16-bit units. A malformed byte becomes U+FFFD.
[[nodiscard]] std::u16string utf16FromUtf8(std::string_view text);

/// 16-bit units to UTF-8. A surrogate without its partner becomes U+FFFD.
[[nodiscard]] std::string utf8FromUtf16(std::u16string_view text);

} // namespace orv::platform
