#include "apps/orvane-streamer/remote/TestServer.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::ThrowsMessage;

class ServerLifetime : public RemoteServerTest {};

TEST_F(ServerLifetime, afterStoppingTheClientsStayAndTheHostIsLeftAlone)
{
    RawClient anna = page("Anna");
    anna.sendRecords(std::vector{numbered(1)});
    ASSERT_EQ(host.waitForRecords(1).size(), 1U);

    server->stopReading();
    const std::size_t linesBefore = host.lines().size();
    anna.sendRecords(std::vector{numbered(2)});
    anna.sendText(R"({"type":"shown","frame":1})");
    anna.sendText(R"({"type":"dropPen"})");
    EXPECT_THAT(anna.nextText("clients"), HasSubstr(R"("pen":0)"));
    server->send(numbered(7));

    EXPECT_EQ(anna.nextRecords(1).at(0).lparam, 7U);
    EXPECT_EQ(host.recordCount(), 1U);
    EXPECT_EQ(host.lines().size(), linesBefore);
}

TEST_F(ServerLifetime, stoppingLiftsWhatIsDown)
{
    RawClient anna = page("Anna");
    const stCommand_mgs press{kPlugin, 1, 0xEFFD, 5, {0, 0, 0, 3, 0, 0, 0, 4}};
    anna.sendRecords(std::vector{press});
    ASSERT_EQ(host.waitForRecords(1).size(), 1U);

    server->stopReading();

    stCommand_mgs release = press;
    release.lparam = 6;
    EXPECT_EQ(bytesOf(host.waitForRecords(2)), bytesOf(std::vector{press, release}));
}

TEST_F(ServerLifetime, stoppingWaitsForAHostThatWaitsForAnotherThread)
{
    RawClient anna = page("Anna");
    host.block();
    anna.sendRecords(std::vector{numbered(1)});
    ASSERT_TRUE(host.waitUntilBlocked());

    auto stopped = std::async(std::launch::async, [this] { server->stopReading(); });
    server->send(numbered(7));
    const auto got = anna.nextRecords(1);
    host.unblock();

    ASSERT_EQ(stopped.wait_for(kPatience), std::future_status::ready);
    EXPECT_EQ(got.size(), 1U);
    EXPECT_EQ(host.recordCount(), 1U);
}

TEST_F(ServerLifetime, stoppingTwiceOrBeforeTheStartDoesNoHarm)
{
    server->stopReading();
    server->stopReading();

    RemoteServer unstarted(options(), host);
    unstarted.send(numbered(1));
    unstarted.stopReading();
}

TEST_F(ServerLifetime, atTheEndThePagesGetWhatWaitsAndAGoodbye)
{
    RawClient anna = page("Anna");
    const std::vector<std::uint8_t> package(3'000'000, 0x5A);
    std::thread reader([&anna, &package] {
        auto frame = anna.next();
        while (frame && frame->payload.size() != package.size() + 1) {
            frame = anna.next();
        }
        EXPECT_TRUE(frame);
        EXPECT_EQ(anna.closeCode(), 1001);
    });

    server->sendPackage(package);
    server.reset();

    reader.join();
}

TEST_F(ServerLifetime, endsSoonWhoeverIsConnected)
{
    RawClient silent(port);
    RawClient half(port);
    half.send("GET / HT");
    RawClient anna = page("Anna");
    RawClient eve = greeted(port, cookie(), "Eve", 2048);
    ASSERT_TRUE(host.waitForLine("Eve (127.0.0.1) has come"));
    server->sendPicture(2, std::make_shared<const std::vector<std::uint8_t>>(9'000'000, 3));
    const auto begin = std::chrono::steady_clock::now();

    server.reset();

    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(8));
    EXPECT_TRUE(anna.waitForEnd());
    EXPECT_TRUE(silent.waitForEnd());
    EXPECT_TRUE(half.waitForEnd());
    EXPECT_TRUE(eve.waitForEnd());
}

TEST_F(ServerLifetime, aPortThatIsTakenIsNamed)
{
    EXPECT_THAT([this] { RemoteServer(options(port), host); },
                ThrowsMessage<std::runtime_error>(
                    HasSubstr(fmt::format("Cannot listen on 127.0.0.1:{}: ", port))));
}

TEST_F(ServerLifetime, whatIsNoAddressOfThisMachineIsNamed)
{
    for (const std::string address :
         {"", "localhost", "127.0.0.1:80", "192.0.2.1", "::ffff:0:0:1:1"}) {
        RemoteServer::Options wanted = options();
        wanted.address = address;
        EXPECT_THAT([&] { RemoteServer(wanted, host); },
                    ThrowsMessage<std::runtime_error>(HasSubstr(address)));
    }
}

TEST_F(ServerLifetime, onAllAddressesItKnowsOldOnesInTheirOldForm)
{
    if (!std::filesystem::exists("/proc/net/if_inet6")) {
        GTEST_SKIP() << "this machine knows no such addresses";
    }
    RemoteServer::Options wanted = options();
    wanted.address = "::";
    RemoteServer open(wanted, host);
    open.start();

    (void)pairedCookie(open.port(), kCode);

    EXPECT_TRUE(host.waitForLine("a browser at 127.0.0.1 was paired"));
}

TEST_F(ServerLifetime, aPageThatIsNotThereIsNamed)
{
    RemoteServer::Options wanted = options();
    wanted.assets = folder.path("missing");

    EXPECT_THAT([&] { RemoteServer(wanted, host); },
                ThrowsMessage<std::runtime_error>(HasSubstr(wanted.assets)));
}

TEST_F(ServerLifetime, startedAgainOnItsPortItKnowsItsBrowsers)
{
    server.reset();
    browsersFile = folder.path("state/browsers");
    makeServer();
    const std::string mine = pairedCookie(port, kCode);
    const RawClient stillOpen = greeted(port, mine, "Anna");

    server.reset();
    makeServer(port);

    EXPECT_THAT(answerTo(port, getRequest(port, "/", mine)), StartsWith("HTTP/1.1 200 "));
    EXPECT_NO_THROW((void)linked(port, mine));
}

TEST_F(ServerLifetime, withoutAFileItForgetsThem)
{
    const std::string mine = cookie();

    server.reset();
    makeServer(port);

    EXPECT_THAT(answerTo(port, getRequest(port, "/", mine)), StartsWith("HTTP/1.1 403 "));
}

} // namespace
} // namespace orv::apps
