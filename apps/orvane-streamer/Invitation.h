#pragma once

#include <string>
#include <vector>

namespace orv::apps {

/// What the streamer prints for whoever wants to pair a browser: the address, a QR code of it, who
/// else can reach it, and how to end. `addresses` has one at least; the first is the one to use.
/// `colours`: the reader is a terminal that knows colours.
[[nodiscard]] std::string invitation(const std::vector<std::string> &addresses, bool isOpenToOthers,
                                     bool colours);

} // namespace orv::apps
