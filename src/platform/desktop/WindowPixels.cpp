#include "platform/desktop/WindowPixels.h"

#include <algorithm>

namespace orv::platform {

namespace {

/// Of one request's pixels. The protocol allows every server this much, beside the fixed part.
constexpr std::size_t kMostBytes = std::size_t{240} * 1024;

xcb_visualid_t visualOf(const XConnection &x, xcb_window_t window)
{
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        x.get(), xcb_get_window_attributes(x.get(), window), nullptr));
    return attributes ? attributes->visual : xcb_visualid_t{XCB_NONE};
}

} // namespace

WindowPixels::WindowPixels(const XConnection &x, xcb_window_t window)
    : x_(x), window_(window), context_(xcb_generate_id(x.get())),
      format_(formatOfVisual(xcb_get_setup(x.get()), visualOf(x, window))),
      mayShare_(format_.isThatOfImages())
{
    xcb_create_gc(x_.get(), context_, window_, 0, nullptr);
    resize(1, 1);
}

WindowPixels::~WindowPixels()
{
    xcb_free_gc(x_.get(), context_);
}

void WindowPixels::resize(int width, int height)
{
    width_ = width;
    height_ = height;
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    // Never the memory of before: what was put of it has yet to be read, in rows of its width.
    shared_.reset();
    own_ = {};
    if (mayShare_) {
        shared_.emplace(x_);
        mayShare_ = shared_->makeRoom(count);
    }
    if (mayShare_) {
        pixels_ = shared_->pixels();
        return;
    }
    shared_.reset();
    own_.resize(count);
    pixels_ = own_.data();
}

void WindowPixels::put(const PixelRect &rect)
{
    if (rect.isEmpty()) {
        return;
    }
    if (shared_) {
        shared_->put(window_, context_, format_.depth, width_, rect);
        return;
    }
    const auto rows = static_cast<int>(kMostBytes / format_.bytesPerRow(rect.width));
    for (int y = 0; y < rect.height; y += rows) {
        send({rect.x, rect.y + y, rect.width, std::min(rows, rect.height - y)});
    }
}

void WindowPixels::send(const PixelRect &rect)
{
    request_.clear();
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
        appendRow(request_, row(y) + rect.x, rect.width, format_);
    }
    xcb_put_image(x_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context_,
                  static_cast<std::uint16_t>(rect.width), static_cast<std::uint16_t>(rect.height),
                  static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y), 0,
                  format_.depth, static_cast<std::uint32_t>(request_.size()), request_.data());
}

} // namespace orv::platform
