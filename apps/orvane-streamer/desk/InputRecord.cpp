#include "orvane-streamer/desk/InputRecord.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <utility>

namespace orv::apps {

namespace {

constexpr std::uint32_t kMouse = 0xEFFD;
constexpr std::uint32_t kKeyboard = 0xEFFE;

constexpr std::uint32_t kKeyDown = 1;
constexpr std::uint32_t kKeyUp = 2;
constexpr std::uint32_t kTyped = 64;

struct MouseEvent {
    std::uint32_t number;
    MouseInput::Act act;
    std::uint8_t button;
};
constexpr std::array<MouseEvent, 7> kMouseEvents{{{5, MouseInput::Act::press, 1},
                                                  {6, MouseInput::Act::release, 1},
                                                  {8, MouseInput::Act::press, 3},
                                                  {9, MouseInput::Act::release, 3},
                                                  {10, MouseInput::Act::move, 0},
                                                  {11, MouseInput::Act::click, 4},
                                                  {12, MouseInput::Act::click, 5}}};

constexpr unsigned kHalfWord = 16;
constexpr std::uint32_t kLowHalf = 0xFFFF;

constexpr char32_t kFirstPaired = 0x10000;
constexpr unsigned kBitsOfAHalf = 10;
constexpr char16_t kFirstHalves = 0xD800;
constexpr char16_t kSecondHalves = 0xDC00;
constexpr char16_t kAfterHalves = 0xE000;

std::uint32_t bigEndian32(const stCommand_mgs &record, std::size_t offset)
{
    constexpr unsigned bitsOfAByte = 8;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < sizeof value; ++i) {
        value = value << bitsOfAByte | record.ext.at(offset + i);
    }
    return value;
}

std::optional<InputAction> mouseAction(const stCommand_mgs &record)
{
    const auto *event =
        std::find_if(kMouseEvents.begin(), kMouseEvents.end(),
                     [&record](const MouseEvent &known) { return known.number == record.lparam; });
    if (event == kMouseEvents.end()) {
        return std::nullopt;
    }
    const std::uint32_t first = bigEndian32(record, 0);
    const std::uint32_t second = bigEndian32(record, 4);
    if (first == 0) {
        return MouseInput{event->act, event->button, second & kLowHalf, second >> kHalfWord};
    }
    return MouseInput{event->act, event->button, first, second};
}

std::optional<InputAction> keyAction(const stCommand_mgs &record)
{
    if (record.lparam == kKeyDown || record.lparam == kKeyUp) {
        return KeyInput{bigEndian32(record, 0), record.lparam == kKeyDown};
    }
    const std::uint32_t unit = bigEndian32(record, 4);
    if (record.lparam == kTyped && unit <= std::numeric_limits<char16_t>::max()) {
        return TypedUnit{static_cast<char16_t>(unit)};
    }
    return std::nullopt;
}

int nearestPixel(int start, std::uint32_t value, int scale, int size)
{
    const std::int64_t pixel = std::int64_t{start} + std::int64_t{value} / std::max(scale, 1);
    return static_cast<int>(std::clamp<std::int64_t>(pixel, 0, std::max(size - 1, 0)));
}

} // namespace

std::optional<InputAction> inputAction(const stCommand_mgs &record)
{
    switch (record.wparam) {
    case kMouse:
        return mouseAction(record);
    case kKeyboard:
        return keyAction(record);
    default:
        return std::nullopt;
    }
}

ScreenPoint screenPoint(const MouseInput &input, const DesktopInput::Place &place,
                        const ScreenSize &screen)
{
    return {nearestPixel(place.x, input.x, place.scale, screen.width),
            nearestPixel(place.y, input.y, place.scale, screen.height)};
}

std::optional<char32_t> CharacterJoiner::add(char16_t unit)
{
    const char16_t before = std::exchange(firstHalf_, u'\0');
    if (unit < kFirstHalves || unit >= kAfterHalves) {
        return unit;
    }
    if (unit < kSecondHalves) {
        firstHalf_ = unit;
        return std::nullopt;
    }
    if (before == 0) {
        return std::nullopt;
    }
    const char32_t high = static_cast<char32_t>(before - kFirstHalves) << kBitsOfAHalf;
    return kFirstPaired + high + static_cast<char32_t>(unit - kSecondHalves);
}

} // namespace orv::apps
