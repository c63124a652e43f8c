#pragma once

#include "OrvAnnotation/Records.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

/// A client's records as every case of this benchmark sends them.
namespace orv::bench::ink_records {

inline constexpr std::uint16_t plugin = 17;
inline constexpr std::uint32_t switchMode = 0;
inline constexpr std::uint32_t undoCounts = 17;
inline constexpr std::uint8_t penSize = 5;
inline constexpr std::uint32_t press = 5;
inline constexpr std::uint32_t release = 6;
inline constexpr std::uint32_t move = 10;

inline stCommand_mgs record(std::uint32_t wparam, std::uint32_t lparam)
{
    stCommand_mgs made;
    made.pluginID = plugin;
    made.wparam = wparam;
    made.lparam = lparam;
    return made;
}

inline stCommand_mgs open()
{
    stCommand_mgs made = record(switchMode, 0);
    made.ext[0] = 1;
    return made;
}

inline stCommand_mgs pen(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    stCommand_mgs made = record(1, 8);
    made.ext = {0, 0, 0, 0, penSize, 0, 0xFF, red, green, blue};
    return made;
}

/// The point in units of the client's screen, x above 0.
inline stCommand_mgs mouse(std::uint32_t event, std::uint32_t x, std::uint32_t y)
{
    stCommand_mgs made = record(0xEFFD, event);
    for (unsigned i = 0; i < 4; ++i) {
        made.ext.at(i) = static_cast<std::uint8_t>(x >> (24 - 8 * i));
        made.ext.at(4 + i) = static_cast<std::uint8_t>(y >> (24 - 8 * i));
    }
    return made;
}

/// What a stroke's end tells of its document: how many strokes can be undone.
inline unsigned undoCount(const stCommand_mgs &counts)
{
    return counts.ext[0] | static_cast<unsigned>(counts.ext[1]) << 8U;
}

/// One of many winding strokes of 200 points, anywhere on a screen of `width` x `height` pixels;
/// the same for the same `number`. `scale` is the client's units a pixel.
inline std::vector<stCommand_mgs> settledStroke(unsigned number, int width, int height,
                                                unsigned scale)
{
    constexpr int kPoints = 200;
    constexpr double kStep = 3.0;
    constexpr double kBend = 0.4;
    std::mt19937 random(number);
    const auto between = [&random](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    double x = between(1.0, width - 1.0);
    double y = between(1.0, height - 1.0);
    double way = between(0.0, 2.0 * std::numbers::pi);
    std::vector<stCommand_mgs> stroke;
    for (int point = 0; point < kPoints; ++point) {
        stroke.push_back(mouse(point == 0 ? press : move, static_cast<std::uint32_t>(x * scale),
                               static_cast<std::uint32_t>(y * scale)));
        way += between(-kBend, kBend);
        x = std::clamp(x + kStep * std::cos(way), 1.0, width - 1.0);
        y = std::clamp(y + kStep * std::sin(way), 1.0, height - 1.0);
    }
    stroke.push_back(stroke.back());
    stroke.back().lparam = release;
    return stroke;
}

} // namespace orv::bench::ink_records
