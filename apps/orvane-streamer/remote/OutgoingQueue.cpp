#include "orvane-streamer/remote/OutgoingQueue.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace orv::apps {

bool OutgoingQueue::addRecord(const stCommand_mgs &record)
{
    if (records_ == mostRecords) {
        return false;
    }
    if (items_.empty() || items_.back().kind != Kind::records) {
        items_.push_back({Kind::records, {message_kind::records}, {}});
    }
    std::array<std::uint8_t, sizeof record> bytes{};
    std::memcpy(bytes.data(), &record, bytes.size());
    auto &records = items_.back().records;
    records.insert(records.end(), bytes.begin(), bytes.end());
    ++records_;
    return true;
}

bool OutgoingQueue::addText(Text kind, std::string text)
{
    Item item;
    item.message.text = std::move(text);
    if (kind == Text::event) {
        item.kind = Kind::event;
        if (countOf(Kind::event) == mostTexts) {
            return false;
        }
    } else {
        item.kind = kind == Text::clients ? Kind::clients : Kind::display;
        std::erase_if(items_, [&item](const Item &waiting) { return waiting.kind == item.kind; });
    }
    items_.push_back(std::move(item));
    return true;
}

bool OutgoingQueue::addPicture(RemoteMessage picture)
{
    return addMessage(Kind::picture, std::move(picture), mostPictures);
}

bool OutgoingQueue::addPackage(RemoteMessage package)
{
    return addMessage(Kind::package, std::move(package), mostPackages);
}

bool OutgoingQueue::addMessage(Kind kind, RemoteMessage message, std::size_t most)
{
    if (countOf(kind) == most) {
        return false;
    }
    items_.push_back({kind, {}, {std::move(message), {}}});
    return true;
}

OutgoingQueue::Message OutgoingQueue::take()
{
    Item item = std::move(items_.front());
    items_.pop_front();
    if (item.kind == Kind::records) {
        records_ -= item.records.size() / sizeof(stCommand_mgs);
        item.message.bytes =
            std::make_shared<const std::vector<std::uint8_t>>(std::move(item.records));
    }
    return std::move(item.message);
}

std::size_t OutgoingQueue::countOf(Kind kind) const
{
    return static_cast<std::size_t>(std::count_if(
        items_.begin(), items_.end(), [kind](const Item &item) { return item.kind == kind; }));
}

} // namespace orv::apps
