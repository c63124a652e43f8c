#include "apps/orvane-streamer/remote/TestServer.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;
using ::testing::ThrowsMessage;

constexpr const char *kHello = R"({"type":"hello","name":"Eve"})";

/// Anna's page is there and has the pen; whatever another one does, she can go on.
class HostileClients : public RemoteServerTest {
protected:
    void expectAnnaGoesOn()
    {
        const std::size_t before = host.recordCount();
        anna.sendRecords(std::vector{numbered(1)});
        EXPECT_EQ(host.waitForRecords(before + 1).size(), before + 1);
    }

    RawClient anna = page("Anna");
};

TEST_F(HostileClients, whatIsNoMessageEndsTheirLink)
{
    const std::vector<std::pair<std::string, int>> wrong{
        {RawClient::frame(RawClient::binary, ""), 1007},
        {RawClient::frame(RawClient::binary, "x"), 1007},
        {RawClient::frame(RawClient::binary, std::string(63, 'x')), 1007},
        {RawClient::frame(RawClient::binary, std::string(65, 'x')), 1007},
        {RawClient::frame(RawClient::text, ""), 1007},
        {RawClient::frame(RawClient::text, "{}"), 1007},
        {RawClient::frame(RawClient::text, kHello), 1007},
        {RawClient::frame(RawClient::text, "{\"type\":\"askPen\xff\"}"), 1007},
        {RawClient::frame(RawClient::text, std::string(4097, ' ')), 1009},
        {RawClient::frame(RawClient::binary, std::string(65'536 + 64, 'x')), 1009},
        {RawClient::frame(3, "reserved"), 1002},
        {RawClient::frame(0, "goes on with nothing"), 1002},
        {std::string("\x82\x05"
                     "abcde"),
         1002},
        {std::string("\xF2\x80\x00\x00\x00\x00", 6), 1002},
        {std::string("\x89\xFE\x00\x7E\x00\x00\x00\x00", 8), 1002}};
    for (const auto &[bytes, code] : wrong) {
        RawClient eve = page("Eve");

        eve.send(bytes);

        EXPECT_EQ(eve.closeCode(), code) << testing::PrintToString(bytes.substr(0, 20));
        EXPECT_TRUE(eve.waitForEnd());
    }
    expectAnnaGoesOn();
}

TEST_F(HostileClients, whoDoesNotSayWhoItIsFirstIsPutOut)
{
    RawClient one = linked(port, cookie());
    RawClient two = linked(port, cookie());

    one.sendRecords(std::vector{numbered(1)});
    two.sendText(R"({"type":"askPen"})");

    EXPECT_EQ(one.closeCode(), 1007);
    EXPECT_EQ(two.closeCode(), 1007);
    expectAnnaGoesOn();
}

TEST_F(HostileClients, theLongestMessagesAreTaken)
{
    RawClient ben = page("Ben");

    ben.sendText(R"({"type":"shown","frame":1)" + std::string(4096 - 26, ' ') + "}");
    anna.sendRecords(std::vector<stCommand_mgs>(1024, numbered(1)));

    EXPECT_TRUE(host.waitForLine("shown 2 1"));
    EXPECT_EQ(host.waitForRecords(1024).size(), 1024U);
}

TEST_F(HostileClients, aFloodOfTextsEndsTheirLink)
{
    RawClient eve = page("Eve");
    std::string flood;
    for (int i = 0; i < 5000; ++i) {
        flood += RawClient::frame(RawClient::text, R"({"type":"shown","frame":1})");
    }

    eve.send(flood);

    EXPECT_TRUE(host.waitForLine("Eve (127.0.0.1) sends too many messages"));
    EXPECT_TRUE(eve.waitForEnd());
    expectAnnaGoesOn();
}

TEST_F(HostileClients, whoNeverReadsIsPutOutAndTheOthersGetAll)
{
    RawClient eve = greeted(port, cookie(), "Eve", 2048);
    ASSERT_TRUE(host.waitForLine("Eve (127.0.0.1) has come"));
    constexpr std::uint32_t count = 60'000;

    for (std::uint32_t i = 0; i < count; ++i) {
        server->send(numbered(i));
        // Anna reads as she goes along; what she has not read yet stays below the limit.
        constexpr std::uint32_t lot = 1000;
        if (i % lot == lot - 1) {
            ASSERT_EQ(anna.nextRecords(lot).size(), lot);
        }
    }

    EXPECT_TRUE(host.waitForLine("Eve (127.0.0.1) takes less than is sent"));
    EXPECT_TRUE(host.waitForLine("left 2"));
    expectAnnaGoesOn();
}

TEST_F(HostileClients, whoTakesNoPicturesIsPutOut)
{
    RawClient eve = greeted(port, cookie(), "Eve", 2048);
    ASSERT_TRUE(host.waitForLine("Eve (127.0.0.1) has come"));
    const auto picture = std::make_shared<const std::vector<std::uint8_t>>(4'000'000, 3);

    for (int i = 0; i < 6; ++i) {
        server->sendPicture(2, picture);
    }

    EXPECT_TRUE(host.waitForLine("Eve (127.0.0.1) takes less than is sent"));
    expectAnnaGoesOn();
}

TEST_F(HostileClients, whoGivesNoSignOfLifeIsPutOutAndThePenIsFree)
{
    // Anna answers no ping from here on, and takes in no frame.
    EXPECT_TRUE(host.waitForLine("gives no sign of life"));
    EXPECT_TRUE(host.waitForLine("left 1"));
    EXPECT_TRUE(host.waitForLine("pen to "));
    EXPECT_TRUE(anna.waitForEnd());
}

TEST_F(HostileClients, thereIsRoomForThirtyTwoPages)
{
    std::vector<RawClient> pages;
    for (int i = 1; i < 32; ++i) {
        pages.push_back(page("Ben"));
    }

    EXPECT_THAT([this] { (void)linked(port, cookie()); },
                ThrowsMessage<std::runtime_error>(HasSubstr("HTTP/1.1 503 ")));
    pages.pop_back();
    ASSERT_TRUE(host.waitForLine("left 32"));
    EXPECT_NO_THROW((void)page("Cleo"));
}

} // namespace
} // namespace orv::apps
