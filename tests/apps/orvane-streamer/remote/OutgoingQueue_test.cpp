#include "orvane-streamer/remote/OutgoingQueue.h"

#include "apps/orvane-streamer/remote/RawClient.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orv::apps {
namespace {

using Text = OutgoingQueue::Text;

stCommand_mgs numbered(std::uint32_t number)
{
    return {17, 1, number, 0, {}};
}

RemoteMessage message(std::uint8_t first)
{
    return std::make_shared<const std::vector<std::uint8_t>>(std::vector<std::uint8_t>{first});
}

std::vector<std::uint8_t> recordsMessage(const std::vector<stCommand_mgs> &records)
{
    std::vector<std::uint8_t> bytes = bytesOf(records);
    bytes.insert(bytes.begin(), 1);
    return bytes;
}

TEST(OutgoingQueue, keepsTheOrder)
{
    OutgoingQueue queue;
    EXPECT_TRUE(queue.addText(Text::event, "one"));
    EXPECT_TRUE(queue.addRecord(numbered(2)));
    EXPECT_TRUE(queue.addPicture(message(3)));
    EXPECT_TRUE(queue.addPackage(message(2)));

    EXPECT_EQ(queue.take().text, "one");
    EXPECT_EQ(*queue.take().bytes, recordsMessage({numbered(2)}));
    EXPECT_EQ(queue.take().bytes->front(), 3);
    EXPECT_EQ(queue.take().bytes->front(), 2);
    EXPECT_TRUE(queue.empty());
}

TEST(OutgoingQueue, recordsBehindOneAnotherAreOneMessage)
{
    OutgoingQueue queue;
    (void)queue.addRecord(numbered(1));
    (void)queue.addRecord(numbered(2));
    (void)queue.addText(Text::event, "between");
    (void)queue.addRecord(numbered(3));

    EXPECT_EQ(*queue.take().bytes, recordsMessage({numbered(1), numbered(2)}));
    EXPECT_EQ(queue.take().text, "between");
    EXPECT_EQ(*queue.take().bytes, recordsMessage({numbered(3)}));
}

TEST(OutgoingQueue, ofTextsThatTellHowThingsStandTheLastOneGoes)
{
    OutgoingQueue queue;
    (void)queue.addText(Text::clients, "old");
    (void)queue.addText(Text::display, "small");
    (void)queue.addText(Text::event, "event");
    (void)queue.addText(Text::clients, "new");

    EXPECT_EQ(queue.take().text, "small");
    EXPECT_EQ(queue.take().text, "event");
    EXPECT_EQ(queue.take().text, "new");
    EXPECT_TRUE(queue.empty());
}

TEST(OutgoingQueue, sharesWhatIsLong)
{
    OutgoingQueue queue;
    const RemoteMessage package = message(2);

    (void)queue.addPackage(package);

    EXPECT_EQ(queue.take().bytes, package);
}

TEST(OutgoingQueue, hasRoomForSoMuchOfEachKind)
{
    OutgoingQueue queue;
    for (std::size_t i = 0; i < OutgoingQueue::mostRecords; ++i) {
        ASSERT_TRUE(queue.addRecord(numbered(1)));
    }
    for (std::size_t i = 0; i < OutgoingQueue::mostTexts; ++i) {
        ASSERT_TRUE(queue.addText(Text::event, "event"));
    }
    for (std::size_t i = 0; i < OutgoingQueue::mostPictures; ++i) {
        ASSERT_TRUE(queue.addPicture(message(3)));
    }
    for (std::size_t i = 0; i < OutgoingQueue::mostPackages; ++i) {
        ASSERT_TRUE(queue.addPackage(message(2)));
    }

    EXPECT_FALSE(queue.addRecord(numbered(1)));
    EXPECT_FALSE(queue.addText(Text::event, "event"));
    EXPECT_FALSE(queue.addPicture(message(3)));
    EXPECT_FALSE(queue.addPackage(message(2)));
    EXPECT_TRUE(queue.addText(Text::clients, "clients"));

    (void)queue.take();
    EXPECT_TRUE(queue.addRecord(numbered(1)));
}

} // namespace
} // namespace orv::apps
