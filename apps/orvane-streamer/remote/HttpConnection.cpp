#include "orvane-streamer/remote/HttpConnection.h"

#include "orvane-streamer/remote/WebSocketLink.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <boost/beast/websocket/rfc6455.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace orv::apps {

namespace {

namespace beast = boost::beast;
namespace http = beast::http;
using boost::asio::ip::tcp;
using Parser = http::request_parser<http::empty_body>;

constexpr std::size_t kLargestHeader = 8192;
// A header, and the beginning of what is asked for next.
constexpr std::size_t kLargestBuffer = 2 * kLargestHeader;
// For a whole request, and for a whole answer.
constexpr std::chrono::seconds kPatience{10};
constexpr int kMostRequests = 100;
// What a refused request may still send, and for how long, so that its answer is not torn away.
constexpr std::chrono::seconds kLingering{1};
constexpr int kMostLingeringReads = 64;

std::string addressOf(const tcp::socket &socket)
{
    boost::system::error_code error;
    const auto address = socket.remote_endpoint(error).address();
    if (address.is_v6() && address.to_v6().is_v4_mapped()) {
        return boost::asio::ip::make_address_v4(boost::asio::ip::v4_mapped, address.to_v6())
            .to_string();
    }
    return address.to_string();
}

std::string text(beast::string_view view)
{
    return {view.data(), view.size()};
}

HttpAnswer refusalOf(const beast::error_code &error)
{
    constexpr unsigned badRequest = 400;
    constexpr unsigned contentTooLarge = 413;
    constexpr unsigned headersTooLarge = 431;
    if (error == http::error::header_limit || error == http::error::buffer_overflow) {
        return HttpAnswers::refusal(headersTooLarge, "The request is too long.");
    }
    if (error == http::error::body_limit) {
        return HttpAnswers::refusal(contentTooLarge,
                                    "Orvane Streamer takes no content with a request.");
    }
    return HttpAnswers::refusal(badRequest, "This is no request that a browser sends.");
}

/// One connection of a browser that asks for the page and its parts.
class HttpConnection : public std::enable_shared_from_this<HttpConnection> {
public:
    HttpConnection(tcp::socket socket, ConnectionCount::Slot slot, ConnectionUser &user)
        : peer_(addressOf(socket)), stream_(std::move(socket)), slot_(std::move(slot)), user_(user),
          buffer_(kLargestBuffer)
    {
    }

    void read()
    {
        parser_.emplace();
        parser_->header_limit(kLargestHeader);
        stream_.expires_after(kPatience);
        http::async_read_header(
            stream_, buffer_, *parser_,
            [self = shared_from_this()](beast::error_code error, std::size_t /*count*/) {
                self->headerCame(error);
            });
    }

private:
    void headerCame(beast::error_code error)
    {
        if (error.category() == http::make_error_code(http::error::bad_method).category() &&
            error != http::error::end_of_stream && error != http::error::partial_message) {
            send(refusalOf(error), false);
            return;
        }
        if (error) {
            return;
        }
        const HttpRequest request = readRequest();
        HttpAnswer answer = user_.answer(request);
        if (!answer.isLink) {
            send(std::move(answer), parser_->get().keep_alive() && !request.hasBody);
            return;
        }
        // What comes before the answer belongs to no WebSocket yet.
        constexpr unsigned badRequest = 400;
        constexpr unsigned noRoom = 503;
        if (buffer_.size() > 0) {
            send(HttpAnswers::refusal(badRequest, "The WebSocket began too early."), false);
        } else if (!user_.hasRoomForLink()) {
            send(HttpAnswers::refusal(noRoom, "As many pages are linked as there is room for."),
                 false);
        } else {
            openLink(std::move(stream_), {parser_->release(), std::move(answer.headers), peer_},
                     std::move(slot_), user_);
        }
    }

    [[nodiscard]] HttpRequest readRequest() const
    {
        const auto &message = parser_->get();
        HttpRequest request;
        request.method = text(message.method_string());
        request.target = text(message.target());
        const auto hosts = message.equal_range(http::field::host);
        for (auto host = hosts.first; host != hosts.second; ++host) {
            request.hosts.push_back(text(host->value()));
        }
        request.origin = text(message[http::field::origin]);
        request.cookie = text(message[http::field::cookie]);
        request.asksForLink = beast::websocket::is_upgrade(message);
        request.hasBody = parser_->chunked() || parser_->content_length().value_or(0) > 0;
        request.peer = peer_;
        return request;
    }

    void send(HttpAnswer answer, bool goesOn)
    {
        constexpr unsigned version = 11;
        const bool isHead = parser_->get().method() == http::verb::head;
        ++requests_;
        goesOn = goesOn && requests_ < kMostRequests;
        answer_.emplace(static_cast<http::status>(answer.status), version);
        for (const auto &[name, value] : answer.headers) {
            answer_->insert(name, value);
        }
        answer_->set(http::field::content_type, answer.type);
        answer_->content_length(answer.body.size());
        answer_->keep_alive(goesOn);
        if (!isHead) {
            answer_->body() = std::move(answer.body);
        }
        stream_.expires_after(kPatience);
        http::async_write(
            stream_, *answer_,
            [self = shared_from_this(), goesOn](beast::error_code error, std::size_t) {
                if (!error) {
                    goesOn ? self->read() : self->linger();
                }
            });
    }

    void linger()
    {
        beast::error_code error;
        stream_.socket().shutdown(tcp::socket::shutdown_send, error);
        stream_.expires_after(kLingering);
        readAway(kMostLingeringReads);
    }

    void readAway(int most)
    {
        stream_.async_read_some(
            boost::asio::buffer(away_),
            [self = shared_from_this(), most](beast::error_code error, std::size_t) {
                if (!error && most > 0) {
                    self->readAway(most - 1);
                }
            });
    }

    std::string peer_;
    beast::tcp_stream stream_;
    ConnectionCount::Slot slot_;
    ConnectionUser &user_;
    beast::flat_buffer buffer_;
    std::optional<Parser> parser_;
    std::optional<http::response<http::string_body>> answer_;
    std::array<char, 4096> away_{};
    int requests_ = 0;
};

} // namespace

void serveHttp(tcp::socket socket, ConnectionCount::Slot slot, ConnectionUser &user)
{
    std::make_shared<HttpConnection>(std::move(socket), std::move(slot), user)->read();
}

} // namespace orv::apps
