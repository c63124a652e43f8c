#include "common/RecordText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>

namespace orv::apps {
namespace {

std::string text(std::uint32_t wparam, std::uint32_t lparam,
                 std::initializer_list<std::uint8_t> ext = {})
{
    stCommand_mgs record{17, 1, wparam, lparam, {}};
    std::copy(ext.begin(), ext.end(), record.ext.begin());
    return recordText(record);
}

TEST(RecordText, tellsCountsOfUndoAndRedo)
{
    EXPECT_EQ(text(17, 0, {2, 1, 3, 0}), "undo and redo: 258 to undo, 3 to redo");
}

TEST(RecordText, tellsModesAndWhoAskedForThem)
{
    EXPECT_EQ(text(0x8000, 0, {1, 0, 1, 1}), "annotation mode shown, toolbar on (as asked)");
    EXPECT_EQ(text(0, 2, {0, 0, 0, 1}), "snapshot hidden, toolbar off");
    EXPECT_EQ(text(0, 9, {1, 0, 0, 1}), "mode 9 shown, toolbar off");
    EXPECT_EQ(text(0, 1), "help wanted");
}

TEST(RecordText, tellsSwitches)
{
    EXPECT_EQ(text(0xEFFD, 1), "client's mouse on");
    EXPECT_EQ(text(0xEFFE, 0), "client's keyboard off");
    EXPECT_EQ(text(3, 1), "annotation mode on");
    EXPECT_EQ(text(20, 3), "settings wanted for page turning: accessibility Keynote");
    EXPECT_EQ(text(0x8015, 1, {1, 0, 7, 0}), "video recording: status 1, error 7");
}

TEST(RecordText, tellsTheNumbersOfAnUnknownRecord)
{
    EXPECT_EQ(text(0x1234, 5, {0, 0xab}), "record 0x1234, 5, 00ab");
    EXPECT_EQ(text(0x1234, 5), "record 0x1234, 5");
}

} // namespace
} // namespace orv::apps
