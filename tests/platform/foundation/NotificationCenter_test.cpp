#include "platform/foundation/NotificationCenter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace orv::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NotificationCenterTest : public testing::Test {
protected:
    NotificationCenter::Receiver noting(const std::string &who)
    {
        return [this, who](std::string_view name, const UserInfo &) {
            log_.push_back(who + ":" + std::string(name));
        };
    }

    NotificationCenter center_;
    std::vector<std::string> log_;
    int first_ = 0;
    int second_ = 0;
};

TEST_F(NotificationCenterTest, aPostReachesTheObserversOfItsNameInTheOrderTheyWereAdded)
{
    center_.addObserver(&second_, "event", noting("second"));
    center_.addObserver(&first_, "event", noting("first"));
    center_.addObserver(&first_, "other", noting("other"));

    center_.post("event");

    EXPECT_THAT(log_, ElementsAre("second:event", "first:event"));
}

TEST_F(NotificationCenterTest, theUserInfoArrives)
{
    UserInfo seen;
    center_.addObserver(&first_, "event",
                        [&](std::string_view, const UserInfo &info) { seen = info; });

    center_.post("event", {{"number", 7}, {"data", Data{1, 2}}});

    EXPECT_EQ(std::get<std::int32_t>(seen.at("number")), 7);
    EXPECT_EQ(std::get<Data>(seen.at("data")), (Data{1, 2}));
}

TEST_F(NotificationCenterTest, aPairThatIsAddedAgainTakesTheNewReceiverOnce)
{
    center_.addObserver(&first_, "event", noting("old"));
    center_.addObserver(&second_, "event", noting("second"));
    center_.addObserver(&first_, "event", noting("new"));

    center_.post("event");

    EXPECT_THAT(log_, ElementsAre("new:event", "second:event"));
}

TEST_F(NotificationCenterTest, aPairThatIsAddedAgainDuringADeliveryGetsItInItsNewReceiver)
{
    center_.addObserver(&first_, "event", [&](std::string_view, const UserInfo &) {
        center_.addObserver(&second_, "event", noting("new"));
    });
    center_.addObserver(&second_, "event", noting("old"));

    center_.post("event");

    EXPECT_THAT(log_, ElementsAre("new:event"));
}

TEST_F(NotificationCenterTest, removingOneNameLeavesTheOthers)
{
    center_.addObserver(&first_, "event", noting("first"));
    center_.addObserver(&first_, "other", noting("first"));

    center_.removeObserver(&first_, "event");
    center_.removeObserver(&first_, "never added");
    center_.removeObserver(&second_, "other");
    center_.post("event");
    center_.post("other");

    EXPECT_THAT(log_, ElementsAre("first:other"));
}

TEST_F(NotificationCenterTest, removingAnObserverRemovesAllItsNames)
{
    center_.addObserver(&first_, "event", noting("first"));
    center_.addObserver(&first_, "other", noting("first"));
    center_.addObserver(&second_, "other", noting("second"));

    center_.removeObserver(&first_);
    center_.post("event");
    center_.post("other");

    EXPECT_THAT(log_, ElementsAre("second:other"));
}

TEST_F(NotificationCenterTest, oneThatIsRemovedDuringADeliveryIsNotCalledAnyMore)
{
    center_.addObserver(&first_, "event", [this](std::string_view, const UserInfo &) {
        log_.push_back("first");
        center_.removeObserver(&second_);
        center_.removeObserver(&first_);
    });
    center_.addObserver(&second_, "event", noting("second"));

    center_.post("event");
    center_.post("event");

    EXPECT_THAT(log_, ElementsAre("first"));
}

TEST_F(NotificationCenterTest, oneThatIsAddedDuringADeliveryHearsTheNextPost)
{
    bool isAdded = false;
    center_.addObserver(&first_, "event", [&](std::string_view, const UserInfo &) {
        if (!isAdded) {
            center_.addObserver(&second_, "event", noting("second"));
            isAdded = true;
        }
    });

    center_.post("event");
    EXPECT_THAT(log_, IsEmpty());
    center_.post("event");

    EXPECT_THAT(log_, ElementsAre("second:event"));
}

TEST_F(NotificationCenterTest, anObserverMayPostWhileItRuns)
{
    center_.addObserver(&first_, "outer",
                        [this](std::string_view, const UserInfo &) { center_.post("inner"); });
    center_.addObserver(&first_, "inner", noting("first"));
    center_.addObserver(&second_, "outer", noting("second"));

    center_.post("outer");

    EXPECT_THAT(log_, ElementsAre("first:inner", "second:outer"));
}

TEST_F(NotificationCenterTest, threadsMayPostAddAndRemoveAtOnce)
{
    std::atomic<int> heard = 0;
    center_.addObserver(&first_, "event",
                        [&heard](std::string_view, const UserInfo &) { ++heard; });

    std::thread poster([this] {
        for (int i = 0; i < 1000; ++i) {
            center_.post("event");
        }
    });
    for (int i = 0; i < 1000; ++i) {
        center_.addObserver(&second_, "event", [](std::string_view, const UserInfo &) {});
        center_.removeObserver(&second_);
    }
    poster.join();

    EXPECT_EQ(heard, 1000);
}

TEST(NotificationCenterLocal, isOneForTheProcess)
{
    EXPECT_EQ(&NotificationCenter::local(), &NotificationCenter::local());
}

} // namespace
} // namespace orv::platform
