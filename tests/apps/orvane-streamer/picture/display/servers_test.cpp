#include "apps/orvane-streamer/picture/display/Process.h"
#include "apps/orvane-streamer/picture/display/Stage.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <optional>

namespace orv::apps::test {

namespace {

/// Alone on its display, as it ends the compositor.
class CompositorThatEnds : public testing::Test, public Stage {};

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
                                       "1920x1080x24", "-noreset",   "-nolisten", "tcp"};
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

} // namespace

TEST_F(CompositorThatEnds, showsTheSameAsTheScreenAllTheTime)
{
    ASSERT_TRUE(begin({kAnna}));
    const char *pid = std::getenv("ORV_TEST_COMPOSITOR_PID");
    ASSERT_NE(pid, nullptr);

    ASSERT_EQ(::kill(std::atoi(pid), SIGTERM), 0);
    painter.fill(200, 200, 20, 10, kRed);
    ASSERT_TRUE(anna.comesToShow(210, 205, kRed, 24));
    painter.fill(200, 200, 20, 10, kBlue);
    ASSERT_TRUE(anna.comesToShow(210, 205, kBlue, 24));
    ASSERT_TRUE(anna.comesToShow(50, 50, painter.pixel(50, 50)));
    ASSERT_TRUE(anna.comesToShow(120, 120, kGreen));
    const Process compositor({"picom", "--config", "/dev/null", "--backend", "xrender"});
    for (int i = 0; i < 40; ++i) {
        const std::uint32_t colour = i % 2 == 0 ? kRed : kBlue;
        painter.recolour(colour);
        ASSERT_TRUE(anna.comesToShow(310, 305, colour)) << i;
    }

    EXPECT_TRUE(anna.comesToRest());
    EXPECT_TRUE(anna.comesToShow(120, 120, kBlue));
    EXPECT_TRUE(anna.comesToShow(50, 50, painter.pixel(50, 50)));
    EXPECT_TRUE(anna.comesToShow(1500, 900, painter.pixel(1500, 900)));
}

TEST_F(OwnServer, thatDoesNotTellOfChangesIsComparedAllTheTime)
{
    start({"-extension", "DAMAGE"});
    Stage stage;
    ASSERT_TRUE(stage.begin({Stage::kAnna}));
    const std::size_t before = stage.anna.frameCount();

    stage.painter.fill(200, 200, 20, 10, Stage::kRed);

    EXPECT_TRUE(stage.anna.comesToShow(210, 205, Stage::kRed, 24));
    EXPECT_EQ(stage.anna.boxesSince(before), (std::vector<PixelBox>{{192, 192, 32, 32}}));
    EXPECT_THAT(stage.lines(1), testing::ElementsAre(testing::HasSubstr("does not tell")));
}

TEST_F(OwnServer, thatGoesAwayEndsTheStreamAndNothingElse)
{
    start({});
    Stage stage;
    ASSERT_TRUE(stage.begin({Stage::kAnna}));
    const std::size_t before = stage.anna.frameCount();

    server->end();
    const auto lines = stage.lines(1);
    stage.stream.join(Stage::kBen);
    stage.stream.shown(Stage::kAnna, 1);
    stage.stream.setArea({0, 0, 10, 10});

    EXPECT_THAT(lines, testing::ElementsAre(testing::HasSubstr("is gone")));
    EXPECT_EQ(stage.anna.frameCount(), before);
    EXPECT_EQ(stage.ben.frameCount(), 0U);
}

TEST_F(OwnServer, withAScreenThatBecomesSmallerIsShownToItsEdge)
{
    start({});
    Stage stage;
    ASSERT_TRUE(stage.begin({Stage::kAnna}));
    const std::size_t before = stage.anna.frameCount();

    ASSERT_TRUE(stage.painter.resizeScreen(800, 600));

    ASSERT_TRUE(stage.anna.comesToHave(before + 1));
    EXPECT_EQ(stage.anna.frame(before).box, (PixelBox{0, 0, 800, 600}));
    EXPECT_EQ(stage.anna.frame(before).pictureWidth, 1920);
    stage.painter.fill(200, 200, 20, 10, Stage::kRed);
    EXPECT_TRUE(stage.anna.comesToShow(210, 205, Stage::kRed, 24));
}

TEST_F(OwnServer, withoutPixelsOf32BitsIsRefused)
{
    start({"-screen", "0", "640x480x16"});

    const auto make = [] { const Stage stage; };

    EXPECT_THROW(make(), std::runtime_error);
}

TEST_F(OwnServer, thatIsNoneIsRefused)
{
    ::setenv("DISPLAY", "nothing here", 1);

    const auto make = [] { PictureStream stream({0, 0, 10, 10}, nullptr, nullptr); };

    EXPECT_THROW(make(), std::runtime_error);
}

} // namespace orv::apps::test
