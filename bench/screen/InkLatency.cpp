#include "InkLatency.h"

#include <algorithm>
#include <stdexcept>

namespace orv::bench {

namespace {

using namespace std::chrono_literals;

constexpr int kBox = 3;
constexpr int kMotionsOfAStroke = 50;
// Far enough from each other that the ink of one does not reach the next but one.
constexpr int kZigzagStep = 8;
constexpr auto kZigzagGap = 1000000us / 240;
constexpr auto kShortestGap = 4000us;
constexpr auto kLongestGap = 24000us;
constexpr auto kPatience = 1s;
constexpr auto kStillPatience = 30ms;
constexpr auto kRest = 100ms;
// So often the pointer has its turn while nothing is painted.
constexpr auto kPause = 2ms;

// One more to warm up, and one for `partKept`.
int bandsFor(int strokes)
{
    return strokes + 2;
}

} // namespace

InkLatency::InkLatency(InkPointer &pointer, const InkArea &area) : pointer_(pointer), area_(area) {}

// A stroke has a band of its own and only goes right, so that no tip comes upon older ink.
std::vector<ScreenPoint> InkLatency::stroke(int number, int bands)
{
    const int band = area_.height / bands;
    const int step = area_.width / (kMotionsOfAStroke + 1);
    std::uniform_int_distribution<int> sway(-band / 4, band / 4);
    std::vector<ScreenPoint> points;
    for (int i = 0; i <= kMotionsOfAStroke; ++i) {
        points.push_back(
            {area_.x + step / 2 + i * step, area_.y + number * band + band / 2 + sway(random_)});
    }
    return points;
}

std::vector<std::uint32_t> InkLatency::look(ScreenPoint at) const
{
    return screen_.at(at.x - kBox / 2, at.y - kBox / 2, kBox);
}

std::optional<InkLatency::Milliseconds> InkLatency::moveAndWatch(ScreenPoint to,
                                                                 Clock::duration patience)
{
    screen_.waitForPaint(0ms);
    const auto before = look(to);
    const auto sent = Clock::now();
    pointer_.move(to);
    while (Clock::now() < sent + patience) {
        screen_.waitForPaint(kPause);
        if (look(to) != before) {
            return Clock::now() - sent;
        }
        pointer_.idle();
    }
    return std::nullopt;
}

void InkLatency::requireStillScreen()
{
    for (const ScreenPoint &point : stroke(0, 1)) {
        if (moveAndWatch(point, kStillPatience)) {
            throw std::runtime_error(
                "the screen changes under the pointer, though nothing is drawn");
        }
    }
}

void InkLatency::drawAndWatch(const std::vector<ScreenPoint> &points, Result &result)
{
    std::uniform_int_distribution<std::chrono::microseconds::rep> gap(kShortestGap.count(),
                                                                      kLongestGap.count());
    pointer_.press(points.front());
    auto next = Clock::now() + kLongestGap;
    for (auto point = points.begin() + 1; point != points.end(); ++point) {
        pointer_.waitUntil(next);
        next = Clock::now() + std::chrono::microseconds(gap(random_));
        if (const auto seen = moveAndWatch(*point, kPatience)) {
            result.seen.push_back(*seen);
        } else {
            ++result.lost;
        }
    }
    pointer_.waitUntil(next);
    pointer_.release(points.back());
    pointer_.waitUntil(Clock::now() + kRest);
}

InkLatency::Result InkLatency::measure(int strokes)
{
    Result warmUp;
    drawAndWatch(stroke(0, bandsFor(strokes)), warmUp);
    if (warmUp.seen.empty()) {
        throw std::runtime_error("nothing is drawn where the pointer moves with its button down");
    }
    Result result;
    for (int number = 1; number <= strokes; ++number) {
        drawAndWatch(stroke(number, bandsFor(strokes)), result);
    }
    return result;
}

double InkLatency::partKept(int strokes)
{
    const int band = area_.height / bandsFor(strokes);
    std::vector<ScreenPoint> points;
    std::vector<std::vector<std::uint32_t>> before;
    for (int x = area_.x; x < area_.x + area_.width; x += kZigzagStep) {
        const int side = points.size() % 2 == 0 ? 1 : 4;
        points.push_back({x, area_.y + (strokes + 1) * band + side * band / 5});
        before.push_back(look(points.back()));
    }
    pointer_.press(points.front());
    auto next = Clock::now() + kRest;
    for (const ScreenPoint &point : points) {
        pointer_.waitUntil(next);
        next += kZigzagGap;
        pointer_.move(point);
    }
    pointer_.waitUntil(next + kRest);
    pointer_.release(points.back());
    pointer_.waitUntil(Clock::now() + kRest);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        kept += look(points[i]) != before[i] ? 1 : 0;
    }
    return static_cast<double>(kept) / static_cast<double>(points.size());
}

} // namespace orv::bench
