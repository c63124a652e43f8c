#include "platform/desktop/PixelDifference.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <utility>

namespace orv::platform {

namespace {

/// Rows that are the same between two that differ are put again, up to this many: one request to
/// the X server costs more than they do.
constexpr int kBridgedRows = 16;

struct Span {
    int first;
    int end;
};

std::optional<Span> changedSpan(const PixelRows &before, const PixelRows &after,
                                const PixelRect &within, int y)
{
    const std::uint32_t *a = before.row(y) + within.x;
    const std::uint32_t *b = after.row(y) + within.x;
    const auto width = static_cast<std::size_t>(within.width);
    if (std::memcmp(a, b, width * sizeof(std::uint32_t)) == 0) {
        return std::nullopt;
    }
    int first = 0;
    while (a[first] == b[first]) {
        ++first;
    }
    int end = within.width;
    while (a[end - 1] == b[end - 1]) {
        --end;
    }
    return Span{within.x + first, within.x + end};
}

void join(std::vector<PixelRect> &rects, const Span &span, int y)
{
    if (rects.empty() || y - (rects.back().y + rects.back().height) > kBridgedRows) {
        rects.push_back({span.first, y, span.end - span.first, 1});
        return;
    }
    PixelRect &last = rects.back();
    const int end = std::max(last.x + last.width, span.end);
    last.x = std::min(last.x, span.first);
    last.width = end - last.x;
    last.height = y + 1 - last.y;
}

} // namespace

std::vector<PixelRect> changedRects(const PixelRows &before, const PixelRows &after,
                                    const PixelRect &within)
{
    std::vector<PixelRect> rects;
    for (int y = within.y; y < within.y + within.height; ++y) {
        if (const auto span = changedSpan(before, after, within, y)) {
            join(rects, *span, y);
        }
    }
    return rects;
}

std::vector<PixelRect> copyChanges(const PixelRows &from, std::uint32_t *to,
                                   const PixelRect &within)
{
    const PixelRows before{to, from.width};
    std::vector<PixelRect> rects;
    for (int y = within.y; y < within.y + within.height; ++y) {
        if (const auto span = changedSpan(before, from, within, y)) {
            const auto row = before.row(y) - to + span->first;
            std::copy_n(from.data + row, span->end - span->first, to + row);
            join(rects, *span, y);
        }
    }
    return rects;
}

void copyPixels(const Image &from, Image &to, const PixelRect &rect)
{
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
        std::copy_n(from.row(y) + rect.x, rect.width, to.row(y) + rect.x);
    }
}

} // namespace orv::platform
