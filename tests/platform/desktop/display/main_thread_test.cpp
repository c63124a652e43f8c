#include "platform/desktop/display/Desk.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/Monitor.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace orv::platform::test {

/// The loop runs through the public class here, as in a host.
class AnyDisplayMainThread : public Desk {
protected:
    DesktopMainThread &mainThread = ports().mainThread();
};

TEST_F(AnyDisplayMainThread, runsUntilQuitAndAnswersTheExitCode)
{
    std::thread host([] { desktop().quit(7); });
    EXPECT_EQ(desktop().run(), 7);
    host.join();
}

TEST_F(AnyDisplayMainThread, runsPostedTasksInOrderOnTheMainThreadUnderTheMonitor)
{
    std::vector<int> order;
    std::thread host([&] {
        for (int i = 0; i < 100; ++i) {
            desktop().post([&, i] {
                EXPECT_TRUE(mainThread.isCurrent());
                order.push_back(i);
            });
        }
        desktop().quit(0);
    });
    desktop().run();
    host.join();

    ASSERT_EQ(order.size(), 100U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_F(AnyDisplayMainThread, waitsForATaskAndLetsTheMonitorGoMeanwhile)
{
    bool done = false;
    std::thread host;
    desktop().post([&] {
        host = std::thread([&] {
            const Monitor::Hold hold;
            mainThread.postAndWait([&] { done = true; });
            EXPECT_TRUE(done);
            desktop().quit(0);
        });
    });
    desktop().run();
    host.join();
    EXPECT_TRUE(done);

    bool inlineDone = false;
    mainThread.postAndWait([&] { inlineDone = true; });
    EXPECT_TRUE(inlineDone);
}

TEST_F(AnyDisplayMainThread, dropsWhatIsWaitedForOnceTheLoopHasEnded)
{
    desktop().quit(0);
    desktop().run();
    std::atomic<bool> ran = false;
    std::thread late([&] { mainThread.postAndWait([&] { ran = true; }); });
    late.join();

    desktop().quit(0);
    desktop().run();

    EXPECT_FALSE(ran);
}

TEST_F(AnyDisplayMainThread, runsDelayedTasksInTheOrderOfTheirMoments)
{
    std::vector<std::string> order;
    std::thread host([&] {
        desktop().after(0.03, [&] {
            order.emplace_back("late");
            desktop().quit(0);
        });
        desktop().after(0.01, [&] { order.emplace_back("early"); });
        TaskHandle cancelled = mainThread.after(0.02, [&] { order.emplace_back("cancelled"); });
        cancelled.reset();
    });
    desktop().run();
    host.join();

    EXPECT_THAT(order, testing::ElementsAre("early", "late"));
}

TEST_F(AnyDisplayMainThread, repeatsUntilTheHandleGoes)
{
    int count = 0;
    TaskHandle handle = mainThread.every(0.001, [&] {
        if (++count == 5) {
            handle.reset();
            mainThread.after(0.01, [] { desktop().quit(0); }).detach();
        }
    });
    desktop().run();

    EXPECT_EQ(count, 5);
}

TEST_F(AnyDisplayMainThread, reportsAnExceptionAndGoesOn)
{
    std::vector<std::string> errors;
    mainThread.setErrorSink([&](const std::string &error) { errors.push_back(error); });

    desktop().post([] { throw Exception("the pen is broken"); });
    desktop().quit(3);
    const int exitCode = desktop().run();
    mainThread.setErrorSink({});

    EXPECT_EQ(exitCode, 3);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_THAT(errors.front(), testing::StartsWith("the pen is broken\n"));
}

TEST_F(AnyDisplayMainThread, worksInTheBackgroundAndComesBack)
{
    bool back = false;
    mainThread.background([&] {
        EXPECT_FALSE(mainThread.isCurrent());
        mainThread.post([&] {
            back = true;
            desktop().quit(0);
        });
    });
    desktop().run();

    EXPECT_TRUE(back);
}

TEST_F(AnyDisplayMainThread, drawsOnceAfterAllTasksThatWaited)
{
    InkWindow overlay(Rect::make(0, 0, 100, 100));
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(1, 1, client.pixel(1, 1)));
    overlay.drawn.clear();
    int ran = 0;
    int ranBeforeDraw = 0;
    overlay.onDraw = [&](GraphicsContext &) { ranBeforeDraw = ran; };

    for (int i = 0; i < 50; ++i) {
        mainThread.post([&] {
            ++ran;
            overlay.surface().setNeedsDisplay(Rect::make(ran, 10, 1, 1));
        });
    }
    ASSERT_TRUE(pumpUntil([&] { return ran == 50 && !overlay.drawn.empty(); }));

    EXPECT_EQ(ranBeforeDraw, 50);
    EXPECT_EQ(overlay.drawn.size(), 1U);
}

TEST_F(AnyDisplayMainThread, runsWhatDrawingPostsThoughEachDrawAsksForAnother)
{
    InkWindow overlay(Rect::make(0, 0, 100, 100));
    overlay.surface().orderFront();
    int posted = 0;
    int ran = 0;
    overlay.onDraw = [&](GraphicsContext &) {
        ++posted;
        mainThread.post([&] { ++ran; });
        overlay.surface().setNeedsDisplay(Rect::make(0, 0, 10, 10));
    };

    overlay.surface().setNeedsDisplay(Rect::make(0, 0, 10, 10));
    const bool hasRun = pumpUntil([&] { return ran >= 20; });
    overlay.onDraw = nullptr;

    EXPECT_TRUE(hasRun);
    EXPECT_LE(posted - ran, 2) << "each task runs before the next but one frame";
}

TEST_F(AnyDisplayMainThread, drawsBeforeItBlocksAndLetsTheMonitorGo)
{
    InkWindow overlay(Rect::make(0, 0, 100, 100));
    overlay.surface().orderFront();
    overlay.drawn.clear();
    overlay.surface().setNeedsDisplay(Rect::make(0, 0, 10, 10));
    const Monitor::Hold hold;
    std::atomic<bool> entered = false;
    std::thread host([&] {
        const Monitor::Hold other;
        entered = true;
    });

    const double before = mainThread.now();
    while (!entered) {
        mainThread.block(0.001);
    }

    EXPECT_GE(mainThread.now() - before, 0.001);
    EXPECT_EQ(overlay.drawn.size(), 1U);
    host.join();
}

} // namespace orv::platform::test
