#pragma once

#include <string>
#include <string_view>

namespace orv::apps {

/// Whether a Host header names this machine as its own network knows it: an address, "localhost",
/// or `machine`, alone or with ".local", and perhaps a port.
///
/// A foreign site that points a name of its own at this machine would otherwise share its origin
/// with the remote page.
[[nodiscard]] bool isHostOfThisMachine(std::string_view host, std::string_view machine);

/// The machine's name as the system has it; empty when it has none.
[[nodiscard]] std::string machineName();

/// Both without regard to large and small letters.
[[nodiscard]] bool isSameName(std::string_view one, std::string_view other);

} // namespace orv::apps
