#include "platform/foundation/AtomicFile.h"

#include "platform/foundation/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <thread>

namespace orv::platform {
namespace {

using samples::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t kLimit = 16U << 20U;
constexpr std::size_t kSize = 100000;

Data filled(std::uint8_t byte, std::size_t size = kSize)
{
    return Data(size, byte);
}

/// Counts the calls and lets one of them fail, or ends the process just before it.
class NthCall : public FileCalls {
public:
    enum class Fate { fail, kill };

    NthCall(int number, Fate fate) : number_(number), fate_(fate) {}

    int calls = 0;
    /// The name of the call that failed.
    std::string failed;

    int openAt(int folder, const char *name, int flags, mode_t mode) override
    {
        return isDue("open") ? -1 : FileCalls::openAt(folder, name, flags, mode);
    }
    int lock(int file) override { return isDue("lock") ? -1 : FileCalls::lock(file); }
    int status(int file, struct stat *result) override
    {
        return isDue("status") ? -1 : FileCalls::status(file, result);
    }
    int statusAt(int folder, const char *name, struct stat *result) override
    {
        return isDue("statusAt") ? -1 : FileCalls::statusAt(folder, name, result);
    }
    int setMode(int file, mode_t mode) override
    {
        return isDue("setMode") ? -1 : FileCalls::setMode(file, mode);
    }
    int truncate(int file) override { return isDue("truncate") ? -1 : FileCalls::truncate(file); }
    /// A third of what is asked for at a time, as on a disk that is almost full.
    ssize_t write(int file, const void *bytes, std::size_t count) override
    {
        return isDue("write") ? -1 : FileCalls::write(file, bytes, std::min(count, kSize / 3 + 1));
    }
    int sync(int file) override { return isDue("sync") ? -1 : FileCalls::sync(file); }
    int renameAt(int folder, const char *from, const char *to) override
    {
        return isDue("rename") ? -1 : FileCalls::renameAt(folder, from, to);
    }
    int unlinkAt(int folder, const char *name) override
    {
        return isDue("unlink") ? -1 : FileCalls::unlinkAt(folder, name);
    }
    int close(int file) override
    {
        const bool isFailing = isDue("close");
        return FileCalls::close(file) != 0 || isFailing ? -1 : 0;
    }

private:
    bool isDue(const char *name)
    {
        if (++calls != number_) {
            return false;
        }
        if (fate_ == Fate::kill) {
            ::kill(::getpid(), SIGKILL);
        }
        failed = name;
        errno = EIO;
        return true;
    }

    int number_;
    Fate fate_;
};

/// Runs `body` in a process of its own and waits for its end; true when it was killed.
template <class Body> bool isKilledIn(Body body)
{
    const pid_t child = ::fork();
    if (child == 0) {
        body();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

TEST(AtomicFile, aNewFileHasTheBytesAndNothingElseIsLeft)
{
    const TemporaryFolder folder;

    EXPECT_TRUE(writeFileAtomically(folder.path("save.dat"), filled(1)));

    EXPECT_EQ(readFile(folder.path("save.dat"), kLimit), filled(1));
    EXPECT_THAT(folder.names(), ElementsAre("save.dat"));
}

TEST(AtomicFile, anOldFileIsReplacedByAShorterOneAndKeepsItsPermissions)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("save.dat");
    ASSERT_TRUE(writeFileAtomically(path, filled(1)));
    ASSERT_EQ(::chmod(path.c_str(), 0600), 0);

    EXPECT_TRUE(writeFileAtomically(path, filled(2, 10)));

    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    EXPECT_EQ(readFile(path, kLimit), filled(2, 10));
}

TEST(AtomicFile, anEmptyFileCanBeWritten)
{
    const TemporaryFolder folder;

    EXPECT_TRUE(writeFileAtomically(folder.path("empty"), {}));

    EXPECT_EQ(readFile(folder.path("empty"), kLimit), Data{});
}

TEST(AtomicFile, impossiblePathsAnswerFalse)
{
    const TemporaryFolder folder;

    EXPECT_FALSE(writeFileAtomically(folder.path("missing/save.dat"), filled(1)));
    EXPECT_FALSE(writeFileAtomically(folder.path(""), filled(1)));
    EXPECT_FALSE(writeFileAtomically("", filled(1)));
    EXPECT_FALSE(writeFileAtomically(folder.path(std::string(300, 'n')), filled(1)));
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(AtomicFile, aFolderInTheFilesPlaceStays)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(std::filesystem::create_directory(folder.path("save.dat")));

    EXPECT_FALSE(writeFileAtomically(folder.path("save.dat"), filled(1)));

    EXPECT_TRUE(std::filesystem::is_directory(folder.path("save.dat")));
    EXPECT_THAT(folder.names(), ElementsAre("save.dat"));
}

TEST(AtomicFile, whicheverCallFailsTheOldFileStaysAndNoTemporaryIsLeft)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("save.dat");
    NthCall counting(0, NthCall::Fate::fail);
    ASSERT_TRUE(writeFileAtomically(path, filled(1)));
    ASSERT_TRUE(writeFileAtomically(path, filled(1), counting));
    ASSERT_GE(counting.calls, 14);

    std::vector<std::string> failed;
    for (int number = 1; number <= counting.calls; ++number) {
        ASSERT_TRUE(writeFileAtomically(path, filled(1)));
        NthCall calls(number, NthCall::Fate::fail);

        const bool isWritten = writeFileAtomically(path, filled(2), calls);

        failed.push_back(calls.failed);
        const bool isFlushOfFolder =
            calls.failed == "sync" &&
            std::count(failed.begin(), failed.end(), std::string("sync")) == 2;
        const bool isClosing = calls.failed == "close";
        const bool isNewExpected = isFlushOfFolder || isClosing;
        EXPECT_EQ(isWritten, isClosing) << calls.failed;
        EXPECT_EQ(readFile(path, kLimit), isNewExpected ? filled(2) : filled(1)) << calls.failed;
        EXPECT_THAT(folder.names(), ElementsAre("save.dat")) << calls.failed;
    }
    EXPECT_THAT(failed, testing::IsSupersetOf({"open", "lock", "status", "setMode", "truncate",
                                               "write", "sync", "rename", "close"}));
}

TEST(AtomicFile, whereverTheProcessIsKilledTheFileIsTheOldOrTheNewOne)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("save.dat");
    NthCall counting(0, NthCall::Fate::kill);
    ASSERT_TRUE(writeFileAtomically(path, filled(1)));
    ASSERT_TRUE(writeFileAtomically(path, filled(1), counting));

    int seenOld = 0;
    int seenNew = 0;
    for (int number = 1; number <= counting.calls; ++number) {
        ASSERT_TRUE(writeFileAtomically(path, filled(1)));

        ASSERT_TRUE(isKilledIn([&] {
            NthCall calls(number, NthCall::Fate::kill);
            writeFileAtomically(path, filled(2), calls);
        }));

        const auto found = readFile(path, kLimit);
        seenOld += found == filled(1) ? 1 : 0;
        seenNew += found == filled(2) ? 1 : 0;
        EXPECT_EQ(seenOld + seenNew, number) << "killed before call " << number;
        EXPECT_LE(folder.names().size(), 2U) << "at most one temporary file";
    }
    EXPECT_GT(seenOld, 0);
    EXPECT_GT(seenNew, 0);
    ASSERT_TRUE(writeFileAtomically(path, filled(3)));
    EXPECT_EQ(readFile(path, kLimit), filled(3));
    EXPECT_THAT(folder.names(), ElementsAre("save.dat")) << "the next write takes over the rest";
}

TEST(AtomicFile, killedAtAnyMomentOfManyWritesTheFileIsAlwaysWhole)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("save.dat");
    ASSERT_TRUE(writeFileAtomically(path, filled(1)));
    std::uint32_t state = 12345;

    for (int round = 0; round < 60; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (std::uint8_t byte = 1;; ++byte) {
                writeFileAtomically(path, filled(byte));
            }
        }
        state = state * 1664525U + 1013904223U;
        for (std::atomic<std::uint32_t> spin = state >> 9U; spin > 0; --spin) {
        }
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));

        const auto found = readFile(path, kLimit);
        ASSERT_TRUE(found);
        ASSERT_EQ(found->size(), kSize);
        ASSERT_EQ(*found, filled(found->front())) << "round " << round;
    }
    EXPECT_LE(folder.names().size(), 2U);
}

TEST(AtomicFile, writersOfOnePathWaitForEachOther)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("save.dat");
    std::vector<std::thread> writers;
    std::atomic<int> failures = 0;

    for (std::uint8_t byte = 1; byte <= 4; ++byte) {
        writers.emplace_back([&, byte] {
            for (int i = 0; i < 25; ++i) {
                failures += writeFileAtomically(path, filled(byte)) ? 0 : 1;
            }
        });
    }
    for (int i = 0; i < 200; ++i) {
        if (const auto found = readFile(path, kLimit)) {
            EXPECT_EQ(*found, filled(found->empty() ? 0 : found->front()));
        }
    }
    for (std::thread &writer : writers) {
        writer.join();
    }

    EXPECT_EQ(failures, 0);
    EXPECT_THAT(folder.names(), ElementsAre("save.dat"));
}

TEST(AtomicFile, readingAnswersNothingForWhatIsNoFileOrTooLarge)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(writeFileAtomically(folder.path("ten"), filled(1, 10)));
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);

    EXPECT_EQ(readFile(folder.path("ten"), 10), filled(1, 10));
    EXPECT_EQ(readFile(folder.path("ten"), 9), std::nullopt);
    EXPECT_EQ(readFile(folder.path("missing"), kLimit), std::nullopt);
    EXPECT_EQ(readFile(folder.path(""), kLimit), std::nullopt);
    EXPECT_EQ(readFile(folder.path("pipe"), kLimit), std::nullopt);
}

} // namespace
} // namespace orv::platform
