#include "RecordPointer.h"

#include "InkRecords.h"

#include <boost/beast/http.hpp>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace orv::bench {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
/// The units a pixel that the streamer tells for a screen of this size.
constexpr unsigned kScale = 8;

constexpr std::uint8_t kRecords = 1;
constexpr std::uint8_t kPicture = 3;
constexpr std::uint32_t kAnswer = 0x8000;
constexpr std::size_t kFrameNumberAt = 4;
constexpr std::chrono::microseconds kPageFrame{1'000'000 / 60};
constexpr std::size_t kLargestMessage = 64U << 20U;

} // namespace

RecordPointer::RecordPointer(std::uint16_t port, const std::string &pairingCode)
    : server_(asio::ip::address_v4::loopback(), port), host_("127.0.0.1:" + std::to_string(port))
{
    join(pair(pairingCode));
}

std::string RecordPointer::pair(const std::string &pairingCode)
{
    asio::ip::tcp::socket socket(network_);
    socket.connect(server_);
    http::request<http::empty_body> request(http::verb::get, "/?code=" + pairingCode, 11);
    request.set(http::field::host, host_);
    request.set(http::field::connection, "close");
    http::write(socket, request);
    beast::flat_buffer buffer;
    http::response<http::string_body> response;
    http::read(socket, buffer, response);
    const std::string cookie(response[http::field::set_cookie]);
    if (cookie.empty()) {
        throw std::runtime_error("the streamer refuses the pairing code");
    }
    return cookie.substr(0, cookie.find(';'));
}

void RecordPointer::join(const std::string &cookie)
{
    stream_.next_layer().connect(server_);
    stream_.next_layer().set_option(asio::ip::tcp::no_delay(true));
    stream_.read_message_max(kLargestMessage);
    stream_.auto_fragment(false);
    stream_.set_option(
        beast::websocket::stream_base::decorator([&](beast::websocket::request_type &request) {
            request.set(http::field::origin, "http://" + host_);
            request.set(http::field::cookie, cookie);
        }));
    stream_.handshake(host_, "/link");
    say(R"({"type": "hello", "name": "bench"})");
    listen();
}

void RecordPointer::listen()
{
    stream_.async_read(message_, [this](const beast::error_code &error, std::size_t) {
        if (error) {
            throw beast::system_error(error);
        }
        const auto data = message_.cdata();
        if (stream_.got_binary()) {
            hear({static_cast<const std::uint8_t *>(data.data()), data.size()});
        }
        message_.clear();
        listen();
    });
}

void RecordPointer::hear(std::span<const std::uint8_t> message)
{
    if (!message.empty() && message[0] == kRecords) {
        hearRecords(message.subspan(1));
    } else if (message.size() > kFrameNumberAt + 4 && message[0] == kPicture) {
        std::uint32_t frame = 0;
        std::memcpy(&frame, message.data() + kFrameNumberAt, sizeof frame);
        frames_.push_back(frame);
    }
}

void RecordPointer::hearRecords(std::span<const std::uint8_t> records)
{
    stCommand_mgs record;
    for (; records.size() >= sizeof record; records = records.subspan(sizeof record)) {
        std::memcpy(&record, records.data(), sizeof record);
        isOpen_ = isOpen_ || (record.wparam == kAnswer && record.ext[0] == 1);
        if (record.wparam == ink_records::undoCounts) {
            strokes_ = ink_records::undoCount(record);
        }
    }
}

void RecordPointer::prepare(unsigned strokes)
{
    const stCommand_mgs open = ink_records::open();
    send({&open, 1});
    while (!isOpen_) {
        network_.run_one();
    }
    const stCommand_mgs blue = ink_records::pen(0, 0, 0xFF);
    send({&blue, 1});
    for (unsigned number = 0; number < strokes; ++number) {
        send(ink_records::settledStroke(number, kWidth, kHeight, kScale));
        idle();
    }
    while (strokes_ < strokes) {
        network_.run_one();
    }
    const stCommand_mgs red = ink_records::pen(0xFF, 0, 0);
    send({&red, 1});
}

void RecordPointer::press(ScreenPoint at)
{
    point(ink_records::press, at);
}

void RecordPointer::move(ScreenPoint to)
{
    point(ink_records::move, to);
}

void RecordPointer::release(ScreenPoint at)
{
    point(ink_records::release, at);
}

void RecordPointer::waitUntil(std::chrono::steady_clock::time_point time)
{
    while (std::chrono::steady_clock::now() < time) {
        network_.run_one_until(frames_.empty() ? time : std::min(time, nextShow_));
        showFrames();
    }
}

void RecordPointer::idle()
{
    network_.poll();
    showFrames();
}

void RecordPointer::showFrames()
{
    const auto now = std::chrono::steady_clock::now();
    if (frames_.empty() || now < nextShow_) {
        return;
    }
    nextShow_ = now + kPageFrame;
    for (const std::uint32_t frame : std::exchange(frames_, {})) {
        say(R"({"type": "shown", "frame": )" + std::to_string(frame) + "}");
    }
}

void RecordPointer::say(const std::string &text)
{
    stream_.text(true);
    stream_.write(asio::buffer(text));
}

void RecordPointer::send(std::span<const stCommand_mgs> records)
{
    stream_.binary(true);
    stream_.write(asio::buffer(records.data(), records.size_bytes()));
}

void RecordPointer::point(std::uint32_t event, ScreenPoint at)
{
    const stCommand_mgs record =
        ink_records::mouse(event, static_cast<std::uint32_t>(at.x) * kScale,
                           static_cast<std::uint32_t>(at.y) * kScale);
    send({&record, 1});
}

} // namespace orv::bench
