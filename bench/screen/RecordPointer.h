#pragma once

#include "InkPointer.h"
#include "OrvAnnotation/Records.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace orv::bench {

/// Draws as a remote page does: with records over a WebSocket of the streamer on this machine.
///
/// Pictures are taken as shown 60 times a second, as a page draws them. Throws `std::exception`
/// when the streamer refuses or ends the connection.
class RecordPointer final : public InkPointer {
public:
    RecordPointer(std::uint16_t port, const std::string &pairingCode);

    /// Opens annotation mode, draws so many strokes and takes the pen that is measured. Returns
    /// when all of it is in the document.
    void prepare(unsigned strokes);

    void press(ScreenPoint at) override;
    void move(ScreenPoint to) override;
    void release(ScreenPoint at) override;
    void waitUntil(std::chrono::steady_clock::time_point time) override;
    void idle() override;

private:
    [[nodiscard]] std::string pair(const std::string &pairingCode);
    void join(const std::string &cookie);
    void listen();
    void hear(std::span<const std::uint8_t> message);
    void hearRecords(std::span<const std::uint8_t> records);
    void showFrames();
    void say(const std::string &text);
    void send(std::span<const stCommand_mgs> records);
    void point(std::uint32_t event, ScreenPoint at);

    boost::asio::io_context network_;
    boost::beast::websocket::stream<boost::asio::ip::tcp::socket> stream_{network_};
    boost::beast::flat_buffer message_;
    boost::asio::ip::tcp::endpoint server_;
    std::string host_;
    bool isOpen_ = false;
    unsigned strokes_ = 0;
    std::vector<std::uint32_t> frames_;
    std::chrono::steady_clock::time_point nextShow_;
};

} // namespace orv::bench
