#include "orvane-streamer/remote/RecordFeed.h"

#include "apps/orvane-streamer/remote/FakeHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace orv::apps {
namespace {

using ::testing::ElementsAre;

std::vector<stCommand_mgs> records(std::uint32_t first, std::uint32_t count)
{
    std::vector<stCommand_mgs> made;
    for (std::uint32_t i = 0; i < count; ++i) {
        made.push_back({17, 1, 100, first + i, {}});
    }
    return made;
}

/// Notes records and passings in one list.
class ListingHost : public FakeHost {
public:
    void recordsArrived(std::span<const stCommand_mgs> arrived) override
    {
        FakeHost::recordsArrived(arrived);
        for (const stCommand_mgs &record : arrived) {
            note(std::to_string(record.lparam));
        }
    }
};

class RecordFeedTest : public ::testing::Test {
protected:
    ~RecordFeedTest() override { host.unblock(); }

    ListingHost host;
    RecordFeed feed{host, [this] { host.note("room"); }};
};

TEST_F(RecordFeedTest, handsOverInOrder)
{
    feed.putPassing("Anna");
    feed.putRecords(records(1, 2));
    feed.putPassing("Ben");
    feed.putRecords(records(3, 1));
    feed.start();

    feed.stop();

    EXPECT_THAT(host.lines(), ElementsAre("pen to Anna", "1", "2", "pen to Ben", "3"));
}

TEST_F(RecordFeedTest, ofPassingsWithoutARecordBetweenThemTheLastCounts)
{
    feed.putPassing("Anna");
    feed.putPassing("");
    feed.putPassing("Ben");
    feed.putRecords({});
    feed.putPassing("Cleo");
    feed.start();

    feed.stop();

    EXPECT_THAT(host.lines(), ElementsAre("pen to Cleo"));
}

TEST_F(RecordFeedTest, smallLotsThatWaitAreHandedOverTogether)
{
    for (std::uint32_t i = 0; i < 2000; ++i) {
        feed.putRecords(records(i, 1));
    }
    feed.start();

    feed.stop();

    EXPECT_EQ(host.recordCount(), 2000U);
    EXPECT_EQ(host.largestLot(), RecordFeed::largestLot);
}

TEST_F(RecordFeedTest, isFullOfRecordsAndTellsWhenThereIsRoom)
{
    feed.putRecords(records(0, 1000));
    feed.putRecords(records(0, 1000));
    feed.putRecords(records(0, 1000));
    feed.putRecords(records(0, 1000));
    EXPECT_FALSE(feed.isFull());
    feed.putRecords(records(0, 96));
    EXPECT_TRUE(feed.isFull());

    feed.start();

    EXPECT_TRUE(host.waitForLine("room"));
    EXPECT_EQ(host.waitForRecords(4096).size(), 4096U);
    EXPECT_FALSE(feed.isFull());
}

TEST_F(RecordFeedTest, isFullOfPassingsToo)
{
    for (std::size_t i = 0; i < RecordFeed::fullLots / 2; ++i) {
        EXPECT_FALSE(feed.isFull());
        feed.putPassing("Anna");
        feed.putRecords(records(0, 1));
    }

    EXPECT_TRUE(feed.isFull());
    feed.start();
    EXPECT_TRUE(host.waitForLine("room"));
}

TEST_F(RecordFeedTest, tellsOfNoRoomThatNobodyWaitsFor)
{
    feed.putRecords(records(0, 5000));
    feed.start();

    feed.stop();

    EXPECT_FALSE(feed.isFull());
    for (const std::string &line : host.lines()) {
        EXPECT_NE(line, "room");
    }
}

TEST_F(RecordFeedTest, takesNothingAfterItsEnd)
{
    feed.start();
    feed.stop();

    feed.putRecords(records(0, 5000));
    feed.putPassing("Anna");
    feed.stop();

    EXPECT_FALSE(feed.isFull());
    EXPECT_TRUE(host.lines().empty());
}

} // namespace
} // namespace orv::apps
