#pragma once

#include "OrvAnnotation/Records.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <vector>

namespace orv::apps {

/// Knows which buttons and keys the pen holder's records hold down, to lift them when it is gone.
class HeldInput {
public:
    /// More keys at once than a keyboard has are not kept.
    static constexpr std::size_t mostKeys = 256;

    void follow(std::span<const stCommand_mgs> records);
    /// The records that lift all that is down, buttons at the last point of their plug-in; nothing
    /// is down after that.
    [[nodiscard]] std::vector<stCommand_mgs> lift();

private:
    struct Held {
        bool left = false;
        bool right = false;
        /// The point as it came, both words.
        std::array<std::uint8_t, 8> point{};
        /// Codes as they came.
        std::set<std::array<std::uint8_t, 4>> keys;
    };

    static void followMouse(Held &held, const stCommand_mgs &record);
    static void followKey(Held &held, const stCommand_mgs &record);

    /// By plug-in.
    std::map<std::uint16_t, Held> held_;
};

} // namespace orv::apps
