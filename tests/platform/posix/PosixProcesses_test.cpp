#include "platform/posix/PosixProcesses.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace orv::platform {
namespace {

/// Opens a named pipe for reading, which waits for the started program to open its other end.
class PosixProcessesTest : public testing::Test {
protected:
    PosixProcessesTest()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "orv-processes-XXXXXX";
        folder_ = ::mkdtemp(pattern.data());
        pipe_ = folder_ + "/pipe";
        EXPECT_EQ(::mkfifo(pipe_.c_str(), 0600), 0);
    }
    ~PosixProcessesTest() override { std::filesystem::remove_all(folder_); }

    [[nodiscard]] const std::string &pipe() const { return pipe_; }
    [[nodiscard]] std::string received() const
    {
        std::ifstream in(pipe_);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::string folder_;
    std::string pipe_;
};

TEST_F(PosixProcessesTest, StartsAProgramWithItsArguments)
{
    PosixProcesses processes;

    processes.start("/bin/sh", {"-c", R"(printf '%s|' "$@" > "$0")", pipe(), "one", "two words"});

    EXPECT_EQ(received(), "one|two words|");
}

TEST_F(PosixProcessesTest, ItsOutputGoesNowhereAndDoesNotEndIt)
{
    PosixProcesses processes;

    processes.start("sh", {"-c", R"(echo out; echo error >&2; echo done > "$0")", pipe()});

    EXPECT_EQ(received(), "done\n");
}

TEST_F(PosixProcessesTest, LeavesNoChildBehind)
{
    PosixProcesses processes;

    processes.start("/bin/sh", {"-c", R"(echo started > "$0")", pipe()});
    processes.start("/no/such/program", {});
    ASSERT_EQ(received(), "started\n");

    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(PosixProcessesTest, HasNoScriptRunner)
{
    PosixProcesses processes;

    processes.runScript("echo ran > " + pipe());

    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

} // namespace
} // namespace orv::platform
