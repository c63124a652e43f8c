#pragma once

#include "orvane-streamer/remote/ControlMessages.h"
#include "orvane-streamer/remote/HeldInput.h"
#include "orvane-streamer/remote/MessageRate.h"
#include "orvane-streamer/remote/PageLink.h"
#include "orvane-streamer/remote/PenHolder.h"
#include "orvane-streamer/remote/RecordFeed.h"
#include "orvane-streamer/remote/RemoteDisplay.h"
#include "orvane-streamer/remote/StateRecords.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace orv::apps {

/// All pages that are linked: takes what they send, and sends them what all or one are to get.
///
/// Borrows  host and feed.
/// Thread   the network thread.
class RemoteRoom {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    static constexpr std::size_t mostLinks = 32;
    static constexpr std::size_t longestText = 4096;
    /// A page says one thing for each picture at most, and little more.
    static constexpr double textsPerSecond = 200.0;

    struct Options {
        std::uint16_t plugin = 0;
        RemoteDisplay display;
        Clock clock;
        std::function<void(const std::string &line)> report;
    };

    RemoteRoom(Options options, RemoteHost &host, RecordFeed &feed);

    [[nodiscard]] bool isFull() const { return clients_.size() >= mostLinks; }
    ClientID linkCame(std::shared_ptr<PageLink> link);
    void textCame(ClientID id, std::string_view text);
    void bytesCame(ClientID id, std::span<const std::uint8_t> bytes);
    void linkLost(ClientID id, const std::string &how);

    void look();
    /// The feed has room again.
    void resumeReading();
    /// Lifts what is held down; the host is called no more, and records are dropped.
    void stopReading();

    void send(const stCommand_mgs &record);
    void sendPackage(RemoteMessage package);
    void sendPicture(ClientID id, RemoteMessage picture);
    void setDisplay(const RemoteDisplay &display);

    /// Ends all links; to be called before what they are made of goes.
    void sayFarewell();
    void forgetAll() { clients_.clear(); }

private:
    struct Client {
        std::shared_ptr<PageLink> link;
        MessageRate texts;
        /// Empty before it has said it.
        std::string name;
        bool isPaused = false;
    };

    void take(ClientID id, Client &client, const control::Hello &hello);
    void take(ClientID id, Client &client, const control::Shown &shown);
    void take(ClientID id, Client &client, const control::AskPen &ask);
    void take(ClientID id, Client &client, const control::GivePen &give);
    void take(ClientID id, Client &client, const control::RefusePen &refuse);
    void take(ClientID id, Client &client, const control::DropPen &drop);

    [[nodiscard]] Client *find(ClientID id);
    void apply(const PenHolder::Step &step);
    void tellAll(OutgoingQueue::Text kind, const std::string &text);
    void pauseWhileFull(Client &client);
    void putOut(ClientID id, LinkEnd why, const std::string &how);
    void remove(ClientID id, const std::string &how);

    Options options_;
    RemoteHost &host_;
    RecordFeed &feed_;
    std::map<ClientID, Client> clients_;
    ClientID lastID_ = 0;
    PenHolder pen_;
    HeldInput held_;
    StateRecords state_;
    bool isStopped_ = false;
};

} // namespace orv::apps
