#pragma once

#include <cstdint>

namespace orv::apps {

/// The picture that the pages show and draw on.
struct RemoteDisplay {
    /// Pixels.
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    /// How many units of a record's point make a pixel.
    std::uint16_t scale = 1;
};

} // namespace orv::apps
