#include "orvane-streamer/picture/PicturePace.h"

#include "orvane-streamer/picture/PictureLevels.h"

#include <algorithm>

namespace orv::apps {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kInTime(80);
/// A way that is slow for the smallest frame does not become quicker by smaller ones. One that
/// seems slower than this is full instead.
constexpr milliseconds kSlowestWay(160);
constexpr int kSlowWay = 2;
constexpr milliseconds kBeforeRise(1000);
constexpr int kQuickestFollows = 16;

} // namespace

std::chrono::nanoseconds PicturePace::inTime() const
{
    return std::max<std::chrono::nanoseconds>(
        kInTime, std::min<std::chrono::nanoseconds>(quickest_, kSlowestWay) * kSlowWay);
}

void PicturePace::drawn(Time sent, Time now)
{
    const std::chrono::nanoseconds took = now - sent;
    fallIfLate(sent, now);
    if (took * 2 <= inTime() && now - changed_ >= kBeforeRise && level_ > kBestLevel) {
        --level_;
        changed_ = now;
    }
    quickest_ =
        took < quickest_ || !isMeasured_ ? took : quickest_ + (took - quickest_) / kQuickestFollows;
    isMeasured_ = true;
}

void PicturePace::waiting(Time sent, Time now)
{
    fallIfLate(sent, now);
}

void PicturePace::fallIfLate(Time sent, Time now)
{
    const std::chrono::nanoseconds late = now - sent;
    // Frames that were sent before the fall tell nothing new.
    if (late <= inTime() || sent < changed_) {
        return;
    }
    level_ = std::min(level_ + (late > inTime() * 2 ? 2 : 1), kLastLevel);
    changed_ = now;
}

} // namespace orv::apps
