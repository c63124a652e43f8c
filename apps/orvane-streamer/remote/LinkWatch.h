#pragma once

#include <chrono>
#include <optional>

namespace orv::apps {

/// Tells from the times of what happened whether the page behind a WebSocket is still there.
///
/// All times come from the caller.
class LinkWatch {
public:
    using Time = std::chrono::steady_clock::time_point;

    enum class Verdict { well, pingDue, silent, notReading, neverGreeted };

    /// Without a sign of life for so long, a page is gone.
    static constexpr std::chrono::seconds patience{10};
    static constexpr std::chrono::seconds pingAfter{4};

    explicit LinkWatch(Time now) : opened_(now), alive_(now) {}

    /// Something came from the page, or it took something.
    void noteLife(Time now) { alive_ = now; }
    void noteGreeting() { isGreeted_ = true; }
    void noteSendingBegun(Time now) { sendingSince_ = now; }
    void noteSendingDone() { sendingSince_.reset(); }
    /// While nothing is read, silence says nothing.
    void notePause() { isPaused_ = true; }
    void noteResumed(Time now);

    [[nodiscard]] Verdict look(Time now) const;

private:
    Time opened_;
    Time alive_;
    std::optional<Time> sendingSince_;
    bool isGreeted_ = false;
    bool isPaused_ = false;
};

} // namespace orv::apps
