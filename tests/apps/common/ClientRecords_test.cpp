#include "common/ClientRecords.h"

#include "common/ScriptError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;

struct Word {
    std::uint32_t x;
    std::uint32_t y;
    friend bool operator==(const Word &, const Word &) = default;
};

std::uint32_t bigEndian32(const stCommand_mgs &record, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = (value << 8U) | record.ext.at(offset + i);
    }
    return value;
}

Word wordsOf(const TimedRecord &timed)
{
    return {bigEndian32(timed.record, 0), bigEndian32(timed.record, 4)};
}

std::string recordFailure(const char *argument)
{
    try {
        (void)clientRecord(Json::parse(argument), 17);
    } catch (const ScriptError &error) {
        return error.what();
    }
    return "no failure";
}

std::string strokeFailure(const char *argument)
{
    try {
        (void)strokeRecords(Json::parse(argument), 17);
    } catch (const ScriptError &error) {
        return error.what();
    }
    return "no failure";
}

TEST(ClientRecord, takesFieldsAndFillsUpWithZeros)
{
    const auto record =
        clientRecord(Json::parse(R"({"wparam": 17, "lparam": -1, "ext": "01fF"})"), 18);

    EXPECT_EQ(record.pluginID, 18);
    EXPECT_EQ(record.wparam, 17U);
    EXPECT_EQ(record.lparam, 0xFFFFFFFFU);
    EXPECT_EQ(record.ext[0], 1);
    EXPECT_EQ(record.ext[1], 255);
    EXPECT_TRUE(std::all_of(record.ext.begin() + 2, record.ext.end(),
                            [](std::uint8_t byte) { return byte == 0; }));
}

TEST(ClientRecord, asHexadecimalDigitsComesBackUnchanged)
{
    std::string digits = "1100010011000000020000000102";
    digits.resize(128, '0');

    const auto record = clientRecord(Json(digits), 1);

    EXPECT_EQ(record.pluginID, 17);
    EXPECT_EQ(record.headerWord2, 1);
    EXPECT_EQ(record.wparam, 17U);
    EXPECT_EQ(record.lparam, 2U);
    EXPECT_EQ(hexText(record), digits);
}

TEST(ClientRecord, namesTheFieldAtFault)
{
    EXPECT_THAT(recordFailure(R"({"lparam": 0})"), HasSubstr("\"record.wparam\" is missing"));
    EXPECT_THAT(recordFailure(R"({"wparam": "1", "lparam": 0})"), HasSubstr("\"record.wparam\""));
    EXPECT_THAT(recordFailure(R"({"wparam": 1.5, "lparam": 0})"), HasSubstr("\"record.wparam\""));
    EXPECT_THAT(recordFailure(R"({"wparam": 4294967296, "lparam": 0})"),
                HasSubstr("\"record.wparam\""));
    EXPECT_THAT(recordFailure(R"({"wparam": 18446744073709551615, "lparam": 0})"),
                HasSubstr("\"record.wparam\""));
    EXPECT_THAT(recordFailure(R"({"wparam": 1, "lparam": 0, "pluginID": 65536})"),
                HasSubstr("\"record.pluginID\""));
    EXPECT_THAT(recordFailure(R"({"wparam": 1, "lparam": 0, "ext": "0"})"),
                HasSubstr("\"record.ext\""));
    EXPECT_THAT(recordFailure(R"({"wparam": 1, "lparam": 0, "ext": "zz"})"),
                HasSubstr("\"record.ext\""));
    EXPECT_THAT(recordFailure(R"({"wparam": 1, "lparam": 0, "text": "00"})"),
                HasSubstr("unknown key \"text\""));
    EXPECT_THAT(recordFailure(R"("00")"), HasSubstr("128 hexadecimal digits"));
    EXPECT_THAT(recordFailure("17"), HasSubstr("\"record\" is not an object"));
}

TEST(Stroke, pressesMovesAndReleasesWhereTheLastMoveWas)
{
    const auto records =
        strokeRecords(Json::parse(R"({"points": [[10, 20], [10, 120]], "seconds": 0.16})"), 17);

    ASSERT_EQ(records.size(), 12U);
    EXPECT_EQ(records.front().record.wparam, 0xEFFDU);
    EXPECT_EQ(records.front().record.lparam, 5U);
    EXPECT_EQ(wordsOf(records.front()), (Word{10, 20}));
    EXPECT_EQ(records[1].record.lparam, 10U);
    EXPECT_EQ(wordsOf(records[1]), (Word{10, 30}));
    EXPECT_DOUBLE_EQ(records[1].seconds, 0.016);
    EXPECT_EQ(wordsOf(records[10]), (Word{10, 120}));
    EXPECT_EQ(records.back().record.lparam, 6U);
    EXPECT_EQ(wordsOf(records.back()), (Word{10, 120}));
    EXPECT_DOUBLE_EQ(records.back().seconds, 0.16);
}

TEST(Stroke, goesThroughEachOfItsPoints)
{
    const auto records = strokeRecords(
        Json::parse(R"({"points": [[1, 1], [2, 2], [900, 1], [900, 2]], "seconds": 0.05})"), 17);

    const auto passes = [&records](Word point) {
        return std::any_of(records.begin(), records.end(), [point](const TimedRecord &timed) {
            return timed.record.lparam == 10 && wordsOf(timed) == point;
        });
    };
    EXPECT_TRUE(passes({2, 2}));
    EXPECT_TRUE(passes({900, 1}));
    EXPECT_TRUE(passes({900, 2}));
}

TEST(Stroke, putsBothCoordinatesIntoTheSecondWordOnTheLeftEdge)
{
    const auto records =
        strokeRecords(Json::parse(R"({"points": [[0, 200], [1, 200]], "seconds": 0})"), 17);

    EXPECT_EQ(wordsOf(records.front()), (Word{0, 200U << 16U}));
    EXPECT_EQ(wordsOf(records.back()), (Word{1, 200}));
}

TEST(Stroke, usesTheMouseNumberOfThePluginsGeneration)
{
    const Json argument = Json::parse(R"({"points": [[5, 5], [5, 5]], "seconds": 0})");

    EXPECT_EQ(strokeRecords(argument, 12).front().record.wparam, 1U);
    EXPECT_EQ(strokeRecords(argument, 16).front().record.wparam, 0xEFFDU);
    EXPECT_EQ(strokeRecords(argument, 18).front().record.wparam, 0xEFFDU);
    EXPECT_EQ(strokeRecords(argument, 19).front().record.wparam, 1U);
}

TEST(Stroke, namesTheArgumentAtFault)
{
    EXPECT_THAT(strokeFailure(R"({"seconds": 1})"), HasSubstr("\"stroke.points\" is missing"));
    EXPECT_THAT(strokeFailure(R"({"points": [[1, 2]], "seconds": 1})"),
                HasSubstr("\"stroke.points\""));
    EXPECT_THAT(strokeFailure(R"({"points": [[1, 2], [1]], "seconds": 1})"),
                HasSubstr("\"stroke.points\""));
    EXPECT_THAT(strokeFailure(R"({"points": [[1, 2], [-1, 2]], "seconds": 1})"),
                HasSubstr("coordinate outside 0 to 65535"));
    EXPECT_THAT(strokeFailure(R"({"points": [[1, 2], [3, 4]]})"),
                HasSubstr("\"stroke.seconds\" is missing"));
    EXPECT_THAT(strokeFailure(R"({"points": [[1, 2], [3, 4]], "seconds": 61})"),
                HasSubstr("\"stroke.seconds\""));
}

} // namespace
} // namespace orv::apps
