#pragma once

#include "OrvAnnotation/Records.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orv::apps {

/// How long a test waits for what must come.
inline constexpr std::chrono::seconds kPatience{60};

[[nodiscard]] std::vector<std::uint8_t> bytesOf(std::span<const stCommand_mgs> records);

/// One frame of a WebSocket as it came.
struct RawFrame {
    int opcode = 0;
    std::string payload;
};

/// A client of the server on a plain socket, which can also send what no browser would.
///
/// Every wait ends after `kPatience`.
class RawClient {
public:
    static constexpr int text = 1;
    static constexpr int binary = 2;
    static constexpr int close = 8;
    static constexpr int ping = 9;
    static constexpr int pong = 10;

    /// Throws `std::runtime_error` when the server cannot be reached. A small `receiveBuffer` makes
    /// the server's sending stop soon.
    explicit RawClient(std::uint16_t port, int receiveBuffer = 0);
    ~RawClient();
    RawClient(RawClient &&other) noexcept;
    RawClient &operator=(RawClient &&) = delete;

    /// False when the other side has closed.
    bool send(std::string_view bytes);
    /// How many of the bytes went before the other side took nothing for half a second.
    [[nodiscard]] std::size_t sendWhileTaken(std::string_view bytes);
    /// Says that nothing more comes.
    void endSending();
    /// Until there are so many, or the other side has closed.
    [[nodiscard]] std::string receive(std::size_t count);
    /// True once the other side has closed and all is read.
    [[nodiscard]] bool waitForEnd();
    /// The answer to a request, up to the end of what it announces.
    [[nodiscard]] std::string ask(std::string_view request);

    /// A frame as a browser sends it.
    [[nodiscard]] static std::string frame(int opcode, std::string_view payload,
                                           bool isLast = true);
    bool sendText(std::string_view payload) { return send(frame(text, payload)); }
    bool sendRecords(std::span<const stCommand_mgs> records);
    /// The next frame, pings and the goodbye answered; nothing when the other side has closed.
    [[nodiscard]] std::optional<RawFrame> next();
    /// The next text of this type; what comes before is passed over.
    [[nodiscard]] std::string nextText(std::string_view type);
    /// The records of the next messages until there are so many.
    [[nodiscard]] std::vector<stCommand_mgs> nextRecords(std::size_t count);
    /// The number with which the server closes; 0 when it just cuts the connection.
    [[nodiscard]] int closeCode();

private:
    [[nodiscard]] std::string receiveHeader();

    int socket_;
};

/// The whole answer to one request on a connection of its own.
[[nodiscard]] std::string answerTo(std::uint16_t port, std::string_view request);
/// GET with a right Host, and a cookie unless that is empty.
[[nodiscard]] std::string getRequest(std::uint16_t port, std::string_view target,
                                     std::string_view cookie = "");
/// "NAME=TOKEN" for who shows the code.
[[nodiscard]] std::string pairedCookie(std::uint16_t port, std::string_view code);
[[nodiscard]] std::string linkRequest(std::uint16_t port, std::string_view cookie,
                                      std::string_view origin);
/// Links, without a hello. Throws `std::runtime_error` with the answer when that is no WebSocket.
[[nodiscard]] RawClient linked(std::uint16_t port, std::string_view cookie, int receiveBuffer = 0);
/// Links and says hello; the `welcome` is still to be read.
[[nodiscard]] RawClient greeted(std::uint16_t port, std::string_view cookie, std::string_view name,
                                int receiveBuffer = 0);

} // namespace orv::apps
