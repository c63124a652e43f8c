#pragma once

#include "platform/desktop/XConnection.h"

#include <utility>

namespace orv::platform {

/// A pixmap of the X server's that is ours to free.
class Pixmap {
public:
    Pixmap() = default;
    Pixmap(const XConnection &x, xcb_pixmap_t id) : x_(&x), id_(id) {}
    Pixmap(Pixmap &&other) noexcept : x_(other.x_), id_(std::exchange(other.id_, XCB_NONE)) {}
    Pixmap &operator=(Pixmap &&other) noexcept
    {
        std::swap(x_, other.x_);
        std::swap(id_, other.id_);
        return *this;
    }
    ~Pixmap()
    {
        if (id_ != XCB_NONE) {
            xcb_free_pixmap(x_->get(), id_);
        }
    }
    Pixmap(const Pixmap &) = delete;
    Pixmap &operator=(const Pixmap &) = delete;

    [[nodiscard]] xcb_pixmap_t id() const { return id_; }

private:
    const XConnection *x_ = nullptr;
    xcb_pixmap_t id_ = XCB_NONE;
};

} // namespace orv::platform
