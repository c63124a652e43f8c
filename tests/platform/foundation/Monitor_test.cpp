#include "platform/foundation/Monitor.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

namespace orv::platform {
namespace {

TEST(Monitor, oneThreadAtATimeIsInside)
{
    Monitor monitor;
    int inside = 0;
    int entries = 0;
    bool wasAlone = true;

    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 1000; ++i) {
                const Monitor::Hold hold(monitor);
                wasAlone = wasAlone && ++inside == 1;
                ++entries;
                --inside;
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }

    EXPECT_TRUE(wasAlone);
    EXPECT_EQ(entries, 4000);
}

TEST(Monitor, aThreadMayEnterAgainAndKeepsItUntilTheOutermostHoldEnds)
{
    Monitor monitor;
    std::promise<void> hasEntered;
    auto entered = hasEntered.get_future();
    std::thread other;
    bool isStillOurs = true;
    {
        const Monitor::Hold outer(monitor);
        {
            const Monitor::Hold inner(monitor);
        }
        other = std::thread([&] {
            const Monitor::Hold hold(monitor);
            isStillOurs = false;
            hasEntered.set_value();
        });
        EXPECT_TRUE(isStillOurs);
    }
    entered.get();
    other.join();

    EXPECT_FALSE(isStillOurs);
}

TEST(Monitor, aReleaseLetsAnotherThreadInWhateverTheDepthAndTakesItBack)
{
    Monitor monitor;
    const Monitor::Hold outer(monitor);
    const Monitor::Hold inner(monitor);
    int value = 1;

    {
        const Monitor::Release release;
        std::thread([&] {
            const Monitor::Hold hold(monitor);
            value = 2;
        }).join();
    }

    EXPECT_EQ(value, 2);
    std::promise<void> isTrying;
    std::thread waiting([&] {
        isTrying.set_value();
        const Monitor::Hold hold(monitor);
        value = 3;
    });
    isTrying.get_future().get();
    EXPECT_EQ(value, 2) << "both holds are ours again";
    {
        const Monitor::Release release;
        waiting.join();
    }
    EXPECT_EQ(value, 3);
}

TEST(Monitor, aReleaseLetsGoOfEveryMonitorOfItsThread)
{
    Monitor outer;
    Monitor inner;
    const Monitor::Hold outerHold(outer);
    const Monitor::Hold innerHold(inner);
    int value = 1;

    {
        const Monitor::Release release;
        std::thread([&] {
            const Monitor::Hold innerOnly(inner);
            const Monitor::Hold outerToo(outer);
            value = 2;
        }).join();
    }

    EXPECT_EQ(value, 2);
}

TEST(Monitor, aReleaseWithoutAHoldIsHarmless)
{
    Monitor monitor;
    {
        const Monitor::Release release;
    }

    const Monitor::Hold hold(monitor);
    bool isInside = false;
    std::thread other([&] {
        const Monitor::Release again;
        isInside = true;
    });
    other.join();

    EXPECT_TRUE(isInside) << "a thread without a hold takes nothing from the one that has it";
}

TEST(Monitor, theSharedOneIsOneForTheProcess)
{
    EXPECT_EQ(&Monitor::shared(), &Monitor::shared());
}

} // namespace
} // namespace orv::platform
