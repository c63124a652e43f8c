#include "platform/desktop/PixelReader.h"
#include "platform/desktop/WindowPixels.h"
#include "platform/desktop/display/Desk.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <random>
#include <thread>

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace orv::platform::test {

namespace {

constexpr std::uint32_t kGreen = 0x00ff00;
constexpr std::uint32_t kRed = 0xff0000;
constexpr std::uint32_t kBlue = 0x0000ff;
constexpr std::uint32_t kOpaque = 0xff000000U;
const Rect kWholeScreen = Rect::make(0, 0, 1920, kScreenHeight);

/// Keeps the X server from serving anyone else, for ten seconds at most.
class ServerGrab {
public:
    explicit ServerGrab(XClient &client) : client_(client)
    {
        client_.grabServer();
        guard_ = std::thread([this] { releaseInTime(); });
    }
    ~ServerGrab()
    {
        static_cast<void>(release());
        guard_.join();
    }
    ServerGrab(const ServerGrab &) = delete;
    ServerGrab &operator=(const ServerGrab &) = delete;

    /// Whether it was still held.
    bool release()
    {
        const std::lock_guard lock(mutex_);
        const bool isHeld = std::exchange(held_, false);
        if (isHeld) {
            client_.ungrabServer();
        }
        released_.notify_all();
        return isHeld;
    }

private:
    void releaseInTime()
    {
        std::unique_lock lock(mutex_);
        released_.wait_for(lock, std::chrono::seconds(10), [this] { return !held_; });
        lock.unlock();
        static_cast<void>(release());
    }

    XClient &client_;
    std::mutex mutex_;
    std::condition_variable released_;
    bool held_ = true;
    std::thread guard_;
};

std::vector<Point> draggedTo(const InkWindow &window)
{
    std::vector<Point> places;
    for (const Event &event : window.events) {
        if (event.type == EventType::leftMouseDragged) {
            places.push_back(event.location);
        }
    }
    return places;
}

/// Runs the loop until a frame was drawn, but no timers: those that watch other programs' windows
/// may ask the server.
bool drawsWithoutTimers(const InkWindow &window)
{
    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (window.drawn.empty() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
    }
    return !window.drawn.empty();
}

bool hasSeen(const InkWindow &window, EventType type)
{
    return std::any_of(window.events.begin(), window.events.end(),
                       [type](const Event &event) { return event.type == type; });
}

/// The window's pixels without their alpha, which a display may not keep.
std::vector<std::uint32_t> shownPixels(xcb_window_t window, const QRect &area)
{
    PixelReader reader(ports().x());
    const std::uint32_t *pixels = reader.read(window, area);
    if (pixels == nullptr) {
        return {};
    }
    std::vector<std::uint32_t> opaque(pixels, pixels + area.width() * area.height());
    std::for_each(opaque.begin(), opaque.end(), [](std::uint32_t &pixel) { pixel |= kOpaque; });
    return opaque;
}

std::vector<std::uint32_t> pixelsOf(const Image &image)
{
    return {image.data(), image.data() + image.width() * image.height()};
}

} // namespace

class AnyDisplayPresent : public Desk {};

TEST_F(AnyDisplayPresent, drawsABurstOfMotionsInFewFramesWithAllItsPoints)
{
    constexpr int kMotions = 500;
    InkWindow overlay(kWholeScreen);
    overlay.surface().orderFront();
    client.movePointer(300, 350);
    client.button(1, true);
    ASSERT_TRUE(pumpUntil([&] { return hasSeen(overlay, EventType::leftMouseDown); }));
    overlay.drawn.clear();

    client.beforeInput = {};
    for (int i = 1; i <= kMotions; ++i) {
        client.movePointer(300 + i, 350 + i % 7);
    }
    client.button(1, false);
    // Both have asked by then, so that the burst has arrived before the loop goes on.
    static_cast<void>(client.focused());
    static_cast<void>(ports().x().topLevels());
    ASSERT_TRUE(pumpUntil([&] { return hasSeen(overlay, EventType::leftMouseUp); }));
    ASSERT_TRUE(comesToShow(600, 352, kRed));

    const std::vector<Point> places = draggedTo(overlay);
    ASSERT_EQ(places.size(), std::size_t{kMotions});
    for (int i = 1; i <= kMotions; ++i) {
        EXPECT_EQ(places[static_cast<std::size_t>(i - 1)],
                  (Point{300.0 + i, kScreenHeight - 350.0 - i % 7}));
    }
    EXPECT_LE(overlay.drawn.size(), 2U);
}

TEST_F(AnyDisplayPresent, waitsForNoAnswerBetweenAMotionAndItsPixels)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.surface().orderFront();
    client.movePointer(300, 350);
    client.button(1, true);
    ASSERT_TRUE(pumpUntil([&] { return hasSeen(overlay, EventType::leftMouseDown); }));
    const std::uint64_t before = overlay.pixelsSent();
    overlay.drawn.clear();
    client.beforeInput = {};
    ServerGrab grab(client);

    client.movePointer(400, 350);
    ASSERT_TRUE(drawsWithoutTimers(overlay));

    EXPECT_GE(overlay.pixelsSent() - before, 100U * 10U);
    EXPECT_EQ(client.pixel(350, 350), kGreen) << "the server does nothing for us meanwhile";
    EXPECT_TRUE(grab.release()) << "something waited for the server";
    EXPECT_TRUE(comesToShow(350, 350, kRed));
    client.button(1, false);
}

TEST_F(AnyDisplayPresent, sendsAFrameWithoutTheLoopGoingOn)
{
    InkWindow overlay(kWholeScreen);
    overlay.background = {1.0, 0.0, 0.0, 1.0};
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(500, 400, kRed));

    overlay.background = {0.0, 0.0, 1.0, 1.0};
    overlay.surface().setNeedsDisplay(kWholeScreen);
    overlay.surface().displayIfNeeded();

    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (client.pixel(500, 400) != kBlue && !deadline.hasExpired()) {
        std::this_thread::yield();
    }
    EXPECT_EQ(client.pixel(500, 400), kBlue);
}

TEST_F(AnyDisplayPresent, showsTheLastOfManyFramesThatFollowAtOnce)
{
    constexpr int kSide = 300;
    InkWindow overlay(Rect::make(100, 100, kSide, kSide));
    overlay.background = {1.0, 1.0, 1.0, 1.0};
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(200, kScreenHeight - 200, 0xffffff));
    std::mt19937 random(5);
    const auto at = [&](unsigned limit) { return static_cast<double>(random() % limit); };
    overlay.onDraw = [&](GraphicsContext &context) {
        context.setFillColor({at(256) / 255.0, at(256) / 255.0, at(256) / 255.0, 1.0});
        context.fillRect(Rect::make(at(kSide), at(kSide), at(kSide), at(kSide)),
                         CompositingOperation::copy);
    };

    for (int frame = 0; frame < 500; ++frame) {
        overlay.surface().setNeedsDisplay(Rect::make(0, 0, kSide, kSide));
        overlay.surface().displayIfNeeded();
    }

    EXPECT_EQ(shownPixels(overlay.nativeWindow(), QRect(0, 0, kSide, kSide)),
              pixelsOf(overlay.picture()));
}

TEST_F(AnyDisplayPresent, showsAWindowAgainThatWasHidden)
{
    showGreenWindow();
    InkWindow overlay(kWholeScreen);
    overlay.background = {1.0, 0.0, 0.0, 1.0};
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(500, 400, kRed));

    overlay.surface().orderOut();
    ASSERT_TRUE(comesToShow(500, 400, kGreen));
    overlay.surface().orderFront();
    EXPECT_TRUE(comesToShow(500, 400, kRed)) << "nothing of it has changed";

    overlay.surface().orderOut();
    overlay.background = {0.0, 0.0, 1.0, 1.0};
    overlay.surface().setNeedsDisplay(kWholeScreen);
    ASSERT_TRUE(comesToShow(500, 400, kGreen));
    overlay.surface().orderFront();
    EXPECT_TRUE(comesToShow(500, 400, kBlue)) << "it changed while it was hidden";
}

TEST_F(AnyDisplayPresent, showsAWindowThatGrowsAndShrinks)
{
    showGreenWindow();
    InkWindow overlay(Rect::make(250, kScreenHeight - 350, 100, 100));
    overlay.onDraw = [](GraphicsContext &context) {
        context.setFillColor({1.0, 0.0, 0.0, 1.0});
        context.fillRect(Rect::make(0, 0, 1920, kScreenHeight), CompositingOperation::copy);
    };
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(345, 345, kRed));
    ASSERT_TRUE(comesToShow(500, 300, kGreen));

    overlay.surface().setFrame(Rect::make(250, kScreenHeight - 450, 400, 200));

    EXPECT_TRUE(comesToShow(500, 300, kRed));
    EXPECT_TRUE(comesToShow(645, 445, kRed));
    EXPECT_TRUE(comesToShow(655, 445, kGreen));

    overlay.surface().setFrame(Rect::make(250, kScreenHeight - 300, 50, 50));

    EXPECT_TRUE(comesToShow(500, 300, kGreen));
    EXPECT_TRUE(comesToShow(295, 295, kRed));
}

TEST_F(AnyDisplayPresent, putsOnlyThePixelsOfTheRectangle)
{
    const XConnection &x = ports().x();
    const xcb_window_t window = client.showWindow(200, 200, 400, 600, kGreen, true);
    ASSERT_TRUE(comesToShow(210, 210, kGreen));
    WindowPixels pixels(x, window);
    pixels.resize(400, 600);
    std::fill_n(pixels.row(0), 400 * 600, kOpaque | kRed);
    std::fill_n(pixels.row(101), 400, kOpaque | kBlue);

    pixels.put({100, 100, 50, 400});
    pixels.put({});
    x.flush();

    EXPECT_EQ(shownPixels(window, QRect(99, 100, 3, 1)),
              (std::vector<std::uint32_t>{kOpaque | kGreen, kOpaque | kRed, kOpaque | kRed}));
    EXPECT_EQ(shownPixels(window, QRect(149, 101, 2, 1)),
              (std::vector<std::uint32_t>{kOpaque | kBlue, kOpaque | kGreen}));
    EXPECT_EQ(shownPixels(window, QRect(100, 499, 1, 2)),
              (std::vector<std::uint32_t>{kOpaque | kRed, kOpaque | kGreen}));
}

TEST_F(AnyDisplayPresent, keepsWhatWasPutWhenTheWindowsPixelsAreOfAnotherSize)
{
    const XConnection &x = ports().x();
    const xcb_window_t window = client.showWindow(200, 200, 400, 600, kGreen, true);
    ASSERT_TRUE(comesToShow(210, 210, kGreen));
    WindowPixels pixels(x, window);
    pixels.resize(400, 600);
    std::fill_n(pixels.row(0), 400 * 600, kOpaque | kRed);

    pixels.put({0, 0, 400, 600});
    pixels.resize(200, 10);
    std::fill_n(pixels.row(0), 200 * 10, kOpaque | kBlue);
    pixels.put({0, 0, 200, 10});

    EXPECT_EQ(shownPixels(window, QRect(199, 9, 2, 1)),
              (std::vector<std::uint32_t>{kOpaque | kBlue, kOpaque | kRed}));
    EXPECT_THAT(shownPixels(window, QRect(200, 0, 200, 10)), testing::Each(kOpaque | kRed));
    EXPECT_THAT(shownPixels(window, QRect(0, 10, 400, 590)), testing::Each(kOpaque | kRed));
}

class BarePresent : public Desk {};

TEST_F(BarePresent, sharesMemoryWithTheServer)
{
    InkWindow overlay(kWholeScreen);
    overlay.surface().orderFront();

    const WindowPixels pixels(ports().x(), overlay.nativeWindow());

    EXPECT_TRUE(pixels.isShared());
}

TEST_F(BarePresent, hasNoRoomWhereTheSystemHasNone)
{
    SharedPixels shared(ports().x());

    EXPECT_FALSE(shared.makeRoom(std::numeric_limits<std::size_t>::max() / 8));
    EXPECT_EQ(shared.pixels(), nullptr);
}

class PlainServerPresent : public Desk {};

TEST_F(PlainServerPresent, sendsPixelsThroughTheConnection)
{
    InkWindow overlay(kWholeScreen);
    overlay.surface().orderFront();

    const WindowPixels pixels(ports().x(), overlay.nativeWindow());

    EXPECT_FALSE(pixels.isShared());
}

} // namespace orv::platform::test
