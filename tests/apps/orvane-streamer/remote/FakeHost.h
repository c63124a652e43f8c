#pragma once

#include "apps/orvane-streamer/remote/RawClient.h"
#include "orvane-streamer/remote/RemoteHost.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace orv::apps {

/// Notes what the server calls, for the test's thread to wait for; can keep the record thread
/// waiting.
class FakeHost : public RemoteHost {
public:
    void recordsArrived(std::span<const stCommand_mgs> records) override
    {
        std::unique_lock lock(mutex_);
        ++waiting_;
        changed_.notify_all();
        changed_.wait(lock, [this] { return !blocked_; });
        --waiting_;
        records_.insert(records_.end(), records.begin(), records.end());
        largestLot_ = std::max(largestLot_, records.size());
        changed_.notify_all();
    }
    void penPassed(const std::string &name) override { note("pen to " + name); }
    void clientCame(ClientID client) override { note("came " + std::to_string(client)); }
    void clientLeft(ClientID client) override { note("left " + std::to_string(client)); }
    void pictureShown(ClientID client, std::uint32_t frame) override
    {
        note("shown " + std::to_string(client) + " " + std::to_string(frame));
    }

    void note(const std::string &line)
    {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
        changed_.notify_all();
    }
    void block()
    {
        const std::lock_guard lock(mutex_);
        blocked_ = true;
    }
    void unblock()
    {
        const std::lock_guard lock(mutex_);
        blocked_ = false;
        changed_.notify_all();
    }
    [[nodiscard]] bool waitUntilBlocked()
    {
        return waitFor([this] { return waiting_ > 0; });
    }
    [[nodiscard]] bool waitForLine(const std::string &part)
    {
        return waitFor([&] {
            return std::any_of(lines_.begin(), lines_.end(), [&part](const std::string &line) {
                return line.find(part) != std::string::npos;
            });
        });
    }
    [[nodiscard]] std::vector<stCommand_mgs> waitForRecords(std::size_t count)
    {
        (void)waitFor([&] { return records_.size() >= count; });
        const std::lock_guard lock(mutex_);
        return records_;
    }
    [[nodiscard]] std::vector<std::string> lines()
    {
        const std::lock_guard lock(mutex_);
        return lines_;
    }
    [[nodiscard]] std::size_t recordCount()
    {
        const std::lock_guard lock(mutex_);
        return records_.size();
    }
    [[nodiscard]] std::size_t largestLot()
    {
        const std::lock_guard lock(mutex_);
        return largestLot_;
    }

private:
    bool waitFor(const std::function<bool()> &condition)
    {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, kPatience, condition);
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<stCommand_mgs> records_;
    std::vector<std::string> lines_;
    std::size_t largestLot_ = 0;
    int waiting_ = 0;
    bool blocked_ = false;
};

} // namespace orv::apps
