#include "orvane-streamer/remote/StateRecords.h"

#include "apps/orvane-streamer/remote/RawClient.h"

#include <gtest/gtest.h>

#include <vector>

namespace orv::apps {
namespace {

stCommand_mgs modeSwitch(std::uint32_t number, std::uint32_t mode, std::uint8_t shown)
{
    return {17, 1, number, mode, {shown, 0, 0, 1}};
}

class StateRecordsTest : public ::testing::Test {
protected:
    void note(const std::vector<stCommand_mgs> &records)
    {
        for (const stCommand_mgs &record : records) {
            state.note(record);
        }
    }
    void expectAll(const std::vector<stCommand_mgs> &wanted) const
    {
        EXPECT_EQ(bytesOf(state.all()), bytesOf(wanted));
    }

    StateRecords state;
};

TEST_F(StateRecordsTest, keepTheLastOfEachKind)
{
    const stCommand_mgs counts{17, 1, 17, 0, {1}};
    const stCommand_mgs newCounts{17, 1, 17, 0, {2}};
    const stCommand_mgs page{17, 1, 16, 3, {}};

    note({counts, page, newCounts});

    expectAll({page, newCounts});
}

TEST_F(StateRecordsTest, keepTheLastOfEachMode)
{
    note({modeSwitch(0, 0, 1), modeSwitch(0, 1, 1), modeSwitch(0x8000, 0, 0)});

    expectAll({modeSwitch(0, 1, 1), modeSwitch(0x8000, 0, 0)});
}

TEST_F(StateRecordsTest, anAnswerTellsOfRecordingAsWell)
{
    const stCommand_mgs running{17, 1, 0x8015, 0, {1}};
    const stCommand_mgs ended{17, 1, 21, 0, {0}};

    note({running, ended});

    expectAll({ended});
}

TEST_F(StateRecordsTest, keepEachOfTheOtherKinds)
{
    std::vector<stCommand_mgs> all;
    for (const std::uint32_t number : {1U, 8U, 9U, 16U, 17U, 21U, 0xEFFDU, 0xEFFEU}) {
        all.push_back({17, 1, number, 1, {}});
    }

    note(all);

    expectAll(all);
}

TEST_F(StateRecordsTest, keepNothingThatTellsOfNoState)
{
    // A snapshot that was saved, a call for help, and what is not known.
    note({{17, 1, 18, 1, {}}, {17, 1, 0, 1, {}}, {17, 1, 2, 1, {}}, {17, 1, 0x8011, 1, {}}});

    expectAll({});
}

} // namespace
} // namespace orv::apps
