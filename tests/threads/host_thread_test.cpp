#include "channels/controller/HostDesk.h"

#include <atomic>
#include <chrono>
#include <thread>

// Records on a thread of the host's own while the main thread draws. What this shows is that no
// data race comes of it, which the thread sanitizer sees; so it does a lot of both at once.

namespace orv::test {
namespace {

using namespace std::chrono_literals;

class HostThread : public HostDesk {
protected:
    /// Runs `host` on a thread while this one draws, and then all that is left.
    template <class Host> void runBeside(Host &&host)
    {
        std::atomic<bool> done = false;
        std::thread thread([&] {
            host();
            done = true;
        });
        while (!done) {
            desk.mainThread().waitAndDrain(5ms);
            desk.mainThread().advance(0.02);
        }
        thread.join();
        drain();
    }
    void record(std::uint32_t wparam, std::uint32_t lparam,
                const std::vector<std::uint8_t> &ext = {})
    {
        stCommand_mgs next;
        next.pluginID = static_cast<std::uint16_t>(plugin);
        next.wparam = wparam;
        next.lparam = lparam;
        std::copy(ext.begin(), ext.end(), next.ext.begin());
        controller->CommandClient2App(next);
    }
    void stroke(std::uint8_t y)
    {
        record(0xEFFD, 5, {0, 0, 1, 0, 0, 0, 1, y});
        for (std::uint8_t x = 1; x < 60; ++x) {
            record(0xEFFD, 10, {0, 0, 1, x, 0, 0, 1, y});
        }
        record(0xEFFD, 6, {0, 0, 1, 59, 0, 0, 1, y});
    }
};

TEST_F(HostThread, ASessionOpensDrawsAndClosesFromAnotherThread)
{
    usePlugin(17);
    runBeside([this] {
        record(0, 0, {1});
        for (std::uint8_t y = 0; y < 20; ++y) {
            record(1, y % 2 == 0 ? 8 : 1, {0, 0, 0, 0, 9, 0, 255, y, 0, 255});
            stroke(y);
        }
        record(17, 1);
    });
    EXPECT_EQ(annotationCount(), 19U);
    runBeside([this] { record(0, 0, {0}); });
    EXPECT_TRUE(manager()->canvasHandler()->isHidden());
    EXPECT_FALSE(mailbox().records.empty());
}

TEST_F(HostThread, OpeningAndClosingManyTimesEndsInOneState)
{
    usePlugin(12);
    controller->setDebug(true);
    runBeside([this] {
        for (int i = 0; i < 21; ++i) {
            record(0, 0);
            record(1, 5, {0, 0, 1, 1, 0, 0, 1, 1});
            record(1, 6, {0, 0, 1, 1, 0, 0, 1, 1});
            record(34, static_cast<std::uint32_t>(i % 2));
            record(88, 0);
        }
    });
    EXPECT_FALSE(manager()->canvasHandler()->isHidden());
    EXPECT_TRUE(state().m_bInAnnotationMode);
}

TEST_F(HostThread, EventsPostedByTheHostReachItsSenderOnItsOwnThread)
{
    open(17);
    takeRecords();
    runBeside([] {
        for (int i = 0; i < 200; ++i) {
            sendNotifyMeesage("spotlightEvent", 1, 0);
            sendNotifyMeesage("helpRequested", 1, 0);
        }
    });
    EXPECT_GE(mailbox().records.size(), 400U);
}

} // namespace
} // namespace orv::test
