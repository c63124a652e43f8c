#include "platform/posix/PosixFiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace orv::platform {
namespace {

class SomeFiles : public PosixFiles {
public:
    [[nodiscard]] std::string userFolder(UserFolder) const override { return {}; }
    [[nodiscard]] std::string resourceFolder() const override { return {}; }
    bool setFolderIcon(const std::string &, const ImagePtr &) override { return false; }
    [[nodiscard]] std::optional<double> age(const std::string &) const override { return {}; }

    using PosixFiles::changeTime;
    using PosixFiles::setChangeTime;
};

class PosixFilesTest : public testing::Test {
protected:
    PosixFilesTest()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "orv-files-XXXXXX";
        folder_ = ::mkdtemp(pattern.data());
    }
    ~PosixFilesTest() override { std::filesystem::remove_all(folder_); }
    [[nodiscard]] std::string at(const std::string &name) const { return joinPath(folder_, name); }

    SomeFiles files_;

private:
    std::string folder_;
};

TEST_F(PosixFilesTest, WritesWholeFilesAndReadsThemBack)
{
    ASSERT_TRUE(files_.writeAtomically(at("a"), {1, 2, 3}));
    ASSERT_TRUE(files_.writeAtomically(at("a"), {4, 5}));

    EXPECT_EQ(files_.read(at("a"), 100), (Data{4, 5}));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(at("")), {}), 1);
}

TEST_F(PosixFilesTest, ReadsNothingThatIsMissingAFolderOrTooLarge)
{
    ASSERT_TRUE(files_.writeAtomically(at("a"), {1, 2, 3}));
    ASSERT_TRUE(files_.createFolder(at("folder")));

    EXPECT_EQ(files_.read(at("a"), 3), (Data{1, 2, 3}));
    EXPECT_EQ(files_.read(at("a"), 2), std::nullopt);
    EXPECT_EQ(files_.read(at("missing"), 100), std::nullopt);
    EXPECT_EQ(files_.read(at("folder"), 100), std::nullopt);
}

TEST_F(PosixFilesTest, WritesNothingIntoAMissingFolder)
{
    EXPECT_FALSE(files_.writeAtomically(at("missing/a"), {1}));
    EXPECT_FALSE(files_.exists(at("missing")));
}

TEST_F(PosixFilesTest, MakesFoldersWithAllOnTheWay)
{
    EXPECT_TRUE(files_.createFolder(at("one/two/three")));
    EXPECT_TRUE(files_.createFolder(at("one/two/three")));

    EXPECT_TRUE(files_.exists(at("one/two/three")));
}

TEST_F(PosixFilesTest, MakesNoFolderWhereAFileStands)
{
    ASSERT_TRUE(files_.writeAtomically(at("file"), {1}));

    EXPECT_FALSE(files_.createFolder(at("file")));
    EXPECT_FALSE(files_.createFolder(at("file/below")));
    EXPECT_FALSE(files_.createFolder(""));
    EXPECT_EQ(files_.read(at("file"), 9), Data{1});
}

TEST_F(PosixFilesTest, MovesButNeverOverAnother)
{
    ASSERT_TRUE(files_.writeAtomically(at("a"), {1}));
    ASSERT_TRUE(files_.writeAtomically(at("b"), {2}));

    EXPECT_FALSE(files_.move(at("a"), at("b")));
    EXPECT_TRUE(files_.move(at("a"), at("c")));
    EXPECT_FALSE(files_.move(at("missing"), at("d")));

    EXPECT_FALSE(files_.exists(at("a")));
    EXPECT_EQ(files_.read(at("b"), 9), Data{2});
    EXPECT_EQ(files_.read(at("c"), 9), Data{1});
}

TEST_F(PosixFilesTest, RefusesPathsWithANullByteInsteadOfCuttingThem)
{
    ASSERT_TRUE(files_.writeAtomically(at("a"), {1}));
    const std::string cut = at("a") + std::string(1, '\0') + "b";

    EXPECT_FALSE(files_.exists(cut));
    EXPECT_EQ(files_.read(cut, 9), std::nullopt);
    EXPECT_FALSE(files_.writeAtomically(cut, {2}));
    EXPECT_FALSE(files_.createFolder(cut));
    EXPECT_FALSE(files_.move(at("a"), cut));
    EXPECT_EQ(files_.read(at("a"), 9), Data{1});
}

TEST_F(PosixFilesTest, ChangeTimesAreSetToPartsOfASecond)
{
    ASSERT_TRUE(files_.writeAtomically(at("a"), {1}));

    EXPECT_TRUE(SomeFiles::setChangeTime(at("a"), 1000.25));

    EXPECT_NEAR(SomeFiles::changeTime(at("a")).value(), 1000.25, 1e-6);
    EXPECT_FALSE(SomeFiles::setChangeTime(at("missing"), 1.0));
    EXPECT_EQ(SomeFiles::changeTime(at("missing")), std::nullopt);
}

} // namespace
} // namespace orv::platform
