#pragma once

#include "OrvAnnotation/Records.h"
#include "orvane-streamer/desk/DesktopInput.h"

#include <cstdint>
#include <optional>
#include <variant>

namespace orv::apps {

/// The pointer at a point, and what a button does there.
struct MouseInput {
    enum class Act { move, press, release, click };
    Act act = Act::move;
    /// As X counts buttons: 1 left, 3 right, 4 and 5 the wheel up and down; 0 for a move.
    std::uint8_t button = 0;
    /// In units of the record.
    std::uint32_t x = 0;
    std::uint32_t y = 0;

    bool operator==(const MouseInput &) const = default;
};

struct KeyInput {
    /// A Windows virtual key code.
    std::uint32_t key = 0;
    bool isDown = false;

    bool operator==(const KeyInput &) const = default;
};

/// One UTF-16 unit of a text.
struct TypedUnit {
    char16_t unit = 0;

    bool operator==(const TypedUnit &) const = default;
};

using InputAction = std::variant<MouseInput, KeyInput, TypedUnit>;

/// What a record asks of mouse or keyboard; nothing when it asks nothing of them.
[[nodiscard]] std::optional<InputAction> inputAction(const stCommand_mgs &record);

struct ScreenPoint {
    int x = 0;
    int y = 0;

    bool operator==(const ScreenPoint &) const = default;
};

struct ScreenSize {
    int width = 0;
    int height = 0;
};

/// The pixel that a point of a record means, or the nearest one on the screen.
[[nodiscard]] ScreenPoint screenPoint(const MouseInput &input, const DesktopInput::Place &place,
                                      const ScreenSize &screen);

/// Makes characters of UTF-16 units that come one by one.
class CharacterJoiner {
public:
    /// The character that ends with this unit. Nothing for the first half of a pair, and for a
    /// second half without a first; a first half without a second is dropped.
    std::optional<char32_t> add(char16_t unit);

private:
    char16_t firstHalf_ = 0;
};

} // namespace orv::apps
