#include "orvane-streamer/remote/WebSocketLink.h"

#include "orvane-streamer/remote/LinkWatch.h"

#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket/error.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <algorithm>
#include <cstddef>
#include <memory>

namespace orv::apps {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace websocket = beast::websocket;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kLargestMessage = 65536;
// So much of a message is sent at once; how long that takes shows whether the page still reads.
constexpr std::size_t kPiece = 65536;
// For the handshake, and for the other side's agreement to the end.
constexpr std::chrono::seconds kHandshakePatience{1};
constexpr std::chrono::seconds kEndPatience{1};

constexpr const char *kLeft = "has left";
constexpr const char *kOverrun = "takes less than is sent and is put out";

std::string lossOf(const beast::error_code &error)
{
    // The last one: it was gone before the server had answered its goodbye.
    if (error == websocket::error::closed || error == asio::error::eof ||
        error == asio::error::not_connected) {
        return kLeft;
    }
    if (error == websocket::error::message_too_big) {
        return "sent a message that is too long and is put out";
    }
    if (error.category() == websocket::make_error_code(websocket::error::closed).category()) {
        return "breaks the rules of WebSockets and is put out: " + error.message();
    }
    return "is lost: " + error.message();
}

class WebSocketLink : public PageLink, public std::enable_shared_from_this<WebSocketLink> {
public:
    WebSocketLink(beast::tcp_stream stream, std::string peer, ConnectionCount::Slot slot,
                  PageLinkUser &user)
        : slot_(std::move(slot)), peer_(std::move(peer)), socket_(std::move(stream)),
          endTimer_(socket_.get_executor()), user_(user), buffer_(kLargestMessage),
          watch_(Clock::now())
    {
        slot_.becomeLink();
    }

    void open(LinkRequest request);

    [[nodiscard]] const std::string &peer() const override { return peer_; }
    void sendRecord(const stCommand_mgs &record) override { sent(queue_.addRecord(record)); }
    void sendText(OutgoingQueue::Text kind, std::string text) override
    {
        sent(queue_.addText(kind, std::move(text)));
    }
    void sendPicture(RemoteMessage picture) override
    {
        sent(queue_.addPicture(std::move(picture)));
    }
    void sendPackage(RemoteMessage package) override
    {
        sent(queue_.addPackage(std::move(package)));
    }
    void noteGreeting() override { watch_.noteGreeting(); }
    void pauseReading() override;
    void resumeReading() override;
    void look(Clock::time_point now) override;
    void end(LinkEnd why) override;

private:
    void sent(bool hadRoom);
    void read();
    void messageCame(const beast::error_code &error);
    void write();
    void pieceWritten(const beast::error_code &error, std::size_t count);
    void ping();
    void close();
    /// Cuts the connection, and tells the user once this call is over.
    void lose(const std::string &how);

    ConnectionCount::Slot slot_;
    std::string peer_;
    websocket::stream<beast::tcp_stream> socket_;
    asio::steady_timer endTimer_;
    PageLinkUser &user_;
    ClientID id_ = 0;
    beast::flat_buffer buffer_;
    OutgoingQueue queue_;
    OutgoingQueue::Message message_;
    std::size_t written_ = 0;
    LinkWatch watch_;
    bool isOpen_ = false;
    bool isReading_ = false;
    bool isPaused_ = false;
    bool isWriting_ = false;
    bool isPinging_ = false;
    bool isClosing_ = false;
    bool isLost_ = false;
    std::optional<LinkEnd> end_;
};

void WebSocketLink::open(LinkRequest request)
{
    id_ = user_.linkCame(shared_from_this());
    beast::get_lowest_layer(socket_).expires_never();
    // Silence is watched from outside, since nobody hears a page that is not read from.
    socket_.set_option({kHandshakePatience, websocket::stream_base::none(), false});
    socket_.set_option(websocket::stream_base::decorator(
        [headers = std::move(request.headers)](websocket::response_type &response) {
            for (const auto &[name, value] : headers) {
                response.set(name, value);
            }
        }));
    socket_.read_message_max(kLargestMessage);
    socket_.auto_fragment(false);
    socket_.control_callback(
        [this](websocket::frame_type, beast::string_view) { watch_.noteLife(Clock::now()); });
    socket_.async_accept(request.request, [self = shared_from_this()](beast::error_code error) {
        if (error) {
            self->lose(lossOf(error));
            return;
        }
        self->isOpen_ = true;
        self->read();
        self->write();
    });
}

void WebSocketLink::sent(bool hadRoom)
{
    if (!hadRoom) {
        lose(kOverrun);
        return;
    }
    write();
}

void WebSocketLink::read()
{
    if (!isOpen_ || isReading_ || isPaused_ || isLost_ || end_) {
        return;
    }
    isReading_ = true;
    socket_.async_read(buffer_, [self = shared_from_this()](beast::error_code error, std::size_t) {
        self->isReading_ = false;
        self->messageCame(error);
    });
}

void WebSocketLink::messageCame(const beast::error_code &error)
{
    if (error) {
        lose(lossOf(error));
        return;
    }
    if (isLost_ || end_) {
        return;
    }
    watch_.noteLife(Clock::now());
    const auto data = buffer_.data();
    if (socket_.got_text()) {
        user_.textCame(id_, {static_cast<const char *>(data.data()), data.size()});
    } else {
        user_.bytesCame(id_, {static_cast<const std::uint8_t *>(data.data()), data.size()});
    }
    buffer_.consume(buffer_.size());
    read();
}

void WebSocketLink::pauseReading()
{
    isPaused_ = true;
    watch_.notePause();
}

void WebSocketLink::resumeReading()
{
    isPaused_ = false;
    watch_.noteResumed(Clock::now());
    read();
}

void WebSocketLink::write()
{
    if (!isOpen_ || isWriting_ || isClosing_ || isLost_) {
        return;
    }
    const bool isBegun = message_.bytes != nullptr || !message_.text.empty();
    if (!isBegun && queue_.empty()) {
        if (end_) {
            close();
        }
        return;
    }
    if (!isBegun) {
        message_ = queue_.take();
        written_ = 0;
        socket_.binary(message_.bytes != nullptr);
    }
    const auto whole = message_.bytes != nullptr ? asio::buffer(*message_.bytes)
                                                 : asio::buffer(std::as_const(message_.text));
    const auto piece = asio::buffer(whole + written_, kPiece);
    const bool isLast = written_ + piece.size() == whole.size();
    isWriting_ = true;
    watch_.noteSendingBegun(Clock::now());
    socket_.async_write_some(
        isLast, piece,
        [self = shared_from_this(), isLast](beast::error_code error, std::size_t count) {
            self->isWriting_ = false;
            self->watch_.noteSendingDone();
            if (isLast) {
                self->message_ = {};
            }
            self->pieceWritten(error, count);
        });
}

void WebSocketLink::pieceWritten(const beast::error_code &error, std::size_t count)
{
    if (error) {
        lose(lossOf(error));
        return;
    }
    written_ += count;
    // A page hears no ping before the long message in front of it.
    if (count == kPiece) {
        watch_.noteLife(Clock::now());
    }
    write();
}

void WebSocketLink::look(Clock::time_point now)
{
    if (isLost_ || end_) {
        return;
    }
    switch (watch_.look(now)) {
    case LinkWatch::Verdict::well:
        break;
    case LinkWatch::Verdict::pingDue:
        ping();
        break;
    case LinkWatch::Verdict::silent:
        lose("gives no sign of life any more and is put out");
        break;
    case LinkWatch::Verdict::notReading:
        lose(kOverrun);
        break;
    case LinkWatch::Verdict::neverGreeted:
        lose("did not say who it is and is put out");
        break;
    }
}

void WebSocketLink::ping()
{
    if (!isOpen_ || isPinging_) {
        return;
    }
    isPinging_ = true;
    // What fails here fails for reading too.
    socket_.async_ping(
        {}, [self = shared_from_this()](beast::error_code /*error*/) { self->isPinging_ = false; });
}

void WebSocketLink::end(LinkEnd why)
{
    if (end_ || isLost_) {
        return;
    }
    end_ = why;
    endTimer_.expires_after(kEndPatience);
    endTimer_.async_wait([self = shared_from_this()](beast::error_code error) {
        if (!error) {
            self->lose(kLeft);
        }
    });
    write();
}

void WebSocketLink::close()
{
    isClosing_ = true;
    socket_.async_close(
        static_cast<websocket::close_code>(*end_),
        [self = shared_from_this()](beast::error_code /*error*/) { self->lose(kLeft); });
}

void WebSocketLink::lose(const std::string &how)
{
    if (isLost_) {
        return;
    }
    isLost_ = true;
    endTimer_.cancel();
    beast::get_lowest_layer(socket_).close();
    asio::post(socket_.get_executor(),
               [self = shared_from_this(), how] { self->user_.linkLost(self->id_, how); });
}

} // namespace

void openLink(beast::tcp_stream stream, LinkRequest request, ConnectionCount::Slot slot,
              PageLinkUser &user)
{
    auto link =
        std::make_shared<WebSocketLink>(std::move(stream), request.peer, std::move(slot), user);
    link->open(std::move(request));
}

} // namespace orv::apps
