#include "orvane-streamer/RecordWriter.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace orv::apps {

RecordWriter::RecordWriter(int socket)
    : socket_(socket), thread_([this](const std::stop_token &stop) { run(stop); })
{
}

RecordWriter::~RecordWriter()
{
    // Frees the thread from a send that waits for the client.
    ::shutdown(socket_, SHUT_RDWR);
}

bool RecordWriter::offer(const stCommand_mgs &record)
{
    const std::lock_guard lock(mutex_);
    if (down_) {
        return false;
    }
    if (queue_.size() == mostRecords) {
        overrun_ = true;
        down_ = true;
        ::shutdown(socket_, SHUT_RDWR);
        return false;
    }
    queue_.push_back(record);
    arrived_.notify_one();
    return true;
}

void RecordWriter::flush(std::chrono::milliseconds limit)
{
    std::unique_lock lock(mutex_);
    sent_.wait_for(lock, limit, [this] { return down_ || (queue_.empty() && !sending_); });
}

bool RecordWriter::isOverrun() const
{
    const std::lock_guard lock(mutex_);
    return overrun_;
}

void RecordWriter::run(const std::stop_token &stop)
{
    std::unique_lock lock(mutex_);
    while (arrived_.wait(lock, stop, [this] { return !queue_.empty(); })) {
        const stCommand_mgs record = queue_.front();
        queue_.pop_front();
        sending_ = true;
        lock.unlock();
        const bool sent = sendAll(record);
        lock.lock();
        sending_ = false;
        down_ = down_ || !sent;
        sent_.notify_all();
        if (down_) {
            ::shutdown(socket_, SHUT_RDWR);
            return;
        }
    }
}

bool RecordWriter::sendAll(const stCommand_mgs &record) const
{
    std::array<char, sizeof record> bytes{};
    std::memcpy(bytes.data(), &record, bytes.size());
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        sent += count < 0 ? 0 : static_cast<std::size_t>(count);
    }
    return true;
}

} // namespace orv::apps
