#pragma once

#include <chrono>

namespace orv::apps {

/// Finds the quality at which a viewer's frames come in time: falls at once when one is late, rises
/// slowly while they are quick.
class PicturePace {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// An index of `kPictureLevels`.
    [[nodiscard]] int level() const { return level_; }

    /// A frame that was sent then has been drawn now.
    void drawn(Time sent, Time now);
    /// The oldest frame that is not drawn yet was sent then.
    void waiting(Time sent, Time now);

private:
    [[nodiscard]] std::chrono::nanoseconds inTime() const;
    void fallIfLate(Time sent, Time now);

    int level_ = 2;
    /// About the time of a frame with nothing in it, on this way and with this viewer.
    std::chrono::nanoseconds quickest_{0};
    bool isMeasured_ = false;
    Time changed_;
};

} // namespace orv::apps
