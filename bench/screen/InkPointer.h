#pragma once

#include <chrono>
#include <thread>

namespace orv::bench {

/// Pixels of the screen from its top left corner.
struct ScreenPoint {
    int x = 0;
    int y = 0;
};

/// The hand that draws. What a call does has been handed to the system when it returns.
class InkPointer {
public:
    InkPointer() = default;
    virtual ~InkPointer() = default;
    InkPointer(const InkPointer &) = delete;
    InkPointer &operator=(const InkPointer &) = delete;
    virtual void press(ScreenPoint at) = 0;
    virtual void move(ScreenPoint to) = 0;
    virtual void release(ScreenPoint at) = 0;
    /// Sleeps, but for what must be done meanwhile: a hand that wakes without need takes the
    /// processor, and its caches, from those that are measured.
    virtual void waitUntil(std::chrono::steady_clock::time_point time)
    {
        std::this_thread::sleep_until(time);
    }
    /// What must be done meanwhile, for those who wait for something else than a time.
    virtual void idle() {}
};

} // namespace orv::bench
