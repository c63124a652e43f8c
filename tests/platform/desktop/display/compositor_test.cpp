#include "platform/desktop/display/Desk.h"

#include <QProcess>
#include <gmock/gmock.h>

#include <signal.h>

#include <cstdlib>
#include <memory>

namespace orv::platform::test {

namespace {

constexpr std::uint32_t kGreen = 0x00ff00;
constexpr std::uint32_t kRed = 0xff0000;
const Rect kWholeScreen = Rect::make(0, 0, 1920, kScreenHeight);
const QStringList kCompositor = {QStringLiteral("--config"), QStringLiteral("/dev/null"),
                                 QStringLiteral("--backend"), QStringLiteral("xrender")};

/// A compositor that runs as long as the object lives.
class Compositor {
public:
    Compositor() { process_.start(QStringLiteral("picom"), kCompositor); }
    ~Compositor()
    {
        process_.terminate();
        process_.waitForFinished();
    }
    Compositor(const Compositor &) = delete;
    Compositor &operator=(const Compositor &) = delete;

private:
    QProcess process_;
};

bool isBlended()
{
    return ports().windowServer().isBlended();
}

} // namespace

class WithCompositor : public Desk {};

TEST_F(WithCompositor, blendsTranslucentInkWithWhatLiesBelow)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.background = {1.0, 0.0, 0.0, 0.5};
    overlay.surface().orderFront();

    EXPECT_TRUE(comesToShow(500, 400, 0x807f00));
    EXPECT_THAT(desktop().describe(), testing::HasSubstr("blended by a compositor"));
}

TEST_F(WithCompositor, appliesTheWindowsOwnAlpha)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.background = {1.0, 0.0, 0.0, 1.0};
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(500, 400, kRed));

    overlay.surface().setAlpha(0.5);

    EXPECT_TRUE(comesToShow(500, 400, 0x807f00));
}

/// Alone on its display, as it ends the compositor.
class CompositorThatEnds : public Desk {};

TEST_F(CompositorThatEnds, switchesToShapedWindowsAndBack)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.surface().setCursorRects({{kWholeScreen, std::make_shared<Image>(13, 17), {}}});
    overlay.surface().orderFront();
    client.movePointer(300, 350);
    client.button(1, true);
    client.movePointer(700, 350);
    client.button(1, false);
    ASSERT_TRUE(comesToShow(500, 350, kRed));
    ASSERT_TRUE(isBlended());
    const auto showsTheCursor = [this] { return client.pointerLook().width == 13; };
    ASSERT_TRUE(pumpUntil(showsTheCursor));

    const char *pid = std::getenv("ORV_TEST_COMPOSITOR_PID");
    ASSERT_NE(pid, nullptr);
    ASSERT_EQ(::kill(std::atoi(pid), SIGTERM), 0);

    ASSERT_TRUE(pumpUntil([] { return !isBlended(); }));
    EXPECT_TRUE(pumpUntil(showsTheCursor)) << "on the window that takes the mouse now";
    EXPECT_TRUE(comesToShow(500, 350, kRed));
    EXPECT_TRUE(comesToShow(500, 340, kGreen));

    const Compositor compositor;
    ASSERT_TRUE(pumpUntil([] { return isBlended(); }));
    EXPECT_TRUE(pumpUntil(showsTheCursor));
    EXPECT_TRUE(comesToShow(500, 350, kRed));
    EXPECT_TRUE(comesToShow(500, 340, kGreen));
    overlay.background = {1.0, 0.0, 0.0, 0.5};
    overlay.surface().setNeedsDisplay(kWholeScreen);
    EXPECT_TRUE(comesToShow(500, 450, 0x807f00));
}

/// On a server with no compositor and no window manager.
class Bare : public Desk {};

TEST_F(Bare, showsTranslucentInkInItsOwnColourAndNothingElse)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.ink = {1.0, 0.0, 0.0, 0.5};
    overlay.surface().orderFront();

    client.movePointer(300, 350);
    client.button(1, true);
    client.movePointer(700, 350);
    client.button(1, false);

    EXPECT_TRUE(comesToShow(500, 350, kRed));
    EXPECT_TRUE(comesToShow(500, 340, kGreen));
    EXPECT_THAT(desktop().describe(), testing::HasSubstr("shaped to their ink"));
}

TEST_F(Bare, losesNoInkWhereThereIsMoreThanAShapeCanHold)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    // A quarter of a million runs: a line of two pixels every eight.
    overlay.onDraw = [](GraphicsContext &context) {
        context.setFillColor({1.0, 0.0, 0.0, 1.0});
        for (int x = 0; x < 1920; x += 8) {
            context.fillRect(Rect::make(x, 0, 2, kScreenHeight), CompositingOperation::copy);
        }
    };
    overlay.surface().orderFront();

    EXPECT_TRUE(comesToShow(400, 300, kRed));
    EXPECT_TRUE(comesToShow(401, 555, kRed));
    EXPECT_TRUE(comesToShow(404, 300, kGreen));

    overlay.onDraw = nullptr;
    overlay.surface().setNeedsDisplay(Rect::make(0, 0, 1920, kScreenHeight));

    EXPECT_TRUE(comesToShow(400, 300, kGreen));
}

TEST_F(Bare, takesBackWhatIsErased)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.background = {1.0, 0.0, 0.0, 1.0};
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(500, 400, kRed));

    overlay.background = Color::clear();
    overlay.surface().setNeedsDisplay(kWholeScreen);

    EXPECT_TRUE(comesToShow(500, 400, kGreen));
}

} // namespace orv::platform::test
