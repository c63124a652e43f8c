#include "common/TypedText.h"

#include "common/ScriptError.h"

#include <gmock/gmock.h>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;

std::string failureOf(const char *argument)
{
    try {
        static_cast<void>(typedRecords(Json::parse(argument), 17));
    } catch (const ScriptError &error) {
        return error.what();
    }
    return "none";
}

TEST(TypedText, isOneRecordForEachUnitSpreadOverTheTime)
{
    const auto records = typedRecords(Json::parse(R"({"text": "ab", "seconds": 1})"), 17);

    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(hexText(records[0].record).substr(0, 40), "11000000feef000040000000"
                                                        "0000000000000061");
    EXPECT_EQ(records[0].seconds, 0.5);
    EXPECT_EQ(records[1].seconds, 1.0);
}

TEST(TypedText, sendsReturnForALineFeedAndTheNumberOfTheGeneration)
{
    const auto records = typedRecords(Json::parse(R"({"text": "\n", "seconds": 0})"), 12);
    EXPECT_EQ(records.front().record.wparam, 2U);
    EXPECT_EQ(records.front().record.ext.at(7), 13);
}

TEST(TypedText, comesInUnitsOfSixteenBits)
{
    EXPECT_EQ(utf16Of("a\u00e9\u4e2d\U0001F600"), u"a\u00e9\u4e2d\U0001F600");
    EXPECT_EQ(typedRecords(Json::parse(R"({"text": "😀", "seconds": 0})"), 17).size(), 2U);
}

TEST(TypedText, namesTheArgumentAtFault)
{
    EXPECT_THAT(failureOf(R"({"seconds": 1})"), HasSubstr("\"type.text\" is missing"));
    EXPECT_THAT(failureOf(R"({"text": "", "seconds": 1})"), HasSubstr("\"type.text\""));
    EXPECT_THAT(failureOf(R"({"text": "a"})"), HasSubstr("\"type.seconds\" is missing"));
    EXPECT_THAT(failureOf(R"({"text": "a", "seconds": 61})"), HasSubstr("\"type.seconds\""));
    EXPECT_THAT(failureOf(R"({"text": "a", "seconds": 1, "speed": 2})"), HasSubstr("speed"));
}

} // namespace
} // namespace orv::apps
