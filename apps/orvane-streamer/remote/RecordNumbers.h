#pragma once

#include <cstdint>

namespace orv::apps {

/// Numbers of the records that the server looks into; the others pass through it unread.
namespace record_number {

inline constexpr std::uint32_t switchMode = 0;
inline constexpr std::uint32_t keyboardWanted = 1;
inline constexpr std::uint32_t coverState = 8;
inline constexpr std::uint32_t spotlightState = 9;
inline constexpr std::uint32_t pageState = 16;
inline constexpr std::uint32_t undoCounts = 17;
inline constexpr std::uint32_t recordingState = 21;
/// A number with this bit answers a request.
inline constexpr std::uint32_t answer = 0x8000;
inline constexpr std::uint32_t mouse = 0xEFFD;
inline constexpr std::uint32_t keyboard = 0xEFFE;

} // namespace record_number

/// What a mouse record says the mouse did, in `lparam`.
namespace mouse_event {

inline constexpr std::uint32_t leftPress = 5;
inline constexpr std::uint32_t leftRelease = 6;
inline constexpr std::uint32_t rightPress = 8;
inline constexpr std::uint32_t rightRelease = 9;
/// Events from `first` to `last` carry a point; those after them turn the wheel.
inline constexpr std::uint32_t first = 4;
inline constexpr std::uint32_t last = 10;

} // namespace mouse_event

/// What a keyboard record says happened to the key, in `lparam`.
namespace key_event {

inline constexpr std::uint32_t down = 1;
inline constexpr std::uint32_t up = 2;

} // namespace key_event

} // namespace orv::apps
