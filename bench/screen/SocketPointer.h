#pragma once

#include "InkPointer.h"
#include "InkRecords.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>

#include <cstdint>

namespace orv::bench {

/// Draws as a client does: by records over a socket, to a host whose client has a unit a pixel.
class SocketPointer final : public InkPointer {
public:
    /// The host's port on this machine.
    explicit SocketPointer(std::uint16_t port) : socket_(network_)
    {
        socket_.connect({boost::asio::ip::address_v4::loopback(), port});
        socket_.set_option(boost::asio::ip::tcp::no_delay(true));
    }

    void press(ScreenPoint at) override { send(ink_records::press, at); }
    void move(ScreenPoint to) override { send(ink_records::move, to); }
    void release(ScreenPoint at) override { send(ink_records::release, at); }

private:
    void send(std::uint32_t event, ScreenPoint at)
    {
        const stCommand_mgs record = ink_records::mouse(event, static_cast<std::uint32_t>(at.x),
                                                        static_cast<std::uint32_t>(at.y));
        boost::asio::write(socket_, boost::asio::buffer(&record, sizeof record));
    }

    boost::asio::io_context network_;
    boost::asio::ip::tcp::socket socket_;
};

} // namespace orv::bench
