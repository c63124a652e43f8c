#include "orvane-streamer/remote/Network.h"

#include "orvane-streamer/remote/ConnectionCount.h"
#include "orvane-streamer/remote/HttpConnection.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>

#include <fmt/format.h>

#include <netinet/tcp.h>
#include <sys/socket.h>

#include <stdexcept>
#include <thread>
#include <utility>

namespace orv::apps {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

constexpr std::chrono::seconds kBetweenLooks{1};
// When the system has no descriptor left, one may be free again soon.
constexpr std::chrono::milliseconds kAfterFailure{100};
// Enough for a fast network; more would only make a slow page's pictures older.
constexpr int kSendBuffer = 256 * 1024;
// After that the system gives up a page that takes nothing.
constexpr unsigned kUnacknowledgedMilliseconds = 10'000;

tcp::acceptor listenOn(asio::io_context &context, const std::string &address, std::uint16_t port)
{
    error_code error;
    const auto literal = asio::ip::make_address(address, error);
    if (error) {
        throw std::runtime_error(fmt::format("\"{}\" is no address to listen on.", address));
    }
    try {
        const tcp::endpoint endpoint(literal, port);
        tcp::acceptor acceptor(context, endpoint.protocol());
        acceptor.set_option(tcp::acceptor::reuse_address(true));
        acceptor.bind(endpoint);
        acceptor.listen();
        return acceptor;
    } catch (const boost::system::system_error &failure) {
        const std::string shown = literal.is_v6() ? fmt::format("[{}]", address) : address;
        throw std::runtime_error(
            fmt::format("Cannot listen on {}:{}: {}.", shown, port, failure.code().message()));
    }
}

/// Failures show when the socket is used.
void prepare(tcp::socket &socket)
{
    error_code ignored;
    socket.set_option(tcp::no_delay(true), ignored);
    socket.set_option(asio::socket_base::send_buffer_size(kSendBuffer), ignored);
    ::setsockopt(socket.native_handle(), IPPROTO_TCP, TCP_USER_TIMEOUT,
                 &kUnacknowledgedMilliseconds, sizeof kUnacknowledgedMilliseconds);
}

} // namespace

class Network::Impl {
public:
    Impl(const std::string &address, std::uint16_t port, ConnectionUser &user)
        : user_(user), acceptor_(listenOn(context_, address, port)), looks_(context_),
          pause_(context_), deadline_(context_)
    {
    }
    ~Impl() { join(); }
    Impl(const Impl &) = delete;
    Impl &operator=(const Impl &) = delete;

    [[nodiscard]] std::uint16_t port() const { return acceptor_.local_endpoint().port(); }
    void start();
    void post(std::function<void()> task) { asio::post(context_, std::move(task)); }
    void finish(const std::function<void()> &farewell, std::chrono::milliseconds limit);

private:
    void accept();
    void take(const error_code &error, tcp::socket socket);
    void lookLater();
    void join();

    ConnectionUser &user_;
    ConnectionCount count_;
    asio::io_context context_{1};
    tcp::acceptor acceptor_;
    asio::steady_timer looks_;
    asio::steady_timer pause_;
    asio::steady_timer deadline_;
    std::thread thread_;
};

void Network::Impl::start()
{
    accept();
    lookLater();
    thread_ = std::thread([this] { context_.run(); });
}

void Network::Impl::accept()
{
    acceptor_.async_accept([this](const error_code &error, tcp::socket socket) {
        if (acceptor_.is_open()) {
            take(error, std::move(socket));
        }
    });
}

void Network::Impl::take(const error_code &error, tcp::socket socket)
{
    if (error && error != asio::error::connection_aborted) {
        pause_.expires_after(kAfterFailure);
        pause_.async_wait([this](const error_code & /*ended*/) {
            if (acceptor_.is_open()) {
                accept();
            }
        });
        return;
    }
    if (!error && !count_.isFull()) {
        prepare(socket);
        serveHttp(std::move(socket), ConnectionCount::Slot(count_), user_);
    }
    accept();
}

void Network::Impl::lookLater()
{
    looks_.expires_after(kBetweenLooks);
    looks_.async_wait([this](const error_code &ended) {
        if (!ended) {
            user_.look();
            lookLater();
        }
    });
}

void Network::Impl::finish(const std::function<void()> &farewell, std::chrono::milliseconds limit)
{
    if (!thread_.joinable()) {
        return;
    }
    asio::post(context_, [this, &farewell, limit] {
        error_code ignored;
        acceptor_.close(ignored);
        farewell();
        deadline_.expires_after(limit);
        deadline_.async_wait([this](const error_code & /*ended*/) { context_.stop(); });
        count_.whenNoLinks([this] { context_.stop(); });
    });
    join();
}

void Network::Impl::join()
{
    if (thread_.joinable()) {
        thread_.join();
    }
    // The slots of what is destroyed from here on stop nothing.
    count_.whenNoLinks(nullptr);
}

Network::Network(const std::string &address, std::uint16_t port, ConnectionUser &user)
    : impl_(std::make_unique<Impl>(address, port, user))
{
}

Network::~Network() = default;

std::uint16_t Network::port() const
{
    return impl_->port();
}

void Network::start()
{
    impl_->start();
}

void Network::post(std::function<void()> task)
{
    impl_->post(std::move(task));
}

void Network::finish(const std::function<void()> &farewell, std::chrono::milliseconds limit)
{
    impl_->finish(farewell, limit);
}

} // namespace orv::apps
