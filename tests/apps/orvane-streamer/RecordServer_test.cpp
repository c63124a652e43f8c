#include "orvane-streamer/RecordServer.h"

#include "common/ClientRecords.h"
#include "orvane-streamer/RecordAssembler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;

constexpr std::chrono::seconds kPatience{60};

stCommand_mgs numbered(std::uint32_t number)
{
    return {17, 1, number, ~number, {}};
}

std::vector<std::uint8_t> bytesOf(const std::vector<stCommand_mgs> &records)
{
    std::vector<std::uint8_t> bytes(records.size() * sizeof(stCommand_mgs));
    for (std::size_t i = 0; i < records.size(); ++i) {
        std::memcpy(bytes.data() + i * sizeof(stCommand_mgs), &records[i], sizeof(stCommand_mgs));
    }
    return bytes;
}

/// What the server called back, to wait for from the test's thread.
class Received {
public:
    void addRecord(const stCommand_mgs &record)
    {
        const std::lock_guard lock(mutex_);
        numbers_.push_back(record.wparam);
        changed_.notify_all();
    }
    void addLine(const std::string &line)
    {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
        changed_.notify_all();
    }
    std::vector<std::uint32_t> waitForRecords(std::size_t count)
    {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, kPatience, [&] { return numbers_.size() >= count; });
        return numbers_;
    }
    bool waitForLine(const std::string &part)
    {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, kPatience, [&] {
            return std::any_of(lines_.begin(), lines_.end(), [&part](const std::string &line) {
                return line.find(part) != std::string::npos;
            });
        });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::uint32_t> numbers_;
    std::vector<std::string> lines_;
};

FileDescriptor connectTo(std::uint16_t port, int receiveBuffer = 0)
{
    FileDescriptor client(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (receiveBuffer > 0) {
        ::setsockopt(client.get(), SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (::connect(client.get(), reinterpret_cast<sockaddr *>(&address), sizeof address) != 0) {
        throw std::runtime_error("the server cannot be reached");
    }
    return client;
}

class RecordServerTest : public ::testing::Test {
protected:
    RecordServerTest() { server.start(); }

    Received received;
    RecordServer server{0, [this](const stCommand_mgs &record) { received.addRecord(record); },
                        [this](const std::string &line) { received.addLine(line); }};
};

TEST(RecordAssembler, makesTheSameRecordsHoweverTheBytesAreCut)
{
    const auto bytes = bytesOf({numbered(1), numbered(2), numbered(3)});
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece) {
        RecordAssembler assembler;
        std::vector<std::uint32_t> numbers;
        for (std::size_t at = 0; at < bytes.size(); at += piece) {
            assembler.add(std::span(bytes).subspan(at, std::min(piece, bytes.size() - at)),
                          [&numbers](const stCommand_mgs &r) { numbers.push_back(r.wparam); });
        }
        EXPECT_EQ(numbers, (std::vector<std::uint32_t>{1, 2, 3})) << "pieces of " << piece;
        EXPECT_EQ(assembler.pending(), 0U);
    }
}

TEST_F(RecordServerTest, handsRecordsOnInTheirOrder)
{
    const FileDescriptor client = connectTo(server.port());
    const auto bytes = bytesOf({numbered(7), numbered(8)});

    ASSERT_EQ(::send(client.get(), bytes.data(), 100, 0), 100);
    ASSERT_EQ(::send(client.get(), bytes.data() + 100, 28, 0), 28);

    EXPECT_EQ(received.waitForRecords(2), (std::vector<std::uint32_t>{7, 8}));
}

TEST_F(RecordServerTest, sendsRecordsOverTheSameConnection)
{
    const FileDescriptor client = connectTo(server.port());
    ASSERT_TRUE(received.waitForLine("a client has come"));
    const auto greeting = bytesOf({numbered(1)});
    ::send(client.get(), greeting.data(), greeting.size(), 0);
    ASSERT_EQ(received.waitForRecords(1).size(), 1U);

    server.send(numbered(21));
    server.send(numbered(22));

    std::vector<std::uint8_t> bytes(2 * sizeof(stCommand_mgs));
    ASSERT_EQ(::recv(client.get(), bytes.data(), bytes.size(), MSG_WAITALL),
              static_cast<ssize_t>(bytes.size()));
    EXPECT_EQ(bytes, bytesOf({numbered(21), numbered(22)}));
}

TEST_F(RecordServerTest, dropsAClientThatDoesNotReadAndTakesTheNextOne)
{
    const FileDescriptor slow = connectTo(server.port(), 1024);
    const auto greeting = bytesOf({numbered(1)});
    ::send(slow.get(), greeting.data(), greeting.size(), 0);
    ASSERT_EQ(received.waitForRecords(1).size(), 1U);

    // More than any buffers between the two hold.
    constexpr int flood = 200'000;
    for (int i = 0; i < flood; ++i) {
        server.send(numbered(5));
    }

    ASSERT_TRUE(received.waitForLine("too slow"));
    const FileDescriptor next = connectTo(server.port());
    ::send(next.get(), greeting.data(), greeting.size(), 0);
    EXPECT_EQ(received.waitForRecords(2).size(), 2U);
}

TEST_F(RecordServerTest, reportsAClientThatLeavesInTheMiddleOfARecord)
{
    {
        const FileDescriptor client = connectTo(server.port());
        ::send(client.get(), "abc", 3, 0);
    }

    EXPECT_TRUE(received.waitForLine("in the middle of a record (3 bytes)"));
}

TEST_F(RecordServerTest, stopsReadingButCanStillSend)
{
    const FileDescriptor client = connectTo(server.port());
    const auto greeting = bytesOf({numbered(1)});
    ::send(client.get(), greeting.data(), greeting.size(), 0);
    ASSERT_EQ(received.waitForRecords(1).size(), 1U);

    server.stopReading();
    server.send(numbered(99));

    std::vector<std::uint8_t> bytes(sizeof(stCommand_mgs));
    ASSERT_EQ(::recv(client.get(), bytes.data(), bytes.size(), MSG_WAITALL),
              static_cast<ssize_t>(bytes.size()));
    EXPECT_EQ(bytes, bytesOf({numbered(99)}));
}

TEST_F(RecordServerTest, aPortThatIsTakenIsNamed)
{
    try {
        const RecordServer second(
            server.port(), [](const stCommand_mgs &) {}, [](const std::string &) {});
        FAIL() << "two servers on one port";
    } catch (const std::runtime_error &error) {
        EXPECT_THAT(error.what(), HasSubstr("127.0.0.1:" + std::to_string(server.port())));
    }
}

} // namespace
} // namespace orv::apps
