#include "common/ScriptReader.h"

#include "common/ScriptError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;

std::string failureOf(const std::string &text)
{
    std::istringstream in(text);
    ScriptReader reader(in);
    try {
        while (reader.next()) {
        }
    } catch (const ScriptError &error) {
        return std::to_string(reader.lineNumber()) + ": " + error.what();
    }
    return "no failure";
}

TEST(ScriptReader, skipsEmptyLinesAndRemarksAndCountsThem)
{
    std::istringstream in("# a remark\n\n   \r\n{\"note\": \"x\"}\r\n{\"wait\": 1}");
    ScriptReader reader(in);

    const auto first = reader.next();
    const int firstLine = reader.lineNumber();
    const auto second = reader.next();

    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->at("note"), "x");
    EXPECT_EQ(firstLine, 4);
    EXPECT_EQ(second->at("wait"), 1);
    EXPECT_EQ(reader.lineNumber(), 5);
    EXPECT_FALSE(reader.next());
}

TEST(ScriptReader, namesTheLineThatIsNoObject)
{
    EXPECT_THAT(failureOf("{\"note\": \"x\"}\n[1, 2]\n"),
                HasSubstr("2: no JSON object but an array"));
    EXPECT_THAT(failureOf("\n{\"note\": \n"), HasSubstr("2: no JSON object: "));
    EXPECT_THAT(failureOf("{} {}"), HasSubstr("1: no JSON object: "));
    EXPECT_THAT(failureOf("nonsense"), HasSubstr("1: no JSON object: "));
    EXPECT_THAT(failureOf("{\"note\": \"\xff\"}"), HasSubstr("1: no JSON object: "));
    EXPECT_THAT(failureOf("{\"wait\": 1e999}"), HasSubstr("1: no JSON object: "));
}

TEST(ScriptReader, goesOnAfterALineThatFailed)
{
    std::istringstream in("{\"a\": \n{\"note\": \"x\"}\n");
    ScriptReader reader(in);

    EXPECT_THROW((void)reader.next(), ScriptError);
    const auto next = reader.next();

    ASSERT_TRUE(next);
    EXPECT_EQ(reader.lineNumber(), 2);
}

TEST(ScriptReader, refusesWhatIsNestedTooDeep)
{
    const std::string open(100'000, '[');
    const std::string closed(100'000, ']');

    EXPECT_THAT(failureOf("{\"note\": " + open + closed + "}"),
                HasSubstr("1: nested deeper than 32 levels"));
}

TEST(ScriptReader, refusesALineThatIsTooLongAndFindsTheNextOne)
{
    const std::string longText(ScriptReader::longestLine, 'x');
    std::istringstream in("{\"note\": \"" + longText + "\"}\n{\"note\": \"y\"}\n");
    ScriptReader reader(in);

    EXPECT_THROW((void)reader.next(), ScriptError);
    const auto next = reader.next();

    ASSERT_TRUE(next);
    EXPECT_EQ(next->at("note"), "y");
    EXPECT_EQ(reader.lineNumber(), 2);
}

} // namespace
} // namespace orv::apps
