#include "apps/orvane-streamer/remote/TestServer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace orv::apps {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class RecordsOverTheLink : public RemoteServerTest {
protected:
    static std::vector<std::uint32_t> numbersOf(const std::vector<stCommand_mgs> &records)
    {
        std::vector<std::uint32_t> numbers;
        for (const stCommand_mgs &record : records) {
            numbers.push_back(record.lparam);
        }
        return numbers;
    }
    static std::vector<stCommand_mgs> numbers(std::uint32_t first, std::uint32_t count)
    {
        std::vector<stCommand_mgs> records;
        for (std::uint32_t i = 0; i < count; ++i) {
            records.push_back(numbered(first + i));
        }
        return records;
    }
    static std::vector<std::uint32_t> counted(std::uint32_t count)
    {
        std::vector<std::uint32_t> all(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            all[i] = i;
        }
        return all;
    }
};

TEST_F(RecordsOverTheLink, reachTheHostInTheirOrder)
{
    RawClient client = page("Anna");

    client.sendRecords(numbers(0, 2));
    client.sendRecords(numbers(2, 1));

    EXPECT_THAT(numbersOf(host.waitForRecords(3)), ElementsAre(0, 1, 2));
}

TEST_F(RecordsOverTheLink, reachTheHostWhereverTheFrameIsCut)
{
    RawClient client = page("Anna");
    const auto bytes = bytesOf(numbers(0, 2));
    const std::string frame = RawClient::frame(
        RawClient::binary, {reinterpret_cast<const char *>(bytes.data()), bytes.size()});

    for (std::size_t cut = 1; cut < frame.size(); ++cut) {
        client.send(frame.substr(0, cut));
        client.send(frame.substr(cut));
    }

    EXPECT_EQ(host.waitForRecords(2 * (frame.size() - 1)).size(), 2 * (frame.size() - 1));
}

TEST_F(RecordsOverTheLink, aMessageInSeveralFramesIsOne)
{
    RawClient client = page("Anna");
    const auto bytes = bytesOf(numbers(0, 2));
    const std::string payload(bytes.begin(), bytes.end());

    client.send(RawClient::frame(RawClient::binary, payload.substr(0, 50), false));
    client.send(RawClient::frame(RawClient::ping, "in between"));
    client.send(RawClient::frame(0, payload.substr(50), true));

    EXPECT_THAT(numbersOf(host.waitForRecords(2)), ElementsAre(0, 1));
}

TEST_F(RecordsOverTheLink, aHundredThousandInABurstAllArriveThoughTheHostIsSlow)
{
    RawClient client = page("Anna");
    constexpr std::uint32_t count = 100'000;
    host.block();

    std::thread sender([&client] {
        constexpr std::uint32_t lot = 1000;
        for (std::uint32_t first = 0; first < count; first += lot) {
            client.sendRecords(numbers(first, lot));
        }
    });
    const bool blocked = host.waitUntilBlocked();
    host.unblock();
    sender.join();

    EXPECT_TRUE(blocked);
    EXPECT_EQ(numbersOf(host.waitForRecords(count)), counted(count));
    EXPECT_LE(host.largestLot(), 1024U);
}

TEST_F(RecordsOverTheLink, aHostThatWaitsMakesTheSenderWaitAndNoOther)
{
    RawClient holder = page("Anna");
    RawClient other = page("Ben");
    host.block();
    // More than the buffers between the two hold.
    constexpr std::uint32_t count = 400'000;
    const auto bytes = bytesOf(numbers(0, count));
    std::string frames;
    constexpr std::size_t lot = 1000 * sizeof(stCommand_mgs);
    for (std::size_t at = 0; at < bytes.size(); at += lot) {
        frames += RawClient::frame(RawClient::binary,
                                   {reinterpret_cast<const char *>(bytes.data()) + at, lot});
    }

    const std::size_t taken = holder.sendWhileTaken(frames);
    other.sendText(R"({"type":"shown","frame":3})");
    const bool othersGoOn = host.waitForLine("shown 2 3");
    host.unblock();
    holder.send(std::string_view(frames).substr(taken));

    EXPECT_LT(taken, frames.size());
    EXPECT_TRUE(othersGoOn);
    EXPECT_EQ(numbersOf(host.waitForRecords(count)), counted(count));
}

TEST_F(RecordsOverTheLink, ofOthersThanTheHolderAreDropped)
{
    RawClient holder = page("Anna");
    RawClient other = page("Ben");

    other.sendRecords(numbers(50, 1));
    other.sendText(R"({"type":"shown","frame":1})");
    ASSERT_TRUE(host.waitForLine("shown 2 1"));
    holder.sendRecords(numbers(7, 1));

    EXPECT_THAT(numbersOf(host.waitForRecords(1)), ElementsAre(7));
}

TEST_F(RecordsOverTheLink, forAnotherPluginAreDropped)
{
    RawClient client = page("Anna");
    auto records = numbers(0, 3);
    records[0].pluginID = 18;
    records[1].pluginID = 0;

    client.sendRecords(records);

    EXPECT_THAT(numbersOf(host.waitForRecords(2)), ElementsAre(1, 2));
}

TEST_F(RecordsOverTheLink, ofTheLibraryReachAllPages)
{
    RawClient one = page("Anna");
    RawClient two = page("Ben");

    server->send(numbered(21));
    server->send(numbered(22));

    EXPECT_THAT(numbersOf(one.nextRecords(2)), ElementsAre(21, 22));
    EXPECT_THAT(numbersOf(two.nextRecords(2)), ElementsAre(21, 22));
}

TEST_F(RecordsOverTheLink, thatTellTheStateReachNewcomers)
{
    const stCommand_mgs shown{kPlugin, 1, 0, 0, {1, 0, 1, 1}};
    const stCommand_mgs counts{kPlugin, 1, 17, 0, {3, 0, 1}};
    server->send(shown);
    server->send(counts);
    server->send(numbered(9));

    RawClient client = greeted(port, cookie(), "Anna");

    EXPECT_EQ(bytesOf(client.nextRecords(2)), bytesOf(std::vector{shown, counts}));
}

TEST_F(RecordsOverTheLink, packagesReachTheHolderAlone)
{
    RawClient holder = page("Anna");
    RawClient other = page("Ben");
    // Longer than one piece, and no multiple of it.
    const std::vector<std::uint8_t> package(1'000'003, 0x5A);

    server->sendPackage(package);
    server->send(numbered(1));

    auto frame = holder.next();
    while (frame && frame->opcode == RawClient::text) {
        frame = holder.next();
    }
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->payload, "\x02" + std::string(package.begin(), package.end()));
    EXPECT_THAT(numbersOf(other.nextRecords(1)), ElementsAre(1));
}

TEST_F(RecordsOverTheLink, picturesReachTheirPage)
{
    RawClient one = page("Anna");
    RawClient two = page("Ben");
    const auto picture =
        std::make_shared<const std::vector<std::uint8_t>>(std::vector<std::uint8_t>{3, 1, 0, 0, 1});

    server->sendPicture(2, picture);
    server->sendPicture(99, picture);

    const auto frame = two.next();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->payload, std::string(picture->begin(), picture->end()));
}

TEST_F(RecordsOverTheLink, theDisplaysNewSizeReachesThePages)
{
    RawClient client = page("Anna");

    server->setDisplay({1280, 800, 4});

    const std::string text = client.nextText("display");
    EXPECT_THAT(text, HasSubstr(R"("width":1280)"));
    EXPECT_THAT(text, HasSubstr(R"("scale":4)"));
}

} // namespace
} // namespace orv::apps
