#pragma once

#include "OrvAnnotation/Records.h"
#include "orvane-streamer/remote/RemoteDisplay.h"
#include "orvane-streamer/remote/RemoteHost.h"
#include "orvane-streamer/remote/RemoteMessage.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orv::apps {

/// Serves the remote page and takes its records, on one port, for browsers that know the pairing
/// code.
///
/// Borrows  the host, which outlives it.
/// Thread   all operations from any. Works on two threads of its own: one for the network, and one
///          that hands records to the host, so that a host that waits keeps no connection waiting.
/// Fails    a client that breaks the protocol, floods or does not read is put out and reported; the
///          others are not touched.
class RemoteServer {
public:
    struct Options {
        /// An address of this machine, "127.0.0.1" or "0.0.0.0" or "::1" and the like.
        std::string address = "127.0.0.1";
        /// 0 takes any free port.
        std::uint16_t port = 0;
        /// The folder of the page and its assets; read once, at the start.
        std::string assets;
        /// 16 characters; see `PairingCode`.
        std::string pairingCode;
        /// Where the browsers that were paired are remembered; empty for nowhere.
        std::string browsersFile;
        /// Whom the records of the library are for.
        std::uint16_t plugin = 17;
        RemoteDisplay display;
        /// Gets one line for each thing worth knowing, from any thread.
        std::function<void(const std::string &line)> report;
    };

    /// Begins to listen. Throws `std::runtime_error` with one sentence that names the address, the
    /// folder or the file at fault.
    RemoteServer(Options options, RemoteHost &host);
    /// As `stopReading`; sends what waits for at most a second, and closes the connections.
    ~RemoteServer();
    RemoteServer(const RemoteServer &) = delete;
    RemoteServer &operator=(const RemoteServer &) = delete;

    [[nodiscard]] std::uint16_t port() const;
    /// Lets clients in.
    void start();
    /// Lifts what is held down, and calls the host no more once it returns. The clients stay and
    /// can be sent to. Not from a callback, nor from a thread that the host may wait for.
    void stopReading();

    /// To all clients. Keeps what tells the present state for those who come later.
    void send(const stCommand_mgs &record);
    /// To the client that holds the pen; lost when nobody does.
    void sendPackage(std::vector<std::uint8_t> package);
    void sendPicture(ClientID client, RemoteMessage frame);
    void setDisplay(const RemoteDisplay &display);

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace orv::apps
