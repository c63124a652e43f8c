#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

// The built program itself: its arguments, its exit status, its streams.

namespace orv::apps::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

struct Outcome {
    int status = -1;
    std::string output;
};

/// Runs the program through a shell; the output holds both streams.
Outcome run(const std::string &before, const std::string &arguments)
{
    const std::string command =
        before + ORV_REPLAY_PROGRAM + std::string(" ") + arguments + " 2>&1";
    Outcome outcome;
    std::FILE *pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return outcome;
    }
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        outcome.output.append(buffer.data(), count);
    }
    outcome.status = WEXITSTATUS(::pclose(pipe));
    return outcome;
}

TEST(ReplayProgram, playsAScriptFromStandardInput)
{
    const Outcome outcome = run(R"(printf '{"host": {}}\n{"note": "read"}\n' | )", "-");

    EXPECT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_THAT(outcome.output, HasSubstr(R"({"time":0.0,"note":"read"})"));
}

TEST(ReplayProgram, leavesLogLinesOutWhenAsked)
{
    const std::string script =
        R"(printf '{"host": {"debug": true}}\n{"record": {"wparam": 0, "lparam": 0, "ext": "01"}}\n' | )";

    EXPECT_THAT(run(script, "-").output, HasSubstr("\"log\":"));
    EXPECT_THAT(run(script, "--quiet-log -").output, Not(HasSubstr("\"log\":")));
}

TEST(ReplayProgram, namesTheLineOfTheScript)
{
    const Outcome outcome = run(R"(printf '{"host": {}}\n{"jump": 1}\n' | )", "-");

    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "-:2: unknown command \"jump\"\n");
}

TEST(ReplayProgram, explainsItselfAndItsOptions)
{
    EXPECT_EQ(run("", "--help").status, 0);
    EXPECT_THAT(run("", "--help").output, HasSubstr("usage: orv-replay"));
    EXPECT_EQ(run("", "").status, 2);
    EXPECT_EQ(run("", "--home").status, 2);
    EXPECT_THAT(run("", "--hime x -").output, HasSubstr("There is no option \"--hime\"."));
    EXPECT_THAT(run("", "a b").output, HasSubstr("\"b\" is one too many"));
    EXPECT_EQ(run("", "/nowhere/script.jsonl").status, 2);
}

} // namespace
} // namespace orv::apps::test
