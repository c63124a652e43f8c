#include "apps/orvane-streamer/remote/TestServer.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <vector>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;

stCommand_mgs mouse(std::uint32_t event, std::uint8_t x, std::uint8_t y)
{
    return {kPlugin, 1, 0xEFFD, event, {0, 0, 0, x, 0, 0, 0, y}};
}

class PenOverTheLink : public RemoteServerTest {
protected:
    void expectRecords(const std::vector<stCommand_mgs> &wanted)
    {
        EXPECT_EQ(bytesOf(host.waitForRecords(wanted.size())), bytesOf(wanted));
    }
};

TEST_F(PenOverTheLink, aPageIsWelcomedAndLearnsWhoIsThere)
{
    RawClient anna = greeted(port, cookie(), "Anna's tablet");

    EXPECT_EQ(anna.nextText("welcome"),
              R"({"height":1080,"id":1,"plugin":17,"scale":8,"type":"welcome","width":1920})");
    EXPECT_EQ(anna.nextText("clients"),
              R"({"list":[{"id":1,"name":"Anna's tablet"}],"pen":1,"type":"clients"})");
    EXPECT_TRUE(host.waitForLine("pen to Anna's tablet"));
    EXPECT_TRUE(host.waitForLine("came 1"));
}

TEST_F(PenOverTheLink, isAskedForAndGiven)
{
    RawClient anna = page("Anna");
    RawClient ben = page("Ben");

    ben.sendText(R"({"type":"askPen"})");
    EXPECT_EQ(anna.nextText("penAsked"), R"({"by":2,"name":"Ben","type":"penAsked"})");
    anna.sendText(R"({"type":"givePen","to":2})");

    EXPECT_THAT(ben.nextText("clients"), HasSubstr(R"("pen":2)"));
    EXPECT_TRUE(host.waitForLine("pen to Ben"));
    ben.sendRecords(std::vector{numbered(5)});
    expectRecords({numbered(5)});
}

TEST_F(PenOverTheLink, isAskedForAndKept)
{
    RawClient anna = page("Anna");
    RawClient ben = page("Ben");

    ben.sendText(R"({"type":"askPen"})");
    EXPECT_NE(anna.nextText("penAsked"), "");
    anna.sendText(R"({"type":"refusePen","to":2})");

    EXPECT_EQ(ben.nextText("penRefused"), R"({"type":"penRefused"})");
}

TEST_F(PenOverTheLink, whatIsDownIsLiftedBeforeItIsPassedOn)
{
    RawClient anna = page("Anna");
    RawClient ben = page("Ben");

    anna.sendRecords(std::vector{mouse(5, 1, 2), mouse(10, 3, 4)});
    anna.sendText(R"({"type":"givePen","to":2})");
    EXPECT_THAT(ben.nextText("clients"), HasSubstr(R"("pen":2)"));
    ben.sendRecords(std::vector{mouse(5, 9, 9)});

    expectRecords({mouse(5, 1, 2), mouse(10, 3, 4), mouse(6, 3, 4), mouse(5, 9, 9)});
}

TEST_F(PenOverTheLink, aPageThatIsLostInTheMiddleOfAStrokeEndsIt)
{
    {
        RawClient anna = page("Anna");
        anna.sendRecords(std::vector{mouse(5, 1, 2), mouse(10, 3, 4)});
        (void)host.waitForRecords(2);
    }

    expectRecords({mouse(5, 1, 2), mouse(10, 3, 4), mouse(6, 3, 4)});
    EXPECT_TRUE(host.waitForLine("left 1"));
    EXPECT_TRUE(host.waitForLine("Anna (127.0.0.1) "));
}

TEST_F(PenOverTheLink, aPageThatIsPutOutInTheMiddleOfAStrokeEndsIt)
{
    RawClient anna = page("Anna");

    anna.sendRecords(std::vector{mouse(8, 1, 2)});
    anna.sendText("nonsense");

    expectRecords({mouse(8, 1, 2), mouse(9, 1, 2)});
}

TEST_F(PenOverTheLink, isFreeWhenItsHolderGoesAndWhoeverAsksGetsIt)
{
    RawClient ben = [this] {
        const RawClient anna = page("Anna");
        return page("Ben");
    }();
    EXPECT_THAT(ben.nextText("clients"), HasSubstr(R"("pen":0)"));

    ben.sendText(R"({"type":"askPen"})");

    EXPECT_THAT(ben.nextText("clients"), HasSubstr(R"("pen":2)"));
}

} // namespace
} // namespace orv::apps
