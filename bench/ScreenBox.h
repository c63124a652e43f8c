#pragma once

#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <vector>

namespace orv::bench {

/// A small box of the root window as a person sees it, read through shared memory.
///
/// Has a connection of its own. Throws `std::runtime_error` without an X server or shared memory.
class ScreenBox {
public:
    ScreenBox(std::uint16_t width, std::uint16_t height)
        : x_(xcb_connect(nullptr, nullptr), xcb_disconnect), width_(width), height_(height)
    {
        const std::size_t bytes = std::size_t{width} * height * sizeof(std::uint32_t);
        const int memory = ::shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
        if (xcb_connection_has_error(x_.get()) != 0 || memory < 0) {
            throw std::runtime_error("no X server, or no shared memory");
        }
        pixels_ = static_cast<volatile std::uint32_t *>(::shmat(memory, nullptr, 0));
        segment_ = xcb_generate_id(x_.get());
        xcb_shm_attach(x_.get(), segment_, static_cast<std::uint32_t>(memory), 0);
        root_ = xcb_setup_roots_iterator(xcb_get_setup(x_.get())).data->root;
        std::free(xcb_get_input_focus_reply(x_.get(), xcb_get_input_focus(x_.get()), nullptr));
        ::shmctl(memory, IPC_RMID, nullptr);
    }

    /// Its pixels, row by row, with the top left one at (x, y) in pixels of the screen.
    [[nodiscard]] std::vector<std::uint32_t> at(int x, int y) const
    {
        constexpr std::uint32_t kAllPlanes = 0xFFFFFFFF;
        std::free(xcb_shm_get_image_reply(
            x_.get(),
            xcb_shm_get_image(x_.get(), root_, static_cast<std::int16_t>(x),
                              static_cast<std::int16_t>(y), width_, height_, kAllPlanes,
                              XCB_IMAGE_FORMAT_Z_PIXMAP, segment_, 0),
            nullptr));
        std::vector<std::uint32_t> colours(std::size_t{width_} * height_);
        for (std::size_t i = 0; i < colours.size(); ++i) {
            colours[i] = pixels_[i] & 0xFFFFFFU;
        }
        return colours;
    }

private:
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> x_;
    std::uint16_t width_;
    std::uint16_t height_;
    volatile std::uint32_t *pixels_ = nullptr;
    xcb_shm_seg_t segment_ = 0;
    xcb_window_t root_ = 0;
};

} // namespace orv::bench
