#include "orvane-streamer/remote/RecordFeed.h"

#include <utility>

namespace orv::apps {

RecordFeed::RecordFeed(RemoteHost &host, std::function<void()> hasRoom)
    : host_(host), hasRoom_(std::move(hasRoom))
{
}

RecordFeed::~RecordFeed()
{
    stop();
}

void RecordFeed::start()
{
    thread_ = std::thread([this] { run(); });
}

void RecordFeed::stop()
{
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        arrived_.notify_one();
    }
    if (thread_.joinable()) {
        thread_.join();
    }
}

void RecordFeed::putRecords(std::span<const stCommand_mgs> records)
{
    const std::lock_guard lock(mutex_);
    if (stopped_ || records.empty()) {
        return;
    }
    if (lots_.empty() || lots_.back().penPassedTo ||
        lots_.back().records.size() + records.size() > largestLot) {
        lots_.emplace_back();
    }
    auto &lot = lots_.back().records;
    lot.insert(lot.end(), records.begin(), records.end());
    records_ += records.size();
    arrived_.notify_one();
}

void RecordFeed::putPassing(const std::string &name)
{
    const std::lock_guard lock(mutex_);
    if (stopped_) {
        return;
    }
    if (lots_.empty() || !lots_.back().penPassedTo) {
        lots_.emplace_back();
    }
    lots_.back().penPassedTo = name;
    arrived_.notify_one();
}

bool RecordFeed::isFull()
{
    const std::lock_guard lock(mutex_);
    const bool full = !stopped_ && (records_ >= fullRecords || lots_.size() >= fullLots);
    seenFull_ = seenFull_ || full;
    return full;
}

void RecordFeed::run()
{
    std::unique_lock lock(mutex_);
    while (true) {
        arrived_.wait(lock, [this] { return stopped_ || !lots_.empty(); });
        if (lots_.empty()) {
            return;
        }
        const Lot lot = std::move(lots_.front());
        lots_.pop_front();
        records_ -= lot.records.size();
        const bool tellsOfRoom =
            seenFull_ && records_ <= fullRecords / 2 && lots_.size() <= fullLots / 2;
        seenFull_ = seenFull_ && !tellsOfRoom;
        lock.unlock();
        if (tellsOfRoom) {
            hasRoom_();
        }
        handOver(lot);
        lock.lock();
    }
}

void RecordFeed::handOver(const Lot &lot)
{
    if (lot.penPassedTo) {
        host_.penPassed(*lot.penPassedTo);
    } else {
        host_.recordsArrived(lot.records);
    }
}

} // namespace orv::apps
