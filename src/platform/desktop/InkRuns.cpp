#include "platform/desktop/InkRuns.h"

#include <algorithm>
#include <cstddef>

namespace orv::platform {

namespace {

constexpr std::uint32_t kAlphaShift = 24;
constexpr std::uint32_t kOpaque = 0xff000000U;
constexpr std::uint32_t kFull = 255;

bool isInk(std::uint32_t pixel, int visibleFrom)
{
    return static_cast<int>(pixel >> kAlphaShift) >= visibleFrom;
}

/// Calls `visit(first, end)` for each run of [first, end) in which `holds(x)`.
template <class Predicate, class Visitor>
void forEachRun(int first, int end, const Predicate &holds, const Visitor &visit)
{
    for (int x = first; x < end;) {
        if (!holds(x)) {
            ++x;
            continue;
        }
        const int start = x;
        while (x < end && holds(x)) {
            ++x;
        }
        visit(start, x);
    }
}

} // namespace

std::vector<PixelRect> inkRuns(const Image &image, int first, int end, int visibleFrom)
{
    std::vector<PixelRect> runs;
    for (int y = first; y < end; ++y) {
        const std::uint32_t *row = image.row(y);
        forEachRun(
            0, image.width(), [&](int x) { return isInk(row[x], visibleFrom); },
            [&](int from, int to) {
                runs.push_back({from, y, to - from, 1});
            });
    }
    return runs;
}

int countRuns(const Image &image, int y, int visibleFrom)
{
    const std::uint32_t *row = image.row(y);
    int count = 0;
    bool wasInk = false;
    for (int x = 0; x < image.width(); ++x) {
        const bool ink = isInk(row[x], visibleFrom);
        count += ink && !wasInk ? 1 : 0;
        wasInk = ink;
    }
    return count;
}

std::vector<PixelRect> coarseInkRuns(const Image &image, int step, int visibleFrom)
{
    std::vector<PixelRect> runs;
    std::vector<char> ink(static_cast<std::size_t>(image.width()));
    for (int top = 0; top < image.height(); top += step) {
        const int height = std::min(step, image.height() - top);
        std::fill(ink.begin(), ink.end(), char{0});
        for (int y = top; y < top + height; ++y) {
            const std::uint32_t *row = image.row(y);
            for (std::size_t x = 0; x < ink.size(); ++x) {
                ink[x] = static_cast<char>(ink[x] | (isInk(row[x], visibleFrom) ? 1 : 0));
            }
        }
        forEachRun(
            0, image.width(), [&](int x) { return ink[static_cast<std::size_t>(x)] != 0; },
            [&](int from, int to) {
                runs.push_back({from, top, to - from, height});
            });
    }
    return runs;
}

void collectInkChange(const Image &before, const Image &after, const PixelRect &within,
                      int visibleFrom, InkChange &change)
{
    for (int y = within.y; y < within.y + within.height; ++y) {
        const std::uint32_t *old = before.row(y);
        const std::uint32_t *now = after.row(y);
        const auto differs = [&](int x, bool wanted) {
            return isInk(now[x], visibleFrom) == wanted && isInk(old[x], visibleFrom) != wanted;
        };
        const int end = within.x + within.width;
        forEachRun(
            within.x, end, [&](int x) { return differs(x, true); },
            [&](int from, int to) {
                change.added.push_back({from, y, to - from, 1});
            });
        forEachRun(
            within.x, end, [&](int x) { return differs(x, false); },
            [&](int from, int to) {
                change.removed.push_back({from, y, to - from, 1});
            });
    }
}

std::uint32_t opaqueColor(std::uint32_t pixel)
{
    const std::uint32_t alpha = pixel >> kAlphaShift;
    if (alpha == 0 || alpha == kFull) {
        return pixel | kOpaque;
    }
    const auto component = [&](std::uint32_t shift) {
        const std::uint32_t value = (pixel >> shift) & kFull;
        return std::min(kFull, (value * kFull + alpha / 2) / alpha) << shift;
    };
    return kOpaque | component(16) | component(8) | component(0);
}

} // namespace orv::platform
