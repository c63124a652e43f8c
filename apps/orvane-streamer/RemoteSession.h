#pragma once

#include "orvane-streamer/MainThreadPace.h"
#include "orvane-streamer/ScreenLog.h"
#include "orvane-streamer/StreamerHost.h"
#include "orvane-streamer/desk/DesktopInput.h"
#include "orvane-streamer/picture/PictureStream.h"
#include "orvane-streamer/remote/RemoteHost.h"
#include "orvane-streamer/remote/RemoteServer.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>

namespace orv::apps {

/// Remote pages on one side, the annotation library and the desktop on the other.
///
/// What a page sends reaches the library, or keyboard and mouse of the desktop; what the library
/// answers and what the display shows goes to the pages.
///
/// Borrows  host and log, which outlive it.
/// Thread   made and destroyed on the main thread; `stopReading` from another, while the main loop
///          runs.
class RemoteSession : private RemoteHost {
public:
    struct Options {
        std::string address;
        /// Nothing for the usual port, or a free one when that is taken.
        std::optional<std::uint16_t> port;
        std::uint16_t plugin = 17;
        std::string pairingCode;
        /// The folder of the page, and the file of the browsers that were paired.
        std::string assets;
        std::string browsersFile;
    };

    /// Throws `std::runtime_error` with one sentence.
    RemoteSession(const Options &options, StreamerHost &host, ScreenLog &log);
    ~RemoteSession() override;
    RemoteSession(const RemoteSession &) = delete;
    RemoteSession &operator=(const RemoteSession &) = delete;

    [[nodiscard]] std::uint16_t port() const { return server_->port(); }
    void start();
    /// Nothing reaches the library or the desktop after this.
    void stopReading() { server_->stopReading(); }

private:
    /// What one display is to the parts.
    struct Geometry {
        std::uint32_t displayID = 0;
        ScreenArea area;
        RemoteDisplay picture;

        static Geometry of(const DesktopPlatform::Display &display);
    };

    void recordsArrived(std::span<const stCommand_mgs> records) override;
    void penPassed(const std::string &name) override;
    void clientCame(ClientID client) override;
    void clientLeft(ClientID client) override;
    void pictureShown(ClientID client, std::uint32_t frame) override;

    std::unique_ptr<RemoteServer> serverOn(const Options &options, std::uint16_t port);
    void displaysChanged();
    /// On the record thread, before records that were made for it.
    void follow(const Geometry &geometry);

    StreamerHost &host_;
    ScreenLog &log_;
    MainThreadPace pace_;
    std::mutex geometryMutex_;
    /// Set while the record thread has not followed it yet.
    std::optional<Geometry> newGeometry_;
    Geometry geometry_;
    DesktopInput input_;
    std::unique_ptr<RemoteServer> server_;
    std::optional<PictureStream> picture_;
};

} // namespace orv::apps
