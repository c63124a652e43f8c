#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orv::apps {

/// What a browser is to open, such as "http://192.168.1.5:8720/?code=…", for a server that listens
/// on `address`: one for each network of this machine when that stands for all of them, with those
/// that other machines reach first. Empty when `address` is none.
[[nodiscard]] std::vector<std::string>
browserAddresses(const std::string &address, std::uint16_t port, const std::string &pairingCode);

/// Other machines can reach a server that listens there.
[[nodiscard]] bool isOpenToOthers(const std::string &address);

} // namespace orv::apps
