#include "platform/desktop/WindowShape.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace orv::platform {

namespace {

/// A request above 256 KiB would set an empty shape without an error.
constexpr std::size_t kMaxRects = 16'000;

} // namespace

void WindowShape::send(std::uint8_t first, std::uint8_t rest,
                       const std::vector<PixelRect> &rects) const
{
    std::vector<xcb_rectangle_t> part;
    std::size_t sent = 0;
    do {
        const std::size_t end = std::min(rects.size(), sent + kMaxRects);
        part.clear();
        for (std::size_t i = sent; i < end; ++i) {
            part.push_back({static_cast<std::int16_t>(rects[i].x),
                            static_cast<std::int16_t>(rects[i].y),
                            static_cast<std::uint16_t>(rects[i].width),
                            static_cast<std::uint16_t>(rects[i].height)});
        }
        xcb_shape_rectangles(x_.get(), sent == 0 ? first : rest, XCB_SHAPE_SK_BOUNDING,
                             XCB_CLIP_ORDERING_YX_BANDED, window_, 0, 0,
                             static_cast<std::uint32_t>(part.size()), part.data());
        sent = end;
    } while (sent < rects.size());
}

void WindowShape::set(const std::vector<PixelRect> &rects) const
{
    send(XCB_SHAPE_SO_SET, XCB_SHAPE_SO_UNION, rects);
}

void WindowShape::add(const std::vector<PixelRect> &rects) const
{
    if (!rects.empty()) {
        send(XCB_SHAPE_SO_UNION, XCB_SHAPE_SO_UNION, rects);
    }
}

void WindowShape::remove(const std::vector<PixelRect> &rects) const
{
    if (!rects.empty()) {
        send(XCB_SHAPE_SO_SUBTRACT, XCB_SHAPE_SO_SUBTRACT, rects);
    }
}

void WindowShape::clear() const
{
    xcb_shape_mask(x_.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window_, 0, 0, XCB_NONE);
}

void WindowShape::setTakesInput(bool takes) const
{
    if (takes) {
        xcb_shape_mask(x_.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, window_, 0, 0, XCB_NONE);
    } else {
        xcb_shape_rectangles(x_.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                             XCB_CLIP_ORDERING_UNSORTED, window_, 0, 0, 0, nullptr);
    }
}

} // namespace orv::platform
