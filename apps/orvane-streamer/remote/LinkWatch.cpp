#include "orvane-streamer/remote/LinkWatch.h"

namespace orv::apps {

void LinkWatch::noteResumed(Time now)
{
    isPaused_ = false;
    alive_ = now;
}

LinkWatch::Verdict LinkWatch::look(Time now) const
{
    if (sendingSince_ && now - *sendingSince_ >= patience) {
        return Verdict::notReading;
    }
    if (!isGreeted_ && now - opened_ >= patience) {
        return Verdict::neverGreeted;
    }
    if (isPaused_) {
        return Verdict::well;
    }
    if (now - alive_ >= patience) {
        return Verdict::silent;
    }
    return now - alive_ >= pingAfter ? Verdict::pingDue : Verdict::well;
}

} // namespace orv::apps
