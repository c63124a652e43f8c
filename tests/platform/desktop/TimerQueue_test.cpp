#include "platform/desktop/TimerQueue.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace orv::platform {

namespace {

using std::chrono::milliseconds;

class TimerQueueTest : public testing::Test {
protected:
    TimerQueue::Id add(int due, int interval, const std::string &name)
    {
        return queue
            .add(start + milliseconds(due), milliseconds(interval),
                 [this, name] { ran.push_back(name); })
            .id;
    }
    void runAt(int moment)
    {
        queue.runDue(start + milliseconds(moment), [](const Task &task) { task(); });
    }

    TimerQueue::Clock::time_point start = TimerQueue::Clock::now();
    TimerQueue queue;
    std::vector<std::string> ran;
};

} // namespace

TEST_F(TimerQueueTest, runsWhatIsDueInOrderOfMomentThenOfAdding)
{
    add(20, 0, "later");
    add(10, 0, "first");
    add(10, 0, "second");
    add(30, 0, "not yet");

    runAt(20);

    EXPECT_THAT(ran, testing::ElementsAre("first", "second", "later"));
    EXPECT_EQ(queue.earliest(), start + milliseconds(30));
}

TEST_F(TimerQueueTest, saysWhenATaskIsTheEarliest)
{
    EXPECT_TRUE(queue.add(start + milliseconds(10), {}, [] {}).first);
    EXPECT_FALSE(queue.add(start + milliseconds(20), {}, [] {}).first);
    EXPECT_TRUE(queue.add(start + milliseconds(5), {}, [] {}).first);
}

TEST_F(TimerQueueTest, repeatsWithoutDriftAndSkipsWhatWasMissed)
{
    add(10, 10, "tick");

    runAt(12);
    EXPECT_EQ(queue.earliest(), start + milliseconds(20));
    runAt(55);
    EXPECT_THAT(ran, testing::ElementsAre("tick", "tick"));
    EXPECT_EQ(queue.earliest(), start + milliseconds(65));
}

TEST_F(TimerQueueTest, cancelsOnceOrForGood)
{
    const auto once = add(10, 0, "once");
    const auto repeating = add(10, 10, "repeating");

    queue.cancel(once);
    runAt(10);
    queue.cancel(repeating);
    queue.cancel(repeating);
    runAt(100);

    EXPECT_THAT(ran, testing::ElementsAre("repeating"));
    EXPECT_EQ(queue.earliest(), std::nullopt);
}

TEST_F(TimerQueueTest, aTaskMayCancelItselfAndOthers)
{
    TimerQueue::Id own = 0;
    const auto other = add(10, 0, "other");
    const auto cancelBoth = [&] {
        ran.emplace_back("own");
        queue.cancel(own);
        queue.cancel(other);
    };
    own = queue.add(start + milliseconds(5), milliseconds(5), cancelBoth).id;

    runAt(20);

    EXPECT_THAT(ran, testing::ElementsAre("own"));
    EXPECT_EQ(queue.earliest(), std::nullopt);
}

TEST_F(TimerQueueTest, whatATaskHoldsMayCancelAnotherAsItGoes)
{
    const auto other = add(50, 0, "other");
    auto handle = std::make_shared<TaskHandle>([this, other] { queue.cancel(other); });
    const auto holding = queue.add(start + milliseconds(60), {}, [handle] {}).id;
    handle.reset();

    queue.cancel(holding);

    EXPECT_EQ(queue.earliest(), std::nullopt);
}

} // namespace orv::platform
