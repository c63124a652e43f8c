#pragma once

#include <string>
#include <string_view>

namespace orv::apps {

/// What a person shows a browser once, so that the server lets it in: 80 random bits as 16 digits
/// and letters, without those that look like others.

/// Throws `std::runtime_error` when the system gives no random numbers.
[[nodiscard]] std::string makePairingCode();
/// In groups of four with hyphens, as people read it out.
[[nodiscard]] std::string shownPairingCode(std::string_view code);
/// As it was made, from how somebody typed it: small letters, hyphens and blanks, O for 0, I and L
/// for 1. What is no such code stays wrong.
[[nodiscard]] std::string normalisedPairingCode(std::string_view typed);

} // namespace orv::apps
