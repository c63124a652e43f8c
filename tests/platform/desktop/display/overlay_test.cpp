#include "platform/desktop/display/Desk.h"

#include "platform/foundation/NotificationCenter.h"

#include <X11/keysym.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include <QImage>
#include <QWindow>

namespace orv::platform::test {

namespace {

/// Seconds by which the order of the windows was looked at.
constexpr double kLongAfterAChange = 0.5;
constexpr std::uint32_t kGreen = 0x00ff00;
constexpr std::uint32_t kRed = 0xff0000;
constexpr std::uint32_t kBlue = 0x0000ff;
const Rect kWholeScreen = Rect::make(0, 0, 1920, kScreenHeight);

void drag(XClient &client, int fromX, int y, int toX)
{
    client.movePointer(fromX, y);
    client.button(1, true);
    for (int x = fromX; x < toX; x += 10) {
        client.movePointer(x, y);
    }
    client.movePointer(toX, y);
    client.button(1, false);
}

/// Of two windows that are shown on the screen itself.
bool isAbove(xcb_window_t upper, xcb_window_t lower)
{
    const std::vector<xcb_window_t> order = ports().x().topLevels();
    const auto place = std::find(order.begin(), order.end(), lower);
    return place != order.end() && std::find(place, order.end(), upper) != order.end();
}

bool hasSeen(const InkWindow &window, EventType type)
{
    return std::any_of(window.events.begin(), window.events.end(),
                       [type](const Event &event) { return event.type == type; });
}

} // namespace

/// What holds on every display, with a compositor and without.
class AnyDisplay : public Desk {};

TEST_F(AnyDisplay, showsAStrokeWhereItIsDrawnAndTheWindowBelowBesideIt)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.surface().orderFront();

    drag(client, 300, 350, 700);

    EXPECT_TRUE(comesToShow(500, 350, kRed));
    EXPECT_TRUE(comesToShow(695, 350, kRed));
    EXPECT_TRUE(comesToShow(500, 340, kGreen));
    EXPECT_TRUE(comesToShow(500, 360, kGreen));
    EXPECT_EQ(client.pressesSeen(), 0);
}

TEST_F(AnyDisplay, deliversEveryMotionInWindowPointsWithYUp)
{
    InkWindow overlay(Rect::make(100, 80, 800, 900));
    overlay.surface().orderFront();

    client.movePointer(200, 300);
    client.button(1, true);
    for (int x = 201; x <= 400; ++x) {
        client.movePointer(x, 300);
    }
    client.button(1, false);

    ASSERT_TRUE(pumpUntil([&] { return hasSeen(overlay, EventType::leftMouseUp); }));
    std::vector<Point> dragged;
    for (const Event &event : overlay.events) {
        if (event.type == EventType::leftMouseDragged) {
            dragged.push_back(event.location);
        }
    }
    ASSERT_EQ(dragged.size(), 200U);
    // The window's top left corner lies at (100, 100) of the screen and it is 900 high.
    EXPECT_EQ(dragged.front(), (Point{101, 700}));
    EXPECT_EQ(dragged.back(), (Point{300, 700}));
}

TEST_F(AnyDisplay, letsClicksThroughAWindowThatIgnoresTheMouseAndTakesThemAgainLater)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.background = {0.0, 0.0, 1.0, 1.0};
    overlay.surface().setIgnoresMouseEvents(true);
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(500, 400, kBlue));

    client.movePointer(500, 400);
    client.button(1, true);
    client.button(1, false);

    EXPECT_TRUE(pumpUntil([&] { return client.pressesSeen() == 1; }));
    EXPECT_TRUE(overlay.events.empty());

    overlay.surface().setIgnoresMouseEvents(false);
    client.button(1, true);
    client.button(1, false);

    EXPECT_TRUE(pumpUntil([&] { return hasSeen(overlay, EventType::leftMouseUp); }));
    EXPECT_EQ(client.pressesSeen(), 1);
}

TEST_F(AnyDisplay, keepsAWindowOfAHigherLevelInFront)
{
    InkWindow toolbox(Rect::make(400, 400, 300, 300), 5);
    toolbox.background = {0.0, 0.0, 1.0, 1.0};
    InkWindow canvas(kWholeScreen, 1);
    canvas.background = {1.0, 0.0, 0.0, 1.0};

    toolbox.surface().orderFront();
    canvas.surface().orderFront();

    EXPECT_TRUE(comesToShow(500, 500, kBlue));
    EXPECT_TRUE(comesToShow(300, 500, kRed));
    EXPECT_THAT(
        ports().windowServer().orderedWindows(),
        testing::ElementsAre(toolbox.surface().windowNumber(), canvas.surface().windowNumber()));

    canvas.surface().setLevel(9);

    EXPECT_TRUE(comesToShow(500, 500, kRed));
    EXPECT_THAT(
        ports().windowServer().orderedWindows(),
        testing::ElementsAre(canvas.surface().windowNumber(), toolbox.surface().windowNumber()));
}

TEST_F(AnyDisplay, comesBackAboveAWindowThatIsPutOverIt)
{
    InkWindow overlay(kWholeScreen);
    overlay.background = {1.0, 0.0, 0.0, 1.0};
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(500, 400, kRed));

    // The server maps it in front of all others.
    const xcb_window_t other = client.showWindow(200, 200, 600, 400, kGreen, true);

    EXPECT_TRUE(pumpUntil([&] { return isAbove(overlay.nativeWindow(), other); }));
    EXPECT_TRUE(comesToShow(500, 400, kRed));
}

TEST_F(AnyDisplay, staysBelowAnotherWindowOfTheHost)
{
    const xcb_window_t other = client.showWindow(1000, 200, 100, 100, kGreen, true);
    InkWindow overlay(kWholeScreen);
    overlay.surface().orderFront();
    ASSERT_TRUE(pumpUntil([&] { return isAbove(overlay.nativeWindow(), other); }));
    QWindow dialog;
    dialog.setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
    dialog.setGeometry(200, 200, 600, 400);
    dialog.show();
    dialog.raise();
    const auto ofDialog = static_cast<xcb_window_t>(dialog.winId());
    ASSERT_TRUE(pumpUntil([&] { return isAbove(ofDialog, overlay.nativeWindow()); }));

    client.move(other, 1010, 200);
    bool isLongAfter = false;
    const auto wait =
        ports().mainThread().after(kLongAfterAChange, [&isLongAfter] { isLongAfter = true; });

    ASSERT_TRUE(pumpUntil([&] { return isLongAfter; }));
    EXPECT_TRUE(isAbove(ofDialog, overlay.nativeWindow()));
}

TEST_F(AnyDisplay, givesTheKeyWindowTheKeysWithTheirCodesAndFlags)
{
    InkWindow overlay(Rect::make(0, 0, 100, 100));
    overlay.surface().orderFront();
    overlay.surface().makeKey();
    EXPECT_TRUE(overlay.surface().isKey());

    for (const std::uint32_t keysym : {XK_Escape, XK_a}) {
        client.key(keysym, true);
        client.key(keysym, false);
    }
    client.key(XK_Shift_L, true);
    client.key(XK_a, true);
    client.key(XK_a, false);
    client.key(XK_Shift_L, false);

    ASSERT_TRUE(pumpUntil([&] { return overlay.events.size() == 8; }));
    EXPECT_EQ(overlay.events[0].type, EventType::keyDown);
    EXPECT_EQ(overlay.events[0].keyCode, key::escape);
    EXPECT_EQ(overlay.events[1].type, EventType::keyUp);
    EXPECT_EQ(overlay.events[2].keyCode, 0);
    EXPECT_EQ(overlay.events[2].characters, u"a");
    EXPECT_EQ(overlay.events[4].type, EventType::flagsChanged);
    EXPECT_EQ(overlay.events[4].keyCode, 56);
    EXPECT_EQ(overlay.events[4].modifierFlags, modifier::shift);
    EXPECT_EQ(overlay.events[5].characters, u"A");
    EXPECT_EQ(overlay.events[5].modifierFlags, modifier::shift);
    EXPECT_EQ(overlay.events[7].type, EventType::flagsChanged);
    EXPECT_EQ(overlay.events[7].modifierFlags, 0U);
}

TEST_F(AnyDisplay, givesTheKeyboardBackWhenTheKeyWindowGoes)
{
    const xcb_window_t green = showGreenWindow();
    client.focus(green);
    ASSERT_TRUE(pumpUntil([&] { return client.focused() == green; }));
    InkWindow overlay(Rect::make(0, 0, 100, 100));
    overlay.surface().orderFront();
    overlay.surface().makeKey();
    ASSERT_TRUE(pumpUntil([&] { return client.focused() != green; }));

    overlay.surface().orderOut();

    EXPECT_TRUE(pumpUntil([&] { return client.focused() == green; }));
    EXPECT_FALSE(overlay.surface().isKey());
}

TEST_F(AnyDisplay, takesTheKeyboardAtAClickUnlessItIsANonactivatingPanel)
{
    const xcb_window_t green = showGreenWindow();
    client.focus(green);
    ASSERT_TRUE(pumpUntil([&] { return client.focused() == green; }));
    InkWindow panel(Rect::make(0, 0, 100, 100));
    panel.surface().setStyleMask(style::nonactivatingPanel);
    panel.surface().orderFront();
    InkWindow window(Rect::make(100, 0, 100, 100));
    window.surface().orderFront();

    client.movePointer(50, kScreenHeight - 50);
    client.button(1, true);
    client.button(1, false);
    ASSERT_TRUE(pumpUntil([&] { return hasSeen(panel, EventType::leftMouseUp); }));
    EXPECT_FALSE(panel.surface().isKey());
    EXPECT_TRUE(pumpUntil([&] { return client.focused() == green; }));

    client.movePointer(150, kScreenHeight - 50);
    client.button(1, true);
    client.button(1, false);
    ASSERT_TRUE(pumpUntil([&] { return hasSeen(window, EventType::leftMouseUp); }));
    EXPECT_TRUE(window.surface().isKey());
}

TEST_F(AnyDisplay, presentsOnlyWhatHasChanged)
{
    InkWindow overlay(kWholeScreen);
    overlay.surface().orderFront();
    drag(client, 300, 350, 500);
    ASSERT_TRUE(pumpUntil([&] { return hasSeen(overlay, EventType::leftMouseUp); }));
    ASSERT_TRUE(comesToShow(495, 350, kRed));
    overlay.surface().displayIfNeeded();
    const std::uint64_t before = overlay.pixelsSent();

    overlay.surface().setNeedsDisplay(Rect::make(0, 0, 1920, 1080));
    overlay.surface().displayIfNeeded();
    EXPECT_EQ(overlay.pixelsSent(), before);

    overlay.ink = {0.0, 0.0, 1.0, 1.0};
    overlay.surface().setNeedsDisplay(Rect::make(0, 0, 1920, 1080));
    overlay.surface().displayIfNeeded();
    EXPECT_GE(overlay.pixelsSent() - before, 200U * 10U);
    EXPECT_LE(overlay.pixelsSent() - before, 202U * 12U);
    EXPECT_TRUE(comesToShow(400, 350, kBlue));
}

TEST_F(AnyDisplay, makesOneDrawOfSeveralRequests)
{
    InkWindow overlay(Rect::make(0, 0, 100, 100));
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(1, 1, client.pixel(1, 1)));
    overlay.drawn.clear();

    overlay.surface().setNeedsDisplay(Rect::make(10, 10, 5, 5));
    overlay.surface().setNeedsDisplay(Rect::make(30, 40, 10, 10));
    ASSERT_TRUE(pumpUntil([&] { return !overlay.drawn.empty(); }));

    EXPECT_THAT(overlay.drawn, testing::ElementsAre(Rect::make(0, 0, 100, 100)))
        << "a frame is drawn whole, and painted where it differs";
}

TEST_F(AnyDisplay, goesOnAfterAWindowClosesItselfInItsOwnEvent)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.background = {1.0, 0.0, 0.0, 1.0};
    overlay.onEvent = [&](const Event &event) {
        if (event.type == EventType::leftMouseDown) {
            overlay.close();
        }
    };
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(500, 400, kRed));

    client.movePointer(500, 400);
    client.button(1, true);
    client.button(1, false);

    EXPECT_TRUE(comesToShow(500, 400, kGreen));
    EXPECT_TRUE(ports().windowServer().orderedWindows().empty());
}

TEST_F(AnyDisplay, movesAndResizesAWindow)
{
    showGreenWindow();
    InkWindow overlay(Rect::make(250, kScreenHeight - 450, 100, 100));
    overlay.background = {1.0, 0.0, 0.0, 1.0};
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(300, 400, kRed));
    EXPECT_TRUE(comesToShow(500, 400, kGreen));

    overlay.surface().setFrame(Rect::make(450, kScreenHeight - 450, 100, 100));

    EXPECT_TRUE(comesToShow(500, 400, kRed));
    EXPECT_TRUE(comesToShow(300, 400, kGreen));
}

TEST_F(AnyDisplay, tellsItsDisplaysAndThePointer)
{
    const std::vector<Screen> screens = ports().displays().screens();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens.front().frame, kWholeScreen);
    EXPECT_EQ(screens.front().displayID, ports().displays().mainDisplayID());
    EXPECT_GT(screens.front().displayID, 0U);
    EXPECT_LT(screens.front().displayID, 0x80000000U);
    EXPECT_EQ(ports().displays().bounds(screens.front().displayID), kWholeScreen);
    EXPECT_EQ(ports().displays().bounds(0), Rect{});

    client.movePointer(17, 23);
    EXPECT_TRUE(pumpUntil([] {
        return ports().displays().mouseLocation() == Point{17, kScreenHeight - 23};
    }));
}

TEST_F(AnyDisplay, writesAScreenshotWithTheOverlay)
{
    showGreenWindow();
    InkWindow overlay(Rect::make(250, kScreenHeight - 450, 100, 100));
    overlay.background = {1.0, 0.0, 0.0, 1.0};
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(300, 400, kRed));
    const auto path = std::filesystem::temp_directory_path() / "orv_desktop_screenshot.png";

    ASSERT_TRUE(desktop().writeScreenshot(path.string()));

    const QImage picture(QString::fromStdString(path.string()));
    std::filesystem::remove(path);
    EXPECT_EQ(picture.size(), QSize(1920, 1080));
    EXPECT_EQ(picture.pixel(300, 400), 0xffff0000U);
    EXPECT_EQ(picture.pixel(500, 400), 0xff00ff00U);
    EXPECT_FALSE(desktop().writeScreenshot("/no/such/folder/picture.png"));
}

} // namespace orv::platform::test
