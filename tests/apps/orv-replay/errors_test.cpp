#include "Replay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::apps::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

struct BadLine {
    const char *line;
    const char *message;
};

void PrintTo(const BadLine &bad, std::ostream *out)
{
    *out << bad.line;
}

class ReplayError : public ::testing::TestWithParam<BadLine> {};

TEST_P(ReplayError, namesLineAndArgumentAndEndsWithTwo)
{
    const Replay replay("{\"host\": {}}\n{\"note\": \"before\"}\n" + std::string(GetParam().line) +
                        "\n{\"note\": \"after\"}\n");

    EXPECT_EQ(replay.status(), 2);
    EXPECT_THAT(replay.errors(), StartsWith("script:3: "));
    EXPECT_THAT(replay.errors(), HasSubstr(GetParam().message));
    EXPECT_EQ(replay.all("note"), std::vector<Json>{"before"});
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ReplayError,
    ::testing::Values(
        BadLine{"5", "no JSON object"}, BadLine{"{", "no JSON object"},
        BadLine{R"({"dance": 1})", "unknown command \"dance\""},
        BadLine{R"({"host": {}})", "\"host\" comes once"},
        BadLine{R"({"wait": "1"})", "\"wait\" is not a number"},
        BadLine{R"({"wait": -1})", "\"wait\" is outside"},
        BadLine{R"({"wait": 1, "at": 1})", "unknown key \"at\""},
        BadLine{R"({"record": {"lparam": 1}})", "\"record.wparam\" is missing"},
        BadLine{R"({"packet": "123"})", "\"packet\" is not pairs of hexadecimal digits"},
        BadLine{R"({"mouse": "down"})", "\"at\" is missing"},
        BadLine{R"({"mouse": "press", "at": [1, 2]})", "unknown kind \"press\""},
        BadLine{R"({"mouse": "down", "at": [1, 2, 3]})", "\"at\" is not a list of 2 numbers"},
        BadLine{R"({"mouse": "down", "at": [1, 2], "flags": -1})", "\"flags\""},
        BadLine{R"({"key": "down"})", "\"code\" is missing"},
        BadLine{R"({"key": "press", "code": 1})", "unknown kind \"press\""},
        BadLine{R"({"click": "noButton"})", "no visible view is called \"noButton\""},
        BadLine{R"({"click": "@AnnotationManager"})", "names no outlet"},
        BadLine{R"({"call": "explode"})", "unknown operation \"explode\""},
        BadLine{R"({"call": "setDebug", "args": [1]})", "\"setDebug argument 1\""},
        BadLine{R"({"call": "setDebug"})", "takes 1 argument, not 0"},
        BadLine{R"({"call": "setDebug", "args": {}})", "\"args\" is not a list"},
        BadLine{R"({"call": "setM_clientDimension", "args": [1]})", "a list of 2 numbers"},
        BadLine{R"({"post": {"wParam": 1}})", "\"post.event\" is missing"},
        BadLine{R"({"displays": [{"id": 0, "frame": [0, 0, 9, 9]}]})", "\"displays.id\""},
        BadLine{R"({"front": {}})", "\"front.pid\" is missing"},
        BadLine{R"({"running": "x"})", "\"running\" is not a list of texts"},
        BadLine{R"({"accessibility": 1})", "\"accessibility\" is not true or false"},
        BadLine{R"({"freeBytes": "many"})", "\"freeBytes\" is not a number"},
        BadLine{R"({"age": {"file": "Documents"}})", "\"age.seconds\" is missing"},
        BadLine{R"({"screenshot": "../a.png"})", "\"screenshot\" is not below"},
        BadLine{R"({"screenshot": "a.png", "display": 7})", "there is no display 7"},
        BadLine{R"({"state": 1})", "\"state\" is not true or false"},
        BadLine{R"({"stroke": {"points": [], "seconds": 1}})", "\"stroke.points\""},
        BadLine{R"({"note": 1})", "\"note\" is not a text"}));

TEST(ReplayHostLine, hasToComeFirst)
{
    const Replay replay("# nothing yet\n{\"note\": \"x\"}\n");

    EXPECT_EQ(replay.status(), 2);
    EXPECT_EQ(replay.errors(), "script:2: \"host\" must come first\n");
}

TEST(ReplayHostLine, saysWhatOfTheDeskCannotBe)
{
    const Replay clock(R"({"host": {"clock": "2026-02-30 00:00:00"}})");
    const Replay desktop(R"({"host": {"desktop": "no picture"}})");

    EXPECT_EQ(clock.status(), 2);
    EXPECT_THAT(clock.errors(), HasSubstr("\"host.clock\""));
    EXPECT_EQ(desktop.status(), 2);
    EXPECT_THAT(desktop.errors(), HasSubstr("no picture"));
}

} // namespace
} // namespace orv::apps::test
