#include "orvane-streamer/Lesson.h"

#include "common/ScriptError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace orv::apps {
namespace {

Lesson lesson(const std::string &script, std::optional<std::uint16_t> plugin = std::nullopt)
{
    std::istringstream in(script);
    return readLesson(in, "lesson", plugin);
}

TEST(Lesson, putsItsLinesOntoATimeLine)
{
    const Lesson read = lesson(R"({"host": {}}
{"note": "first"}
{"wait": 0.5}
{"stroke": {"points": [[10, 10], [20, 10]], "seconds": 0.032}}
{"record": {"wparam": 17, "lparam": 1}}
{"screenshot": "end.png"}
{"wait": 1}
)");

    ASSERT_EQ(read.steps.size(), 7U);
    EXPECT_EQ(std::get<LessonNote>(read.steps[0].action).text, "first");
    EXPECT_EQ(read.steps[1].at, 0.5);
    EXPECT_EQ(std::get<stCommand_mgs>(read.steps[1].action).lparam, 5U);
    EXPECT_DOUBLE_EQ(read.steps[4].at, 0.532);
    EXPECT_EQ(std::get<stCommand_mgs>(read.steps[4].action).lparam, 6U);
    EXPECT_EQ(std::get<stCommand_mgs>(read.steps[5].action).wparam, 17U);
    EXPECT_EQ(std::get<LessonScreenshot>(read.steps[6].action).file, "end.png");
    EXPECT_DOUBLE_EQ(read.seconds, 1.532);
}

TEST(Lesson, isPlayedUnderThePluginThatWasAskedFor)
{
    const std::string script = "{\"host\": {\"plugin\": 16}}\n"
                               "{\"record\": {\"wparam\": 17, \"lparam\": 1}}\n";

    EXPECT_EQ(std::get<stCommand_mgs>(lesson(script).steps[0].action).pluginID, 16);
    EXPECT_EQ(lesson(script, 18).host.plugin, 18U);
    EXPECT_EQ(std::get<stCommand_mgs>(lesson(script, 18).steps[0].action).pluginID, 18);
}

TEST(Lesson, leavesTheDisplayToTheDesktop)
{
    EXPECT_FALSE(lesson(R"({"host": {"displayID": 4}})").host.displayID);
}

TEST(Lesson, namesTheLineThatCannotBePlayed)
{
    try {
        (void)lesson("{\"host\": {}}\n\n{\"click\": \"penButton\"}\n");
        FAIL() << "there is no such click on a real desktop";
    } catch (const ScriptError &error) {
        EXPECT_THAT(error.what(), ::testing::StartsWith("lesson:3: \"click\" has no meaning"));
    }
}

} // namespace
} // namespace orv::apps
