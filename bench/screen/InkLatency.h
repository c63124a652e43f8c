#pragma once

#include "InkPointer.h"
#include "ScreenWatch.h"

#include <chrono>
#include <optional>
#include <random>
#include <vector>

namespace orv::bench {

/// Where strokes may go, in pixels of the screen.
struct InkArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// Draws strokes side by side and watches the screen at the tip of each.
class InkLatency {
public:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    struct Result {
        /// From handing over a motion to the first changed pixel at its point, in order.
        std::vector<Milliseconds> seen;
        /// Motions of which nothing was seen.
        int lost = 0;
    };

    InkLatency(InkPointer &pointer, const InkArea &area);

    /// Throws `std::runtime_error` when the screen changes at the tip though no button is down:
    /// then something else than ink would be measured.
    void requireStillScreen();
    /// The first stroke warms up and does not count. Throws `std::runtime_error` when it draws
    /// nothing.
    [[nodiscard]] Result measure(int strokes);
    /// The part, 0 to 1, of quick motions to and fro that has ink at its point in the end: a
    /// program that merges motions leaves some out. In the band below the strokes of `measure`.
    [[nodiscard]] double partKept(int strokes);

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] std::vector<ScreenPoint> stroke(int number, int bands);
    void drawAndWatch(const std::vector<ScreenPoint> &points, Result &result);
    [[nodiscard]] std::optional<Milliseconds> moveAndWatch(ScreenPoint to,
                                                           Clock::duration patience);
    [[nodiscard]] std::vector<std::uint32_t> look(ScreenPoint at) const;

    InkPointer &pointer_;
    InkArea area_;
    ScreenWatch screen_;
    std::mt19937 random_{20261121};
};

} // namespace orv::bench
