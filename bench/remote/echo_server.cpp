// The bare round trip that everything else is measured against: a WebSocket that gives each message
// back. Prints its port; serves one connection and ends with it.

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>

#include <exception>
#include <iostream>

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;

void echo(asio::ip::tcp::socket socket)
{
    socket.set_option(asio::ip::tcp::no_delay(true));
    beast::websocket::stream<asio::ip::tcp::socket> stream(std::move(socket));
    stream.accept();
    stream.binary(true);
    beast::flat_buffer message;
    beast::error_code error;
    while (!error) {
        message.clear();
        stream.read(message, error);
        if (!error) {
            stream.write(message.data(), error);
        }
    }
}

} // namespace

int main()
try {
    asio::io_context network;
    asio::ip::tcp::acceptor acceptor(
        network, {asio::ip::address_v4::loopback(), static_cast<unsigned short>(0)});
    std::cout << acceptor.local_endpoint().port() << std::endl;
    asio::ip::tcp::socket socket(network);
    acceptor.accept(socket);
    echo(std::move(socket));
    return 0;
} catch (const std::exception &error) {
    std::cerr << "echo_server: " << error.what() << '\n';
    return 1;
}
