#pragma once

#include "OrvAnnotation/Records.h"
#include "orvane-streamer/remote/RemoteMessage.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

namespace orv::apps {

/// What waits to be sent to one page, in its order.
///
/// Records that wait behind one another go as one message. A text that tells how things stand takes
/// the place of one of its kind that still waits.
class OutgoingQueue {
public:
    static constexpr std::size_t mostRecords = 4096;
    static constexpr std::size_t mostTexts = 256;
    /// The pictures' sender waits for the page after two.
    static constexpr std::size_t mostPictures = 4;
    static constexpr std::size_t mostPackages = 16;

    enum class Text { event, clients, display };

    /// One message; `text` is used when there are no bytes.
    struct Message {
        RemoteMessage bytes;
        std::string text;
    };

    /// False from all of these when too much waits already; nothing was added then.
    [[nodiscard]] bool addRecord(const stCommand_mgs &record);
    [[nodiscard]] bool addText(Text kind, std::string text);
    [[nodiscard]] bool addPicture(RemoteMessage picture);
    [[nodiscard]] bool addPackage(RemoteMessage package);

    [[nodiscard]] bool empty() const { return items_.empty(); }
    /// The next message; the queue has it no longer. Not on an empty queue.
    [[nodiscard]] Message take();

private:
    enum class Kind { records, event, clients, display, picture, package };
    struct Item {
        Kind kind = Kind::event;
        std::vector<std::uint8_t> records;
        Message message;
    };

    [[nodiscard]] bool addMessage(Kind kind, RemoteMessage message, std::size_t most);
    [[nodiscard]] std::size_t countOf(Kind kind) const;

    std::deque<Item> items_;
    std::size_t records_ = 0;
};

} // namespace orv::apps
