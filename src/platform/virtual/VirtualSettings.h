#pragma once

#include "platform/ports/Displays.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::platform {

/// An application as a virtual desk knows it.
struct VirtualApplication {
    /// 0 means that there is none.
    std::int32_t pid = 0;
    std::string bundle;

    friend bool operator==(const VirtualApplication &, const VirtualApplication &) = default;
};

/// "2026-01-02 03:04:05" in local time; nothing when the text is no such moment.
[[nodiscard]] std::optional<std::chrono::system_clock::time_point>
wallClockFromText(std::string_view text);

/// The desk that a virtual platform begins with.
struct VirtualSettings {
    /// Absolute; the user's folders are real folders below it and are made when they are missing.
    std::string home;
    /// Absolute; where layouts, pictures and lessons lie.
    std::string resources;
    /// The first one is the main display.
    std::vector<Screen> displays{Screen{1, Rect::make(0.0, 0.0, 1440.0, 900.0), 1.0}};
    /// What the wall clock shows at virtual time 0.
    std::chrono::system_clock::time_point wallClock =
        wallClockFromText("2026-01-02 03:04:05").value();
    std::string bundleIdentifier = "com.orvane.Orvane-Streamer";
    VirtualApplication front;
    /// Bundle identifiers of the running applications, besides the one in front.
    std::vector<std::string> running;
    bool accessibility = false;
    std::uint64_t freeBytes = 1'000'000'000'000;
    /// "#RRGGBB" or the path of a picture: what the displays show beneath all windows.
    std::string desktop = "#3366AA";
};

/// Who is told what the library does to its surroundings. Empty ones are skipped.
///
/// Thread   the thread that did it. Set them before the controller is made.
struct VirtualHooks {
    /// A line for the system log; without a receiver it goes to standard error.
    std::function<void(const std::string &line)> systemLog;
    /// A program that was started, with its arguments after it.
    std::function<void(const std::vector<std::string> &command)> process;
    std::function<void(const std::string &text)> script;
    /// A known application was given the front.
    std::function<void(std::int32_t pid)> activate;
    std::function<void(std::uint32_t options)> presentation;
};

} // namespace orv::platform
