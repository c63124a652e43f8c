#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace orv::apps {

/// Keeps a thread that posts work from running far ahead of the main thread that does it.
///
/// Thread   one poster.
class MainThreadPace {
public:
    using Post = std::function<void(std::function<void()> task)>;

    /// `post` queues a task to the main thread and does not wait.
    MainThreadPace(Post post, int mostAhead) : post_(std::move(post)), mostAhead_(mostAhead) {}

    /// To be called after each lot of work; waits while more than `mostAhead` lots are not done.
    void wait()
    {
        std::unique_lock lock(state_->mutex);
        ++state_->ahead;
        post_([state = state_] {
            const std::lock_guard done(state->mutex);
            --state->ahead;
            state->caughtUp.notify_one();
        });
        state_->caughtUp.wait(lock, [this] { return state_->ahead <= mostAhead_; });
    }

private:
    /// Outlives the pace in the tasks that are still queued.
    struct State {
        std::mutex mutex;
        std::condition_variable caughtUp;
        int ahead = 0;
    };

    Post post_;
    int mostAhead_;
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

} // namespace orv::apps
