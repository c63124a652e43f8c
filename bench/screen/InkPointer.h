#pragma once

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
    /// Called again and again while nothing is to be done.
    virtual void idle() = 0;
};

} // namespace orv::bench
