#include "platform/desktop/WorkerPool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>

namespace orv::platform {

TEST(WorkerPool, runsWhatIsStillQueuedBeforeItGoes)
{
    std::atomic<int> done = 0;
    {
        WorkerPool pool(2);
        for (int i = 0; i < 500; ++i) {
            pool.add([&] { ++done; });
        }
    }
    EXPECT_EQ(done, 500);
}

TEST(WorkerPool, runsTasksBesideEachOther)
{
    WorkerPool pool(2);
    std::promise<void> first;
    std::promise<void> second;

    // Each waits for the other: on one thread neither would end.
    pool.add([&] {
        first.set_value();
        second.get_future().wait();
    });
    std::promise<void> done;
    pool.add([&] {
        first.get_future().wait();
        second.set_value();
        done.set_value();
    });

    done.get_future().wait();
}

} // namespace orv::platform
