#include "common/ScriptCommand.h"

#include "common/ScriptError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;

std::string failureOf(const char *line)
{
    try {
        return commandOf(Json::parse(line));
    } catch (const ScriptError &error) {
        return error.what();
    }
}

TEST(ScriptCommand, isTheKeyThatNamesOne)
{
    EXPECT_EQ(commandOf(Json::parse(R"({"mouse": "down", "at": [1, 2], "flags": 0})")), "mouse");
    EXPECT_EQ(commandOf(Json::parse(R"({"args": [], "call": "release"})")), "call");
}

TEST(ScriptCommand, namesTheKeyAtFault)
{
    EXPECT_THAT(failureOf("{}"), HasSubstr("no command"));
    EXPECT_THAT(failureOf(R"({"jump": 1})"), HasSubstr("unknown command \"jump\""));
    EXPECT_THAT(failureOf(R"({"wait": 1, "note": "x"})"), HasSubstr("two commands"));
    EXPECT_THAT(failureOf(R"({"wait": 1, "at": 2})"), HasSubstr("unknown key \"at\""));
    EXPECT_THAT(failureOf(R"({"wait": 1, "": 2})"), HasSubstr("unknown key \"\""));
}

} // namespace
} // namespace orv::apps
