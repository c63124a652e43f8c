#include "orvane-streamer/remote/HttpAnswers.h"

#include "apps/orvane-streamer/remote/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace orv::apps {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char *kCode = "0123456789ABCDEF";

class HttpAnswersTest : public ::testing::Test {
protected:
    HttpAnswersTest()
    {
        folder.write("index.html", "page");
        folder.write("main.js", "script");
        assets = std::make_unique<PageAssets>(folder.path());
        answers = std::make_unique<HttpAnswers>(
            HttpAnswers::Parts{assets.get(), &browsers, &limit, kCode, 8720, "lectern",
                               [this] { ++changes; }, [](const std::string &) {}});
    }

    static HttpRequest get(const std::string &target, const std::string &cookie = "")
    {
        HttpRequest request;
        request.method = "GET";
        request.target = target;
        request.hosts = {"127.0.0.1:8720"};
        request.cookie = cookie;
        request.peer = "192.168.1.9";
        return request;
    }
    HttpRequest link(const std::string &cookie) const
    {
        HttpRequest request = get("/link", cookie);
        request.origin = "http://127.0.0.1:8720";
        request.asksForLink = true;
        return request;
    }
    HttpAnswer answer(const HttpRequest &request) { return answers->answer(request); }
    static std::string header(const HttpAnswer &answer, const std::string &wanted)
    {
        for (const auto &[name, value] : answer.headers) {
            if (name == wanted) {
                return value;
            }
        }
        return "";
    }
    std::string cookie()
    {
        const std::string set = header(answer(get("/?code=" + std::string(kCode))), "Set-Cookie");
        return set.substr(0, set.find(';'));
    }

    TemporaryFolder folder;
    std::unique_ptr<PageAssets> assets;
    std::chrono::system_clock::time_point timeOfDay{1'000'000h};
    std::chrono::steady_clock::time_point now{1000s};
    PairedBrowsers browsers{[this] { return timeOfDay; }, {}};
    PairingLimit limit{[this] { return now; }};
    int changes = 0;
    std::unique_ptr<HttpAnswers> answers;
};

TEST_F(HttpAnswersTest, theRightCodeGivesACookieAndGoesToThePage)
{
    const HttpAnswer paired = answer(get("/?code=0123-4567-89ab-cdef"));

    EXPECT_EQ(paired.status, 303U);
    EXPECT_EQ(header(paired, "Location"), "/");
    const std::string set = header(paired, "Set-Cookie");
    EXPECT_THAT(set, StartsWith("orvane-8720="));
    EXPECT_EQ(set.substr(set.find(';')), "; Max-Age=43200; Path=/; HttpOnly; SameSite=Lax");
    EXPECT_EQ(changes, 1);
}

TEST_F(HttpAnswersTest, withTheCookieThereIsThePageAndItsParts)
{
    const std::string mine = cookie();

    EXPECT_EQ(answer(get("/", mine)).body, "page");
    EXPECT_EQ(answer(get("/main.js", mine)).body, "script");
    EXPECT_EQ(answer(get("/main.js?version=2", "other=1; " + mine + "; more=2")).body, "script");
    EXPECT_EQ(answer(get("/missing.js", mine)).status, 404U);
    EXPECT_EQ(answer(get("/../main.js", mine)).status, 404U);
    EXPECT_EQ(answer(get("/%6dain.js", mine)).status, 404U);
    EXPECT_EQ(answer(get("//", mine)).status, 404U);
}

TEST_F(HttpAnswersTest, withoutTheCookieThereIsNothing)
{
    const std::string mine = cookie();
    const std::string token = mine.substr(mine.find('=') + 1);

    for (const std::string &wrong :
         {std::string(), std::string("orvane-8720="), "orvane-8721=" + token,
          "xorvane-8720=" + token, "orvane-8720=x" + token, mine + "0", token,
          "orvane-8720=" + std::string(48, '0')}) {
        for (const std::string target : {"/", "/main.js", "/missing.js", "/link", "/?x=1"}) {
            const HttpAnswer refused = answer(get(target, wrong));
            EXPECT_EQ(refused.status, 403U) << wrong << target;
            EXPECT_THAT(refused.body, HasSubstr("pairing code")) << wrong << target;
        }
    }
}

TEST_F(HttpAnswersTest, aCookieEndsAfterTwelveHours)
{
    const std::string mine = cookie();

    timeOfDay += 12h;

    EXPECT_EQ(answer(get("/", mine)).status, 403U);
    EXPECT_EQ(answer(link(mine)).status, 403U);
}

TEST_F(HttpAnswersTest, aWrongCodeIsRefusedAndAfterTooManyTheRightOneToo)
{
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(answer(get("/?code=WRONG")).status, 403U);
    }

    const HttpAnswer refused = answer(get("/?code=" + std::string(kCode)));
    EXPECT_EQ(refused.status, 429U);
    EXPECT_EQ(header(refused, "Retry-After"), "60");
    EXPECT_EQ(header(refused, "Set-Cookie"), "");
    EXPECT_EQ(changes, 0);

    now += 60s;
    EXPECT_EQ(answer(get("/?code=" + std::string(kCode))).status, 303U);
}

TEST_F(HttpAnswersTest, aPairedBrowserIsNeverLimited)
{
    const std::string mine = cookie();
    for (int i = 0; i < 10; ++i) {
        (void)answer(get("/?code=WRONG"));
    }

    EXPECT_EQ(answer(get("/", mine)).status, 200U);
    EXPECT_EQ(answer(get("/?code=" + std::string(kCode), mine)).status, 303U);
    EXPECT_TRUE(answer(link(mine)).isLink);
}

TEST_F(HttpAnswersTest, wrongCodesOfAPairedBrowserDoNotCount)
{
    const std::string mine = cookie();

    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(answer(get("/?code=WRONG", mine)).status, 403U);
    }

    EXPECT_EQ(answer(get("/?code=" + std::string(kCode))).status, 303U);
}

TEST_F(HttpAnswersTest, thePairedBrowserKeepsItsCookieForLonger)
{
    const std::string mine = cookie();
    timeOfDay += 11h;

    const HttpAnswer again = answer(get("/?code=" + std::string(kCode), mine));

    EXPECT_THAT(header(again, "Set-Cookie"), StartsWith(mine + ";"));
    timeOfDay += 11h;
    EXPECT_EQ(answer(get("/", mine)).status, 200U);
    EXPECT_EQ(browsers.all().size(), 1U);
}

TEST_F(HttpAnswersTest, theLinkIsForThePageItselfAlone)
{
    const std::string mine = cookie();
    EXPECT_TRUE(answer(link(mine)).isLink);

    for (const std::string origin :
         {"", "null", "http://evil.example", "https://127.0.0.1:8720", "http://127.0.0.1:8721",
          "http://127.0.0.1", "http://127.0.0.1:87200"}) {
        HttpRequest request = link(mine);
        request.origin = origin;
        EXPECT_EQ(answer(request).status, 403U) << origin;
        EXPECT_FALSE(answer(request).isLink) << origin;
    }
    HttpRequest plain = link(mine);
    plain.asksForLink = false;
    EXPECT_EQ(answer(plain).status, 426U);
}

TEST_F(HttpAnswersTest, aForeignNameGetsNothingEvenWithTheRightCode)
{
    HttpRequest request = get("/?code=" + std::string(kCode));

    request.hosts = {"evil.example:8720"};
    EXPECT_EQ(answer(request).status, 403U);
    request.hosts = {};
    EXPECT_EQ(answer(request).status, 400U);
    request.hosts = {"127.0.0.1:8720", "127.0.0.1:8720"};
    EXPECT_EQ(answer(request).status, 400U);

    EXPECT_TRUE(browsers.all().empty());
}

TEST_F(HttpAnswersTest, onlyWholeGetAndHeadAreAnswered)
{
    const std::string mine = cookie();
    HttpRequest request = get("/", mine);

    for (const std::string method : {"POST", "PUT", "DELETE", "OPTIONS", "CONNECT", "get", ""}) {
        request.method = method;
        EXPECT_EQ(answer(request).status, 405U) << method;
        EXPECT_EQ(header(answer(request), "Allow"), "GET, HEAD");
    }
    request.method = "HEAD";
    EXPECT_EQ(answer(request).status, 200U);
    request.hasBody = true;
    EXPECT_EQ(answer(request).status, 413U);
}

TEST_F(HttpAnswersTest, whatIsNoPathIsRefused)
{
    for (const std::string target : {"", "*", "main.js", "http://127.0.0.1:8720/", "?code=1"}) {
        EXPECT_EQ(answer(get(target, cookie())).status, 400U) << target;
    }
}

TEST_F(HttpAnswersTest, theCodeCountsAtTheRootAlone)
{
    EXPECT_EQ(answer(get("/main.js?code=" + std::string(kCode))).status, 403U);
    EXPECT_EQ(answer(get("/?xcode=" + std::string(kCode))).status, 403U);
    EXPECT_EQ(answer(get("/?a=1&code=" + std::string(kCode))).status, 303U);
    EXPECT_EQ(answer(get("/?code=")).status, 403U);
}

TEST_F(HttpAnswersTest, everyAnswerKeepsTheBrowserFromDoingMore)
{
    std::vector<HttpAnswer> all{answer(get("/", cookie())), answer(get("/")),
                                answer(get("/?code=WRONG")), answer(link(cookie())),
                                HttpAnswers::refusal(400, "No.")};

    for (const HttpAnswer &each : all) {
        const std::string policy = header(each, "Content-Security-Policy");
        EXPECT_THAT(policy, StartsWith("default-src 'none'; script-src 'self'; style-src 'self'; "
                                       "img-src 'self' blob: data:; connect-src 'self'"));
        EXPECT_THAT(policy, HasSubstr("frame-ancestors 'none'"));
        EXPECT_THAT(policy, HasSubstr("base-uri 'none'; form-action 'none'"));
        EXPECT_EQ(header(each, "X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(header(each, "Referrer-Policy"), "no-referrer");
        EXPECT_EQ(header(each, "Cache-Control"), "no-store");
        EXPECT_EQ(header(each, "Cross-Origin-Opener-Policy"), "same-origin");
        EXPECT_EQ(header(each, "Cross-Origin-Resource-Policy"), "same-origin");
        EXPECT_THAT(header(each, "Permissions-Policy"), HasSubstr("camera=()"));
    }
    EXPECT_THAT(header(all[0], "Content-Security-Policy"),
                HasSubstr("connect-src 'self' ws://127.0.0.1:8720;"));
    EXPECT_THAT(header(all[4], "Content-Security-Policy"), Not(HasSubstr("ws:")));
}

} // namespace
} // namespace orv::apps
