#include "orvane-streamer/remote/BrowsersFile.h"

#include "apps/orvane-streamer/remote/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace orv::apps {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

class BrowsersFileTest : public ::testing::Test {
protected:
    BrowsersFile at(const std::string &file)
    {
        return {file, [this](const std::string &line) { lines.push_back(line); }};
    }
    static mode_t modeOf(const std::string &file)
    {
        struct stat status {};
        return ::stat(file.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
    }
    void writePrivate(const std::string &text) const
    {
        folder.write("browsers", text);
        ::chmod(path.c_str(), 0600);
    }
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto &entry : fs::directory_iterator(folder.path())) {
            found.push_back(entry.path().filename().string());
        }
        return found;
    }

    TemporaryFolder folder;
    std::string path = folder.path("browsers");
    std::vector<std::string> lines;
    std::vector<PairedBrowser> two{
        {std::string(48, 'a'), std::chrono::system_clock::time_point(std::chrono::seconds(100))},
        {std::string(48, 'b'), std::chrono::system_clock::time_point(std::chrono::seconds(200))}};
};

TEST_F(BrowsersFileTest, givesBackWhatWasSaved)
{
    at(path).save(two);

    const auto loaded = at(path).load();

    ASSERT_EQ(loaded.size(), 2U);
    EXPECT_EQ(loaded[1].token, two[1].token);
    EXPECT_EQ(loaded[1].expires, two[1].expires);
    EXPECT_THAT(lines, IsEmpty());
    EXPECT_THAT(names(), ElementsAre("browsers"));
}

TEST_F(BrowsersFileTest, onlyItsOwnerCanReadIt)
{
    const std::string below = folder.path("new/newer/browsers");

    at(below).save(two);

    EXPECT_EQ(modeOf(below), 0600U);
    EXPECT_EQ(modeOf(folder.path("new")), 0700U);
    EXPECT_EQ(modeOf(folder.path("new/newer")), 0700U);
}

TEST_F(BrowsersFileTest, aMissingOneIsNoFault)
{
    EXPECT_THAT(at(path).load(), IsEmpty());
    EXPECT_THAT(at("").load(), IsEmpty());
    at("").save(two);

    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(BrowsersFileTest, aDamagedOneIsSetAside)
{
    for (const std::string text :
         {"", "{", "[]", "null", "{\"browsers\": 3}", "{\"browsers\": [{}]}",
          "{\"browsers\": [{\"token\": 1, \"expires\": 1}]}",
          "{\"browsers\": [{\"token\": \"a\", \"expires\": 99999999999999}]}",
          "{\"browsers\": [{\"token\": \"a\", \"expires\": -1}]}", "\xff\xfe"}) {
        lines.clear();
        writePrivate(text);

        EXPECT_THAT(at(path).load(), IsEmpty()) << text;

        EXPECT_THAT(names(), ElementsAre("browsers.unusable")) << text;
        EXPECT_EQ(folder.read("browsers.unusable"), text);
        EXPECT_THAT(lines, ElementsAre(HasSubstr("damaged"))) << text;
    }
}

TEST_F(BrowsersFileTest, oneThatIsTooLargeIsSetAside)
{
    writePrivate(std::string(70'000, ' '));

    EXPECT_THAT(at(path).load(), IsEmpty());

    EXPECT_THAT(lines, ElementsAre(HasSubstr("too large")));
}

TEST_F(BrowsersFileTest, oneThatOthersCouldReadOrWriteIsNotTrusted)
{
    for (const mode_t mode : {0640, 0604, 0620, 0602}) {
        lines.clear();
        at(path).save(two);
        ::chmod(path.c_str(), mode);

        EXPECT_THAT(at(path).load(), IsEmpty());

        EXPECT_THAT(lines, ElementsAre(HasSubstr("only its owner")));
    }
}

TEST_F(BrowsersFileTest, whatIsNoFileIsNotRead)
{
    at(folder.path("real")).save(two);
    fs::create_symlink(folder.path("real"), path);
    EXPECT_THAT(at(path).load(), IsEmpty());
    EXPECT_EQ(lines.size(), 1U);

    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_THAT(at(path).load(), IsEmpty());
    EXPECT_EQ(lines.size(), 2U);
}

TEST_F(BrowsersFileTest, oneThatCannotBeWrittenIsReportedAndNothingIsLeft)
{
    fs::create_directories(path + "/in the way");

    at(path).save(two);
    at("/proc/none/browsers").save(two);

    EXPECT_THAT(lines, ElementsAre(HasSubstr("cannot be written"), HasSubstr("/proc/none")));
    EXPECT_THAT(names(), testing::Not(testing::Contains(HasSubstr("browsers."))));
}

} // namespace
} // namespace orv::apps
