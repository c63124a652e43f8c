#pragma once

#include "OrvAnnotation/Records.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>

namespace orv::apps {

/// Sends records to a client from a thread of its own, so that a slow client keeps nobody waiting.
///
/// Borrows  the socket. Destroying the writer shuts the socket down and joins the thread.
/// Thread   `offer` from any.
class RecordWriter {
public:
    static constexpr std::size_t mostRecords = 1024;

    explicit RecordWriter(int socket);
    ~RecordWriter();
    RecordWriter(const RecordWriter &) = delete;
    RecordWriter &operator=(const RecordWriter &) = delete;

    /// Never waits. False when `mostRecords` are waiting already, or the connection is down: the
    /// record is then lost and the socket shut down.
    bool offer(const stCommand_mgs &record);
    /// Waits until all that was offered is sent, the connection is down, or the time is over.
    void flush(std::chrono::milliseconds limit);
    /// True when it was this side that gave the client up.
    [[nodiscard]] bool isOverrun() const;

private:
    void run(const std::stop_token &stop);
    bool sendAll(const stCommand_mgs &record) const;

    int socket_;
    mutable std::mutex mutex_;
    std::condition_variable_any arrived_;
    std::condition_variable_any sent_;
    std::deque<stCommand_mgs> queue_;
    bool sending_ = false;
    bool down_ = false;
    bool overrun_ = false;
    std::jthread thread_;
};

} // namespace orv::apps
