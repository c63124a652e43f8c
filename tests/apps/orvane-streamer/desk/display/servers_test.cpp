#include "apps/orvane-streamer/desk/Records.h"
#include "apps/orvane-streamer/picture/display/Process.h"
#include "orvane-streamer/desk/DesktopInput.h"
#include "orvane-streamer/desk/Diagnosis.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <optional>

namespace orv::apps::test {

namespace {

using testing::HasSubstr;
using testing::SizeIs;

/// On an X server that the test starts and ends itself.
class OwnServer : public testing::Test {
protected:
    OwnServer() : display_(std::getenv("DISPLAY")) {}
    ~OwnServer() override { ::setenv("DISPLAY", display_.c_str(), 1); }

    void start(const std::vector<std::string> &options)
    {
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
        std::vector<std::string> words{"Xvfb",         "-displayfd", "1",         "-screen", "0",
                                       "1280x1024x24", "-noreset",   "-nolisten", "tcp"};
        words.insert(words.end(), options.begin(), options.end());
        server.emplace(words, pipe[1]);
        ::close(pipe[1]);
        std::string name(":");
        for (char letter = 0; ::read(pipe[0], &letter, 1) == 1 && letter != '\n';) {
            name += letter;
        }
        ::close(pipe[0]);
        ASSERT_GT(name.size(), 1U);
        ::setenv("DISPLAY", name.c_str(), 1);
    }

    std::optional<Process> server;

private:
    std::string display_;
};

std::string refusal()
{
    try {
        const DesktopInput input({0, 0, 1});
        return "none";
    } catch (const std::runtime_error &error) {
        return error.what();
    }
}

} // namespace

TEST_F(OwnServer, takesNoInputWithoutTheExtension)
{
    start({"-extension", "XTEST"});

    const std::string reason = refusal();
    const std::string text = diagnosis(readDesktop());

    EXPECT_THAT(reason, HasSubstr("no XTEST extension"));
    EXPECT_THAT(text, HasSubstr("Keys and mouse    no: the X server takes no input"));
}

TEST_F(OwnServer, mayBeMissing)
{
    ::setenv("DISPLAY", ":no-such-display", 1);

    const std::string reason = refusal();
    const DesktopFacts facts = readDesktop();

    EXPECT_THAT(reason, HasSubstr("The X display cannot be reached"));
    EXPECT_FALSE(facts.isConnected);
    EXPECT_THAT(obstacle(facts).value_or(""),
                HasSubstr("\":no-such-display\" cannot be connected"));
}

TEST_F(OwnServer, mayEndWhileItIsInUse)
{
    start({});
    DesktopInput input({0, 0, 1});
    input.take(key('A', true));

    server->end();

    for (int i = 0; i < 3; ++i) {
        input.take(mouse(5, 10, 10));
        input.take(key('B', true));
        input.take(typed(0x6F22));
        input.setPlace({5, 5, 2});
    }
}

TEST_F(OwnServer, tellsItsDisplaysAndScale)
{
    start({});
    ASSERT_EQ(std::system("printf 'Xft.dpi:\\t192\\n' | xrdb -merge -"), 0);

    const DesktopFacts facts = readDesktop();

    ASSERT_THAT(facts.displays, SizeIs(1));
    EXPECT_EQ(facts.displays.front().width, 1280);
    EXPECT_EQ(facts.displays.front().height, 1024);
    EXPECT_EQ(facts.fontDpi, 192.0);
}

TEST_F(OwnServer, tellsItsScreenWithoutKnowingDisplays)
{
    start({"-extension", "RANDR"});

    const DesktopFacts facts = readDesktop();

    EXPECT_FALSE(facts.has("RANDR"));
    ASSERT_THAT(facts.displays, SizeIs(1));
    EXPECT_EQ(facts.displays.front().width, 1280);
}

TEST(WithDesktop, tellsItsWindowManagerAndCompositor)
{
    const DesktopFacts facts = readDesktop();

    EXPECT_EQ(facts.windowManager, "Openbox");
    EXPECT_TRUE(facts.hasCompositor);
    EXPECT_TRUE(facts.hasAlphaVisual);
    EXPECT_FALSE(facts.isXwayland);
    EXPECT_EQ(obstacle(facts), std::nullopt);
    EXPECT_EQ(warning(facts), std::nullopt);
}

TEST(Bare, hasAServerAndNothingElse)
{
    const DesktopFacts facts = readDesktop();

    EXPECT_TRUE(facts.isConnected);
    EXPECT_THAT(facts.vendor, HasSubstr("X.Org"));
    EXPECT_EQ(facts.windowManager, "");
    EXPECT_FALSE(facts.hasCompositor);
    EXPECT_EQ(facts.fontDpi, std::nullopt);
    EXPECT_EQ(obstacle(facts), std::nullopt);
    EXPECT_NE(warning(facts), std::nullopt);
}

} // namespace orv::apps::test
