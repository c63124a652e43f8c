#include "platform/posix/PosixFiles.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

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

TEST_F(PosixFilesTest, CopiesAFile)
{
    ASSERT_TRUE(files_.writeAtomically(at("a"), {1, 2, 3}));

    EXPECT_TRUE(files_.copy(at("a"), at("b")));

    EXPECT_EQ(files_.read(at("a"), 9), (Data{1, 2, 3}));
    EXPECT_EQ(files_.read(at("b"), 9), (Data{1, 2, 3}));
}

TEST_F(PosixFilesTest, CopiesAFolderWithItsFoldersAndItsLinksAsLinks)
{
    ASSERT_TRUE(files_.createFolder(at("from/one/two")));
    ASSERT_TRUE(files_.createFolder(at("from/empty")));
    ASSERT_TRUE(files_.writeAtomically(at("from/one/two/file"), {1}));
    ASSERT_TRUE(files_.createLink(at("from/toFile"), "one/two/file"));
    ASSERT_TRUE(files_.createLink(at("from/toFolder"), "one"));
    ASSERT_TRUE(files_.createLink(at("from/toNothing"), "missing"));
    ASSERT_TRUE(files_.createLink(at("from/round"), "."));

    EXPECT_TRUE(files_.copy(at("from"), at("to")));

    EXPECT_EQ(files_.read(at("to/one/two/file"), 9), Data{1});
    EXPECT_TRUE(std::filesystem::is_empty(at("to/empty")));
    for (const auto &[name, target] : {std::pair("toFile", "one/two/file"),
                                       {"toFolder", "one"},
                                       {"toNothing", "missing"},
                                       {"round", "."}}) {
        EXPECT_EQ(std::filesystem::read_symlink(at(std::string("to/") + name)), target);
    }
}

TEST_F(PosixFilesTest, CopiesALinkItself)
{
    ASSERT_TRUE(files_.createLink(at("link"), "missing"));

    EXPECT_TRUE(files_.copy(at("link"), at("other")));

    EXPECT_EQ(std::filesystem::read_symlink(at("other")), "missing");
}

TEST_F(PosixFilesTest, CopiesAFolderThatNobodyMayWriteToAsSuchAFolder)
{
    ASSERT_TRUE(files_.createFolder(at("from")));
    ASSERT_TRUE(files_.writeAtomically(at("from/file"), {1}));
    const auto locked = std::filesystem::perms(0555);
    std::filesystem::permissions(at("from"), locked);

    EXPECT_TRUE(files_.copy(at("from"), at("to")));

    EXPECT_EQ(files_.read(at("to/file"), 9), Data{1});
    EXPECT_EQ(std::filesystem::status(at("to")).permissions(), locked);
    for (const char *name : {"from", "to"}) {
        std::filesystem::permissions(at(name), std::filesystem::perms::owner_all);
    }
}

TEST_F(PosixFilesTest, CopiesNothingOverAnotherNorFromNowhereNorToNowhere)
{
    ASSERT_TRUE(files_.writeAtomically(at("a"), {1}));
    ASSERT_TRUE(files_.writeAtomically(at("b"), {2}));
    ASSERT_TRUE(files_.createFolder(at("folder")));
    ASSERT_TRUE(files_.createLink(at("toNothing"), at("missing")));

    EXPECT_FALSE(files_.copy(at("a"), at("b")));
    EXPECT_FALSE(files_.copy(at("a"), at("folder")));
    EXPECT_FALSE(files_.copy(at("a"), at("toNothing")));
    EXPECT_FALSE(files_.copy(at("missing"), at("c")));
    EXPECT_FALSE(files_.copy(at("a"), at("missing/c")));
    EXPECT_FALSE(files_.copy(at("folder"), at("missing/c")));

    EXPECT_EQ(files_.read(at("b"), 9), Data{2});
    EXPECT_FALSE(files_.exists(at("missing")));
    EXPECT_FALSE(files_.exists(at("c")));
}

TEST_F(PosixFilesTest, CopiesNoFolderIntoItselfByWhateverName)
{
    ASSERT_TRUE(files_.createFolder(at("from/inner")));
    ASSERT_TRUE(files_.createLink(at("same"), "from"));

    EXPECT_FALSE(files_.copy(at("from"), at("from/to")));
    EXPECT_FALSE(files_.copy(at("from"), at("from/inner/to")));
    EXPECT_FALSE(files_.copy(at("from"), at("same/to")));
    EXPECT_FALSE(files_.exists(at("from/to")));
    EXPECT_FALSE(files_.exists(at("from/inner/to")));

    EXPECT_TRUE(files_.copy(at("from"), at("from2"))) << "its name alone begins the same";
}

TEST_F(PosixFilesTest, CopiesTheOtherPartsWhenOneCanNotBe)
{
    ASSERT_TRUE(files_.createFolder(at("from/folder")));
    ASSERT_TRUE(files_.writeAtomically(at("from/a"), {1}));
    ASSERT_TRUE(files_.writeAtomically(at("from/folder/z"), {2}));
    ASSERT_EQ(::mkfifo(at("from/folder/pipe").c_str(), 0600), 0);

    EXPECT_FALSE(files_.copy(at("from"), at("to")));

    EXPECT_EQ(files_.read(at("to/a"), 9), Data{1});
    EXPECT_EQ(files_.read(at("to/folder/z"), 9), Data{2});
    EXPECT_FALSE(files_.exists(at("to/folder/pipe")));
    EXPECT_FALSE(files_.copy(at("from/folder/pipe"), at("pipe")));
}

TEST_F(PosixFilesTest, MakesLinksOnlyWhereNothingStands)
{
    ASSERT_TRUE(files_.writeAtomically(at("a"), {1}));

    EXPECT_TRUE(files_.createLink(at("link"), at("a")));
    EXPECT_TRUE(files_.createLink(at("toNothing"), at("missing")));

    EXPECT_EQ(files_.read(at("link"), 9), Data{1});
    EXPECT_FALSE(files_.exists(at("toNothing")));
    EXPECT_FALSE(files_.createLink(at("a"), at("missing")));
    EXPECT_FALSE(files_.createLink(at("toNothing"), at("a")));
    EXPECT_FALSE(files_.createLink(at("missing/link"), at("a")));
    EXPECT_FALSE(files_.createLink(at("empty"), ""));
    EXPECT_EQ(files_.read(at("a"), 9), Data{1});
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
    EXPECT_FALSE(files_.copy(at("a"), cut));
    EXPECT_FALSE(files_.copy(cut, at("c")));
    EXPECT_FALSE(files_.createLink(cut, at("a")));
    EXPECT_FALSE(files_.createLink(at("c"), cut));
    EXPECT_FALSE(files_.exists(at("c")));
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
