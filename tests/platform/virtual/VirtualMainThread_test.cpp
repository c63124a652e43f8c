#include "platform/virtual/VirtualMainThread.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/Monitor.h"
#include "platform/virtual/VirtualSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace orv::platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class VirtualMainThreadTest : public testing::Test {
protected:
    Task note(const std::string &text)
    {
        return [this, text] { notes_.push_back(text); };
    }
    Task noteTime()
    {
        return [this] { times_.push_back(main_.now()); };
    }

    VirtualMainThread main_{wallClockFromText("2026-01-02 03:04:05").value()};
    std::vector<std::string> notes_;
    std::vector<double> times_;
};

TEST_F(VirtualMainThreadTest, RunsNothingUntilItIsDrained)
{
    main_.post(note("a"));
    main_.background(note("b"));
    main_.post(note("c"));
    EXPECT_THAT(notes_, IsEmpty());

    main_.drain();

    EXPECT_THAT(notes_, ElementsAre("a", "b", "c"));
}

TEST_F(VirtualMainThreadTest, ADrainGoesOnUntilNothingIsLeft)
{
    main_.post([this] {
        main_.post([this] { main_.background(note("late")); });
        notes_.emplace_back("early");
    });

    main_.drain();

    EXPECT_THAT(notes_, ElementsAre("early", "late"));
}

TEST_F(VirtualMainThreadTest, PostAndWaitIsInlineOnTheMainThread)
{
    main_.post(note("posted"));

    main_.postAndWait(note("inline"));

    EXPECT_TRUE(main_.isCurrent());
    EXPECT_THAT(notes_, ElementsAre("inline"));
}

TEST_F(VirtualMainThreadTest, TimersFireInTheOrderOfTheirDueTime)
{
    const TaskHandle late = main_.after(2.0, note("2"));
    const TaskHandle early = main_.after(1.0, note("1"));
    const TaskHandle sameTime = main_.after(1.0, note("1 again"));

    main_.drain();
    EXPECT_THAT(notes_, IsEmpty());
    main_.advance(1.5);
    EXPECT_THAT(notes_, ElementsAre("1", "1 again"));
    main_.advance(0.5);

    EXPECT_THAT(notes_, ElementsAre("1", "1 again", "2"));
    EXPECT_DOUBLE_EQ(main_.now(), 2.0);
}

TEST_F(VirtualMainThreadTest, TheClockShowsTheDueTimeWhileATimerFires)
{
    const TaskHandle timer = main_.every(0.3, noteTime());

    main_.advance(1.0);

    EXPECT_THAT(times_, ElementsAre(testing::DoubleEq(0.3), testing::DoubleEq(0.6),
                                    testing::DoubleNear(0.9, 1e-12)));
    EXPECT_DOUBLE_EQ(main_.now(), 1.0);
    EXPECT_EQ(main_.wallClock() - wallClockFromText("2026-01-02 03:04:05").value(),
              std::chrono::seconds(1));
}

TEST_F(VirtualMainThreadTest, WhatATimerPostsRunsBeforeTheNextTimer)
{
    const TaskHandle first = main_.after(1.0, [this] {
        main_.post(note("posted"));
        main_.after(0.0, note("at once")).detach();
    });
    const TaskHandle second = main_.after(1.0, note("second"));

    main_.advance(1.0);

    EXPECT_THAT(notes_, ElementsAre("posted", "second", "at once"));
}

TEST_F(VirtualMainThreadTest, ADelayOfNothingOrLessIsDueAtTheNextDrain)
{
    main_.after(-5.0, note("past")).detach();
    main_.after(0.0, note("now")).detach();

    main_.drain();

    EXPECT_THAT(notes_, ElementsAre("past", "now"));
    EXPECT_EQ(main_.now(), 0.0);
}

TEST_F(VirtualMainThreadTest, ADestroyedHandleCancels)
{
    {
        const TaskHandle gone = main_.after(1.0, note("gone"));
    }
    TaskHandle replaced = main_.after(1.0, note("old"));
    replaced = main_.after(2.0, note("new"));

    main_.advance(3.0);

    EXPECT_THAT(notes_, ElementsAre("new"));
}

TEST_F(VirtualMainThreadTest, ARepeatingTaskMayCancelItself)
{
    TaskHandle timer;
    timer = main_.every(1.0, [&, owned = std::make_shared<int>(7)] {
        timer.reset();
        notes_.push_back(std::to_string(*owned));
    });

    main_.advance(10.0);

    EXPECT_THAT(notes_, ElementsAre("7"));
}

TEST_F(VirtualMainThreadTest, BlockingMovesTheClockAndFiresNothing)
{
    const TaskHandle timer = main_.every(1.0, noteTime());
    const TaskHandle once = main_.after(2.5, note("once"));

    main_.block(3.2);
    EXPECT_DOUBLE_EQ(main_.now(), 3.2);
    EXPECT_THAT(times_, IsEmpty());
    main_.drain();

    // What was missed is made up for by one run, then the old rhythm goes on.
    EXPECT_THAT(times_, ElementsAre(3.2));
    EXPECT_THAT(notes_, ElementsAre("once"));
    main_.advance(1.0);
    EXPECT_THAT(times_, ElementsAre(3.2, 4.0));
}

TEST_F(VirtualMainThreadTest, BlockingInATimerDelaysTheOthersAndCountsAsPassed)
{
    const TaskHandle first = main_.after(1.0, [this] { main_.block(5.0); });
    const TaskHandle second = main_.after(2.0, noteTime());

    main_.advance(3.0);

    EXPECT_THAT(times_, ElementsAre(6.0));
    EXPECT_DOUBLE_EQ(main_.now(), 6.0);
}

TEST_F(VirtualMainThreadTest, TimeDoesNotGoBack)
{
    main_.advance(-3.0);
    main_.block(-3.0);

    EXPECT_EQ(main_.now(), 0.0);
}

TEST_F(VirtualMainThreadTest, ExceptionsGoToTheErrorSinkAndNoFurther)
{
    std::vector<std::string> errors;
    main_.setErrorSink([&](const std::string &text) { errors.push_back(text); });
    main_.post([] { throw Exception("ours"); });
    main_.background([] { throw std::runtime_error("theirs"); });
    main_.post(note("after"));
    main_.after(0.0, [] { throw Exception("timer's"); }).detach();

    main_.drain();
    main_.postAndWait([] { throw Exception("inline"); });

    EXPECT_THAT(errors, ElementsAre(HasSubstr("ours"), "theirs", HasSubstr("timer's"),
                                    HasSubstr("inline")));
    EXPECT_THAT(notes_, ElementsAre("after"));
    main_.setErrorSink(nullptr);
    main_.postAndWait([] { throw Exception("dropped"); });
    EXPECT_EQ(errors.size(), 4U);
}

TEST_F(VirtualMainThreadTest, AfterTheEndEverythingIsDropped)
{
    auto owned = std::make_shared<int>(1);
    main_.post([owned] {});
    const TaskHandle timer = main_.after(1.0, [owned] {});

    main_.shutdown();
    main_.post([owned] {});
    main_.background([owned] {});
    EXPECT_FALSE(main_.after(0.0, [owned] {}));
    main_.advance(5.0);

    EXPECT_EQ(owned.use_count(), 1);
}

TEST_F(VirtualMainThreadTest, ATaskThatGoesUndoneMayStillCancelAnother)
{
    auto other = std::make_shared<TaskHandle>(main_.after(1.0, note("other")));
    main_.post([other] {});
    other.reset();

    main_.shutdown();

    EXPECT_THAT(notes_, IsEmpty());
}

TEST(VirtualMainThreadHandles, OutliveTheLoop)
{
    TaskHandle handle;
    {
        VirtualMainThread main(wallClockFromText("2026-01-02 03:04:05").value());
        handle = main.after(1.0, [] {});
    }

    handle.reset();

    EXPECT_FALSE(handle);
}

bool isMonitorFree()
{
    std::atomic<bool> entered = false;
    std::thread other([&entered] {
        const Monitor::Hold hold;
        entered = true;
    });
    other.join();
    return entered;
}

TEST_F(VirtualMainThreadTest, BackgroundWorkAndBlockingLetTheMonitorGo)
{
    std::vector<bool> free;
    const Monitor::Hold hold;
    main_.background([&] { free.push_back(isMonitorFree()); });

    main_.drain();

    EXPECT_THAT(free, ElementsAre(true));
}

TEST_F(VirtualMainThreadTest, TasksHoldTheMonitor)
{
    // Increments of a plain number from two threads: right only under one lock.
    int number = 0;
    std::thread host([&] {
        for (int i = 0; i < 1000; ++i) {
            const Monitor::Hold hold;
            ++number;
        }
    });
    for (int i = 0; i < 1000; ++i) {
        main_.post([&number] { ++number; });
    }
    main_.drain();
    host.join();

    EXPECT_EQ(number, 2000);
}

TEST_F(VirtualMainThreadTest, AnotherThreadPostsAndWaitsWhileTheMainThreadPumps)
{
    constexpr int kRounds = 200;
    int sum = 0;
    int order = 0;
    std::atomic<bool> finished = false;
    std::thread host([&] {
        // Held all the time: waiting has to let it go, whatever the depth.
        const Monitor::Hold outer;
        const Monitor::Hold inner;
        for (int i = 1; i <= kRounds; ++i) {
            main_.post([&order] { ++order; });
            main_.postAndWait([&, i] { sum += order == i && main_.isCurrent() ? 1 : 0; });
            const TaskHandle never = main_.after(1e6, [] {});
        }
        finished = true;
        main_.post([] {});
    });

    while (!finished) {
        main_.waitAndDrain(std::chrono::seconds(10));
    }
    host.join();
    main_.drain();

    EXPECT_EQ(sum, kRounds);
    EXPECT_EQ(order, kRounds);
}

TEST_F(VirtualMainThreadTest, WaitingEndsWhenNothingComes)
{
    EXPECT_FALSE(main_.waitAndDrain(std::chrono::milliseconds(1)));

    main_.post(note("x"));

    EXPECT_TRUE(main_.waitAndDrain(std::chrono::milliseconds(1)));
    EXPECT_THAT(notes_, ElementsAre("x"));
}

TEST_F(VirtualMainThreadTest, WhoWaitsForTheMainThreadIsFreedAtItsEnd)
{
    std::atomic<bool> ran = false;
    std::atomic<bool> waiting = false;
    std::thread host([&] {
        waiting = true;
        main_.postAndWait([&ran] { ran = true; });
        main_.postAndWait([&ran] { ran = true; });
    });
    while (!waiting) {
        std::this_thread::yield();
    }

    main_.shutdown();
    host.join();

    EXPECT_FALSE(ran);
}

TEST(WallClock, ReadsLocalTimes)
{
    const auto time = wallClockFromText("2026-01-02 03:04:05");

    ASSERT_TRUE(time);
    const std::time_t seconds = std::chrono::system_clock::to_time_t(*time);
    const std::tm parts = *std::localtime(&seconds);
    EXPECT_EQ(parts.tm_year, 126);
    EXPECT_EQ(parts.tm_mday, 2);
    EXPECT_EQ(parts.tm_hour, 3);
    EXPECT_EQ(parts.tm_sec, 5);
}

TEST(WallClock, RefusesOtherTexts)
{
    for (const char *text : {"", "yesterday", "2026-01-02", "2026-01-02 03:04:05 pm",
                             "2026-13-02 03:04:05", "2026-02-30 03:04:05"}) {
        EXPECT_FALSE(wallClockFromText(text)) << text;
    }
}

} // namespace
} // namespace orv::platform
