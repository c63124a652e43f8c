// Tells when a pixel of the X screen changes.
//
// Reads lines "X Y" from its standard input. For each it prints "ready", and then, as soon as that
// pixel has another colour, the time of day in milliseconds with microseconds behind the point.

#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <sys/ipc.h>
#include <sys/shm.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <thread>

namespace {

// Short against the fraction of a millisecond that a local round trip takes, long enough to leave
// the processor to those that are measured.
constexpr std::chrono::microseconds kPause{50};
constexpr std::uint32_t kAllPlanes = 0xFFFFFFFF;
constexpr std::size_t kPixelBytes = 4;

/// One pixel of the root window, read through shared memory.
class ScreenPixel {
public:
    ScreenPixel() : x_(xcb_connect(nullptr, nullptr), xcb_disconnect)
    {
        const int memory = ::shmget(IPC_PRIVATE, kPixelBytes, IPC_CREAT | 0600);
        if (xcb_connection_has_error(x_.get()) != 0 || memory < 0) {
            std::cerr << "pixel_watch: no X server, or no shared memory\n";
            std::exit(1);
        }
        bytes_ = static_cast<volatile std::uint32_t *>(::shmat(memory, nullptr, 0));
        segment_ = xcb_generate_id(x_.get());
        xcb_shm_attach(x_.get(), segment_, static_cast<std::uint32_t>(memory), 0);
        root_ = xcb_setup_roots_iterator(xcb_get_setup(x_.get())).data->root;
        std::free(xcb_get_input_focus_reply(x_.get(), xcb_get_input_focus(x_.get()), nullptr));
        ::shmctl(memory, IPC_RMID, nullptr);
    }

    [[nodiscard]] std::uint32_t at(std::int16_t x, std::int16_t y) const
    {
        std::free(xcb_shm_get_image_reply(x_.get(),
                                          xcb_shm_get_image(x_.get(), root_, x, y, 1, 1, kAllPlanes,
                                                            XCB_IMAGE_FORMAT_Z_PIXMAP, segment_, 0),
                                          nullptr));
        return *bytes_ & 0xFFFFFFU;
    }

private:
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> x_;
    volatile std::uint32_t *bytes_ = nullptr;
    xcb_shm_seg_t segment_ = 0;
    xcb_window_t root_ = 0;
};

} // namespace

int main()
{
    const ScreenPixel pixel;
    int x = 0;
    int y = 0;
    while (std::cin >> x >> y) {
        const auto read = [&] {
            return pixel.at(static_cast<std::int16_t>(x), static_cast<std::int16_t>(y));
        };
        const std::uint32_t before = read();
        std::cout << "ready" << std::endl;
        while (read() == before) {
            std::this_thread::sleep_for(kPause);
        }
        const std::chrono::duration<double, std::milli> now =
            std::chrono::system_clock::now().time_since_epoch();
        std::printf("%.3f\n", now.count());
        std::fflush(stdout);
    }
    return 0;
}
