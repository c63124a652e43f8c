#pragma once

#include "OrvAnnotation/Records.h"
#include "orvane-streamer/remote/OutgoingQueue.h"
#include "orvane-streamer/remote/RemoteHost.h"
#include "orvane-streamer/remote/RemoteMessage.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace orv::apps {

/// Why the server ends a link, by the numbers that WebSockets have for it.
enum class LinkEnd : std::uint16_t {
    goingAway = 1001,
    badMessage = 1007,
    againstPolicy = 1008,
    tooLarge = 1009,
};

/// The WebSocket of one page.
///
/// Thread   the network thread. Nothing here waits, nor calls the user from within.
class PageLink {
public:
    virtual ~PageLink() = default;

    /// The address of the other side.
    [[nodiscard]] virtual const std::string &peer() const = 0;
    /// Where too much waits already, the link is cut instead.
    virtual void sendRecord(const stCommand_mgs &record) = 0;
    virtual void sendText(OutgoingQueue::Text kind, std::string text) = 0;
    virtual void sendPicture(RemoteMessage picture) = 0;
    virtual void sendPackage(RemoteMessage package) = 0;

    /// The page has said who it is; one that never does is cut.
    virtual void noteGreeting() = 0;
    virtual void pauseReading() = 0;
    virtual void resumeReading() = 0;
    /// Looks whether the page is still there, and cuts the link when it is not.
    virtual void look(std::chrono::steady_clock::time_point now) = 0;
    /// Sends what waits, for a second at most, and ends. Nothing is read any more.
    virtual void end(LinkEnd why) = 0;
};

/// Whom the links tell what comes over them.
class PageLinkUser {
public:
    virtual ~PageLinkUser() = default;

    /// Before anything is read from it.
    virtual ClientID linkCame(std::shared_ptr<PageLink> link) = 0;
    virtual void textCame(ClientID client, std::string_view text) = 0;
    virtual void bytesCame(ClientID client, std::span<const std::uint8_t> bytes) = 0;
    /// The last call for this client; `how` goes on after its name.
    virtual void linkLost(ClientID client, const std::string &how) = 0;
};

} // namespace orv::apps
