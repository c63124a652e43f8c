#pragma once

#include <algorithm>
#include <chrono>

namespace orv::apps {

/// Lets through so many messages a second on average, and a burst of twice as many.
class MessageRate {
public:
    using Time = std::chrono::steady_clock::time_point;

    MessageRate(double perSecond, Time now)
        : perSecond_(perSecond), allowed_(2 * perSecond), counted_(now)
    {
    }

    /// False for a message that is one too many.
    [[nodiscard]] bool admit(Time now)
    {
        const std::chrono::duration<double> passed = now - counted_;
        allowed_ = std::min(2 * perSecond_, allowed_ + passed.count() * perSecond_);
        counted_ = now;
        if (allowed_ < 1.0) {
            return false;
        }
        allowed_ -= 1.0;
        return true;
    }

private:
    double perSecond_;
    double allowed_;
    Time counted_;
};

} // namespace orv::apps
