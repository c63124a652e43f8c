#pragma once

#include "common/ScriptReader.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace orv::apps {

// Checked access to the arguments of a script's line. `name` is how a message calls the argument,
// such as "host.client"; every function throws `ScriptError` for a value that does not fit.

/// Null when the object lacks the key.
[[nodiscard]] const Json *member(const Json &object, std::string_view key);
[[nodiscard]] const Json &required(const Json &object, std::string_view key,
                                   const std::string &name);
/// Throws for a value that is no object, and for a key that is not in the list.
void checkKeys(const Json &object, const std::string &name,
               std::initializer_list<std::string_view> keys);

[[nodiscard]] std::string asText(const Json &value, const std::string &name);
[[nodiscard]] bool asBool(const Json &value, const std::string &name);
[[nodiscard]] double asNumber(const Json &value, const std::string &name);
/// Both bounds are allowed.
[[nodiscard]] std::int64_t asInteger(const Json &value, const std::string &name, std::int64_t least,
                                     std::int64_t most);
/// 32 bits, written as a signed or as an unsigned number.
[[nodiscard]] std::uint32_t asWord(const Json &value, const std::string &name);
/// A list of that many numbers.
[[nodiscard]] std::vector<double> asNumbers(const Json &value, const std::string &name,
                                            std::size_t count);
[[nodiscard]] std::vector<std::string> asTexts(const Json &value, const std::string &name);
/// Pairs of hexadecimal digits, `size` bytes at most, filled up with zeros.
[[nodiscard]] std::vector<std::uint8_t> asBytes(const Json &value, const std::string &name,
                                                std::size_t size);

} // namespace orv::apps
