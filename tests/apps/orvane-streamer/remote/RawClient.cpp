#include "apps/orvane-streamer/remote/RawClient.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace orv::apps {

namespace {

constexpr std::size_t kShortPayload = 126;
constexpr std::size_t kLongPayload = 65536;

void appendBigEndian(std::string &bytes, std::uint64_t value, int count)
{
    for (int i = count - 1; i >= 0; --i) {
        bytes += static_cast<char>((value >> (8 * i)) & 0xFFU);
    }
}

std::uint64_t bigEndian(std::string_view bytes)
{
    std::uint64_t value = 0;
    for (const char byte : bytes) {
        value = value << 8U | static_cast<std::uint8_t>(byte);
    }
    return value;
}

std::size_t announcedLength(std::string_view header)
{
    constexpr std::string_view name = "Content-Length: ";
    const std::size_t at = header.find(name);
    return at == std::string_view::npos
               ? 0
               : std::stoul(std::string(header.substr(at + name.size(), 20)));
}

} // namespace

std::vector<std::uint8_t> bytesOf(std::span<const stCommand_mgs> records)
{
    std::vector<std::uint8_t> bytes(records.size() * sizeof(stCommand_mgs));
    for (std::size_t i = 0; i < records.size(); ++i) {
        std::memcpy(bytes.data() + i * sizeof(stCommand_mgs), &records[i], sizeof(stCommand_mgs));
    }
    return bytes;
}

RawClient::RawClient(std::uint16_t port, int receiveBuffer)
    : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    if (receiveBuffer > 0) {
        ::setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    }
    const timeval patience{kPatience.count(), 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    ::setsockopt(socket_, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (::connect(socket_, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0) {
        ::close(socket_);
        throw std::runtime_error("the server cannot be reached");
    }
}

RawClient::~RawClient()
{
    if (socket_ >= 0) {
        ::close(socket_);
    }
}

RawClient::RawClient(RawClient &&other) noexcept : socket_(std::exchange(other.socket_, -1)) {}

bool RawClient::send(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::size_t RawClient::sendWhileTaken(std::string_view bytes)
{
    constexpr int stillness = 500;
    std::size_t sent = 0;
    pollfd waited{socket_, POLLOUT, 0};
    while (sent < bytes.size() && ::poll(&waited, 1, stillness) == 1) {
        const ssize_t count =
            ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && errno != EAGAIN) {
            break;
        }
        sent += count < 0 ? 0 : static_cast<std::size_t>(count);
    }
    return sent;
}

void RawClient::endSending()
{
    ::shutdown(socket_, SHUT_WR);
}

std::string RawClient::receive(std::size_t count)
{
    std::string bytes(count, '\0');
    std::size_t size = 0;
    while (size < count) {
        const ssize_t got = ::recv(socket_, bytes.data() + size, count - size, 0);
        if (got <= 0) {
            break;
        }
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
    return bytes;
}

bool RawClient::waitForEnd()
{
    std::array<char, 65536> bytes{};
    while (true) {
        const ssize_t got = ::recv(socket_, bytes.data(), bytes.size(), 0);
        if (got <= 0) {
            return got == 0 || errno == ECONNRESET;
        }
    }
}

std::string RawClient::receiveHeader()
{
    std::string header;
    while (!header.ends_with("\r\n\r\n")) {
        const std::string byte = receive(1);
        if (byte.empty()) {
            break;
        }
        header += byte;
    }
    return header;
}

std::string RawClient::ask(std::string_view request)
{
    send(request);
    std::string answer = receiveHeader();
    if (!request.starts_with("HEAD ")) {
        answer += receive(announcedLength(answer));
    }
    return answer;
}

std::string RawClient::frame(int opcode, std::string_view payload, bool isLast)
{
    constexpr std::string_view mask = "\x12\x34\x56\x78";
    std::string bytes;
    bytes += static_cast<char>((isLast ? 0x80 : 0) | opcode);
    if (payload.size() < kShortPayload) {
        bytes += static_cast<char>(0x80U | payload.size());
    } else if (payload.size() < kLongPayload) {
        bytes += static_cast<char>(0x80 | 126);
        appendBigEndian(bytes, payload.size(), 2);
    } else {
        bytes += static_cast<char>(0x80 | 127);
        appendBigEndian(bytes, payload.size(), 8);
    }
    bytes += mask;
    for (std::size_t i = 0; i < payload.size(); ++i) {
        bytes += static_cast<char>(payload[i] ^ mask[i % mask.size()]);
    }
    return bytes;
}

bool RawClient::sendRecords(std::span<const stCommand_mgs> records)
{
    const auto bytes = bytesOf(records);
    return send(frame(binary, {reinterpret_cast<const char *>(bytes.data()), bytes.size()}));
}

std::optional<RawFrame> RawClient::next()
{
    RawFrame whole;
    // The server's pings would keep the wait going for ever.
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (std::chrono::steady_clock::now() < deadline) {
        const std::string head = receive(2);
        if (head.size() < 2) {
            return std::nullopt;
        }
        const int opcode = head[0] & 0x0F;
        std::size_t length = static_cast<std::size_t>(head[1] & 0x7F);
        if (length == 126 || length == 127) {
            length = bigEndian(receive(length == 126 ? 2 : 8));
        }
        const std::string payload = receive(length);
        if (payload.size() < length) {
            return std::nullopt;
        }
        if (opcode == ping) {
            send(frame(pong, payload));
            continue;
        }
        if (opcode == close) {
            send(frame(close, payload));
        }
        whole.opcode = opcode == 0 ? whole.opcode : opcode;
        whole.payload += payload;
        if ((static_cast<unsigned char>(head[0]) & 0x80U) != 0) {
            return whole;
        }
    }
    return std::nullopt;
}

std::string RawClient::nextText(std::string_view type)
{
    while (const auto frame = next()) {
        if (frame->opcode == text &&
            frame->payload.find(fmt::format("\"type\":\"{}\"", type)) != std::string::npos) {
            return frame->payload;
        }
    }
    return "";
}

std::vector<stCommand_mgs> RawClient::nextRecords(std::size_t count)
{
    std::vector<stCommand_mgs> records;
    while (records.size() < count) {
        const auto frame = next();
        if (!frame) {
            break;
        }
        if (frame->opcode != binary || frame->payload[0] != 1) {
            continue;
        }
        for (std::size_t at = 1; at < frame->payload.size(); at += sizeof(stCommand_mgs)) {
            std::memcpy(&records.emplace_back(), frame->payload.data() + at, sizeof(stCommand_mgs));
        }
    }
    return records;
}

int RawClient::closeCode()
{
    while (const auto frame = next()) {
        if (frame->opcode == close && frame->payload.size() >= 2) {
            return static_cast<int>(bigEndian(std::string_view(frame->payload).substr(0, 2)));
        }
    }
    return 0;
}

std::string answerTo(std::uint16_t port, std::string_view request)
{
    return RawClient(port).ask(request);
}

std::string getRequest(std::uint16_t port, std::string_view target, std::string_view cookie)
{
    return fmt::format("GET {} HTTP/1.1\r\nHost: 127.0.0.1:{}\r\n{}\r\n", target, port,
                       cookie.empty() ? "" : fmt::format("Cookie: {}\r\n", cookie));
}

std::string pairedCookie(std::uint16_t port, std::string_view code)
{
    const std::string answer = answerTo(port, getRequest(port, fmt::format("/?code={}", code)));
    constexpr std::string_view name = "Set-Cookie: ";
    const std::size_t at = answer.find(name);
    if (at == std::string::npos) {
        throw std::runtime_error("not paired: " + answer);
    }
    const std::size_t begin = at + name.size();
    return answer.substr(begin, answer.find(';', begin) - begin);
}

std::string linkRequest(std::uint16_t port, std::string_view cookie, std::string_view origin)
{
    return fmt::format("GET /link HTTP/1.1\r\nHost: 127.0.0.1:{}\r\nCookie: {}\r\nOrigin: {}\r\n"
                       "Connection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
                       "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n",
                       port, cookie, origin);
}

RawClient linked(std::uint16_t port, std::string_view cookie, int receiveBuffer)
{
    RawClient client(port, receiveBuffer);
    const std::string origin = fmt::format("http://127.0.0.1:{}", port);
    const std::string answer = client.ask(linkRequest(port, cookie, origin));
    if (!answer.starts_with("HTTP/1.1 101 ")) {
        throw std::runtime_error("not linked: " + answer);
    }
    return client;
}

RawClient greeted(std::uint16_t port, std::string_view cookie, std::string_view name,
                  int receiveBuffer)
{
    RawClient client = linked(port, cookie, receiveBuffer);
    client.sendText(fmt::format(R"({{"type":"hello","name":"{}"}})", name));
    return client;
}

} // namespace orv::apps
