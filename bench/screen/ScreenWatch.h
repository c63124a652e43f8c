#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace orv::bench {

/// The pixels of the screen, in the memory that the X server paints into, and word of each change.
///
/// Looking costs the server nothing, and between changes nothing of this runs: a watcher that asks
/// again and again takes the processor from those it watches. The memory has the pointer's picture
/// too; nobody sees that while this object lives.
class ScreenWatch {
public:
    /// Throws `std::runtime_error` unless ORV_TEST_SCREEN_MEMORY names the memory, as
    /// `with-x-server.sh desktop` sets it.
    ScreenWatch();

    /// A square's pixels, row by row, with the top left one at (x, y); inside the screen.
    [[nodiscard]] std::vector<std::uint32_t> at(int x, int y, int side) const;
    /// Comes back when something was painted since the last call, or after this time.
    void waitForPaint(std::chrono::milliseconds most) const;

private:
    void hidePointer() const;
    void askForPaint() const;
    void findPixels();

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> x_;
    xcb_window_t root_ = 0;
    const volatile std::byte *pixels_ = nullptr;
    std::size_t rowBytes_ = 0;
};

} // namespace orv::bench
