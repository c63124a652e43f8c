#pragma once

#include "orvane-streamer/remote/RemoteHost.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace orv::apps {

/// Hands records to the host on a thread of its own, in the order in which they were put in.
///
/// Borrows  the host.
/// Thread   `put…` and `isFull` from one thread, `stop` from any but the record thread.
class RecordFeed {
public:
    /// From here on whoever puts in more should wait.
    static constexpr std::size_t fullRecords = 4096;
    static constexpr std::size_t fullLots = 64;
    /// What the host gets at once at most.
    static constexpr std::size_t largestLot = 1024;

    /// `hasRoom` comes on the record thread after the feed was seen full.
    RecordFeed(RemoteHost &host, std::function<void()> hasRoom);
    ~RecordFeed();
    RecordFeed(const RecordFeed &) = delete;
    RecordFeed &operator=(const RecordFeed &) = delete;

    void start();
    /// Hands over what waits, and then nothing any more. What is put in later is lost.
    void stop();

    void putRecords(std::span<const stCommand_mgs> records);
    /// Of several without a record between them, the host learns the last.
    void putPassing(const std::string &name);
    /// True promises a call of `hasRoom`.
    [[nodiscard]] bool isFull();

private:
    /// Records, or who has the pen now.
    struct Lot {
        std::vector<stCommand_mgs> records;
        std::optional<std::string> penPassedTo;
    };

    void run();
    void handOver(const Lot &lot);

    RemoteHost &host_;
    std::function<void()> hasRoom_;
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<Lot> lots_;
    std::size_t records_ = 0;
    bool seenFull_ = false;
    bool stopped_ = false;
    std::thread thread_;
};

} // namespace orv::apps
