// Tells when a pixel of the X screen changes.
//
// Reads lines "X Y" from its standard input. For each it prints "ready", and then, as soon as that
// pixel has another colour, the time of day in milliseconds with microseconds behind the point.

#include "ScreenBox.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <iostream>
#include <thread>

namespace {

// Short against the fraction of a millisecond that a local round trip takes, long enough to leave
// the processor to those that are measured.
constexpr std::chrono::microseconds kPause{50};

} // namespace

int main()
try {
    const orv::bench::ScreenBox pixel(1, 1);
    int x = 0;
    int y = 0;
    while (std::cin >> x >> y) {
        const auto before = pixel.at(x, y);
        std::cout << "ready" << std::endl;
        while (pixel.at(x, y) == before) {
            std::this_thread::sleep_for(kPause);
        }
        const std::chrono::duration<double, std::milli> now =
            std::chrono::system_clock::now().time_since_epoch();
        std::printf("%.3f\n", now.count());
        std::fflush(stdout);
    }
    return 0;
} catch (const std::exception &error) {
    std::cerr << "pixel_watch: " << error.what() << '\n';
    return 1;
}
