#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace orv::apps {

/// A message as it goes to a page, first byte included; shared by all that send it.
using RemoteMessage = std::shared_ptr<const std::vector<std::uint8_t>>;

/// The first byte of a binary message to a page.
namespace message_kind {

inline constexpr std::uint8_t records = 1;
inline constexpr std::uint8_t package = 2;

} // namespace message_kind

} // namespace orv::apps
