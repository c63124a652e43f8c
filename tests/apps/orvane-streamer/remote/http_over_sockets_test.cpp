#include "apps/orvane-streamer/remote/TestServer.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace orv::apps {
namespace {

using ::testing::AnyOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class HttpOverSockets : public RemoteServerTest {
protected:
    void expectServerIsWell()
    {
        EXPECT_THAT(answerTo(port, getRequest(port, "/", cookie())), StartsWith("HTTP/1.1 200 "));
    }
};

TEST_F(HttpOverSockets, pairsAndServesThePage)
{
    const std::string page = answerTo(port, getRequest(port, "/", cookie()));

    EXPECT_THAT(page, StartsWith("HTTP/1.1 200 "));
    EXPECT_THAT(page, HasSubstr("Content-Type: text/html; charset=utf-8\r\n"));
    EXPECT_THAT(page, HasSubstr("X-Content-Type-Options: nosniff\r\n"));
    EXPECT_THAT(page, EndsWith("\r\n\r\n<!doctype html><title>Remote</title>"));
    EXPECT_TRUE(host.waitForLine("a browser at 127.0.0.1 was paired"));
}

TEST_F(HttpOverSockets, servesSeveralRequestsOverOneConnection)
{
    RawClient client(port);
    const std::string mine = cookie();

    EXPECT_THAT(client.ask(getRequest(port, "/", mine)), EndsWith("</title>"));
    EXPECT_THAT(client.ask(getRequest(port, "/remote.js", mine)), EndsWith("export {};"));
    EXPECT_THAT(client.ask(getRequest(port, "/none.js", mine)), StartsWith("HTTP/1.1 404 "));
    client.send(getRequest(port, "/", mine) + getRequest(port, "/remote.js", mine));
    EXPECT_THAT(client.ask(""), EndsWith("</title>"));
    EXPECT_THAT(client.ask(""), EndsWith("export {};"));
}

TEST_F(HttpOverSockets, theHeadOfAPageHasNoPage)
{
    RawClient client(port);
    std::string request = getRequest(port, "/", cookie());
    request.replace(0, 3, "HEAD");
    request.insert(request.size() - 2, "Connection: close\r\n");
    client.send(request);

    const std::string all = client.receive(100'000);

    EXPECT_THAT(all, HasSubstr("Content-Length: 36\r\n"));
    EXPECT_THAT(all, EndsWith("\r\n\r\n"));
}

TEST_F(HttpOverSockets, aRequestMayComeInPieces)
{
    RawClient client(port);
    const std::string request = getRequest(port, "/remote.js", cookie());

    for (std::size_t i = 0; i + 1 < request.size(); ++i) {
        client.send(request.substr(i, 1));
    }

    EXPECT_THAT(client.ask(request.substr(request.size() - 1)), EndsWith("export {};"));
}

TEST_F(HttpOverSockets, nonsenseIsRefusedInWords)
{
    const std::string host127 = fmt::format("Host: 127.0.0.1:{}\r\n", port);
    for (const std::string &request :
         {std::string("nonsense\r\n\r\n"), std::string("GET / HTTP/9.9\r\n\r\n"),
          std::string("GET /\r\n\r\n"), "GET / HTTP/1.1\r\n" + host127 + "Bad Header: x\r\n\r\n",
          std::string("GET / HTTP/1.1\r\n\r\n"), "GET / HTTP/1.1\r\n" + host127 + host127 + "\r\n",
          "GET / HTTP/1.1\r\n" + host127 + "Content-Length: x\r\n\r\n",
          std::string("\x16\x03\x01\x02\0\x01\0 tls\r\n\r\n", 15),
          "GET http://127.0.0.1/ HTTP/1.1\r\n" + host127 + "\r\n",
          "POST / HTTP/1.1\r\n" + host127 + "Content-Length: 3\r\n\r\nabc",
          "POST / HTTP/1.1\r\n" + host127 + "Content-Length: 99999999999\r\n\r\nabc",
          "GET / HTTP/1.1\r\n" + host127 +
              "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0\r\n\r\n",
          "GET /" + std::string(9000, 'x') + " HTTP/1.1\r\n" + host127 + "\r\n",
          "GET / HTTP/1.1\r\n" + host127 + "X: " + std::string(9000, 'x') + "\r\n\r\n"}) {
        const std::string answer = answerTo(port, request);
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 4")) << request;
        EXPECT_THAT(answer, HasSubstr("Content-Security-Policy: default-src 'none'")) << request;
        EXPECT_THAT(answer, EndsWith(".\n")) << request;
    }
    expectServerIsWell();
}

TEST_F(HttpOverSockets, garbageBytesHurtNobody)
{
    std::string garbage;
    for (std::uint32_t i = 0, state = 12345; i < 60'000; ++i) {
        state = state * 1'664'525U + 1'013'904'223U;
        garbage += static_cast<char>(state >> 24U);
    }

    for (std::size_t begin = 0; begin < garbage.size(); begin += 600) {
        RawClient client(port);
        client.send(garbage.substr(begin, 600));
        client.endSending();
        EXPECT_TRUE(client.waitForEnd());
    }

    expectServerIsWell();
}

TEST_F(HttpOverSockets, halfARequestAndSilenceEndsAfterAWhile)
{
    RawClient client(port);
    client.send("GET / HTTP/1.1\r\nHost: 127.");

    expectServerIsWell();

    EXPECT_TRUE(client.waitForEnd());
}

TEST_F(HttpOverSockets, aForeignNameOrOriginIsRefused)
{
    const std::string mine = cookie();
    std::string foreignHost = getRequest(port, "/", mine);
    foreignHost.replace(foreignHost.find("127.0.0.1"), 9, "evil.test");

    EXPECT_THAT(answerTo(port, foreignHost), StartsWith("HTTP/1.1 403 "));
    EXPECT_THAT(answerTo(port, linkRequest(port, mine, "http://evil.test")),
                StartsWith("HTTP/1.1 403 "));
    EXPECT_THAT(answerTo(port, linkRequest(port, mine, "")), StartsWith("HTTP/1.1 403 "));
}

TEST_F(HttpOverSockets, aCookieThatIsNotKnownIsRefusedBeforeTheWebSocket)
{
    const std::string origin = fmt::format("http://127.0.0.1:{}", port);
    const std::string unknown = fmt::format("orvane-{}={}", port, std::string(48, 'a'));

    EXPECT_THAT(answerTo(port, linkRequest(port, unknown, origin)), StartsWith("HTTP/1.1 403 "));
    EXPECT_THAT(answerTo(port, linkRequest(port, "", origin)), StartsWith("HTTP/1.1 403 "));
}

TEST_F(HttpOverSockets, theCookieOfAnotherServerIsRefused)
{
    FakeHost otherHost;
    RemoteServer other(options(), otherHost);
    other.start();
    std::string foreign = pairedCookie(other.port(), kCode);
    foreign = fmt::format("orvane-{}{}", port, foreign.substr(foreign.find('=')));

    EXPECT_THAT(answerTo(port, getRequest(port, "/", foreign)), StartsWith("HTTP/1.1 403 "));
}

TEST_F(HttpOverSockets, tooManyWrongCodesHaveToWait)
{
    const std::string mine = cookie();
    for (int i = 0; i < 10; ++i) {
        EXPECT_THAT(answerTo(port, getRequest(port, "/?code=WRONG")), StartsWith("HTTP/1.1 403 "));
    }

    const std::string refused = answerTo(port, getRequest(port, "/?code=WRONG"));
    EXPECT_THAT(refused, StartsWith("HTTP/1.1 429 "));
    EXPECT_THAT(refused, HasSubstr("Retry-After: "));
    EXPECT_THAT(answerTo(port, getRequest(port, "/", mine)), StartsWith("HTTP/1.1 200 "));
}

TEST_F(HttpOverSockets, twoHundredConnectionsAtOnceAreServed)
{
    const std::string mine = cookie();
    std::vector<RawClient> clients;
    for (int i = 0; i < 200; ++i) {
        clients.emplace_back(port);
    }

    for (RawClient &client : clients) {
        client.send(getRequest(port, "/remote.js", mine));
    }

    for (RawClient &client : clients) {
        EXPECT_THAT(client.ask(""), EndsWith("export {};"));
    }
}

TEST_F(HttpOverSockets, oneConnectionTooManyIsClosedAtOnceAndLaterThereIsRoom)
{
    const std::string mine = cookie();
    std::vector<std::optional<RawClient>> clients(300);
    for (auto &client : clients) {
        client.emplace(port);
        client->send(getRequest(port, "/remote.js", mine));
    }
    int served = 0;
    for (auto &client : clients) {
        served += client->ask("").ends_with("export {};") ? 1 : 0;
    }
    // The connection of the pairing may be counted still.
    EXPECT_THAT(served, AnyOf(255, 256));

    clients.clear();

    std::string answer;
    for (int i = 0; i < 1000 && answer.empty(); ++i) {
        answer = answerTo(port, getRequest(port, "/", mine));
    }
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 "));
}

TEST_F(HttpOverSockets, framesBeforeTheAnswerAreRefused)
{
    RawClient client(port);
    const std::string origin = fmt::format("http://127.0.0.1:{}", port);

    const std::string answer = client.ask(linkRequest(port, cookie(), origin) +
                                          RawClient::frame(RawClient::text, "early"));

    EXPECT_THAT(answer, Not(HasSubstr(" 101 ")));
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 400 "));
}

} // namespace
} // namespace orv::apps
