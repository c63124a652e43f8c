#include "canvas/UserFolderPaths.h"
#include "channels/AppConstants.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

class UserFolders : public ::testing::Test {
protected:
    UserFolders()
    {
        AppConstants &constants = AppConstants::instance();
        constants.APPName = "Orvane Whiteboard";
        constants.AppDataPath = "/data/Orvane Whiteboard/";
        constants.setDeviceName("Tablet");
    }
    ~UserFolders() override { AppConstants::destroy(); }
};

TEST_F(UserFolders, APathIsStoredWithinTheApplicationsFolder)
{
    const auto stored = &UserFolderPaths::getAbsoluteFilePath;

    EXPECT_EQ(stored("/data/Orvane Whiteboard/Tablet/Snapshot/a.jpg"), "Tablet/Snapshot/a.jpg");
    EXPECT_EQ(stored("/elsewhere/a.jpg"), "/elsewhere/a.jpg");
    EXPECT_EQ(stored("/data/Orvane Whiteboards/a.jpg"), "/data/Orvane Whiteboards/a.jpg");
    EXPECT_EQ(stored("Tablet/Snapshot/a.jpg"), "Tablet/Snapshot/a.jpg");
    EXPECT_EQ(stored(""), "");
}

TEST_F(UserFolders, TheFirstFolderOfTheApplicationsNameCounts)
{
    EXPECT_EQ(UserFolderPaths::getAbsoluteFilePath(
                  "/data/Orvane Whiteboard/Tablet/Orvane Whiteboard/a.jpg"),
              "Tablet/Orvane Whiteboard/a.jpg");
}

TEST_F(UserFolders, TheUserFolderIsWhatStandsBeforeTheTypeFolder)
{
    const auto folder = &UserFolderPaths::getUserFolderFormPath;

    EXPECT_EQ(folder("/data/Orvane Whiteboard/Phone/Snapshot/a.jpg"), "Phone");
    EXPECT_EQ(folder("Phone/Flipchart/.RawData/a.data"), "Phone");
    EXPECT_EQ(folder("Phone/Background/a.jpg"), "Phone");
    EXPECT_EQ(folder("Phone/Snapshots of May/a.jpg"), "Phone") << "the name may go on";
    EXPECT_EQ(folder("Phone/Lessons/a.jpg"), "");
    EXPECT_EQ(folder("Snapshot/a.jpg"), "") << "an old path begins with the type folder";
    EXPECT_EQ(folder("/Snapshot/a.jpg"), "");
    EXPECT_EQ(folder(""), "");
}

TEST_F(UserFolders, OfSeveralTypeFoldersALaterKindOverridesAnEarlierOne)
{
    const auto folder = &UserFolderPaths::getUserFolderFormPath;

    EXPECT_EQ(folder("Phone/Snapshot/Flipchart/a.jpg"), "Phone/Snapshot");
    EXPECT_EQ(folder("Phone/Flipchart/Snapshot/a.jpg"), "Phone");
    EXPECT_EQ(folder("Phone/Snapshot/Background/Flipchart/a.jpg"), "Phone/Snapshot");
    EXPECT_EQ(folder("/Flipchart/Snapshot/a.jpg"), "") << "even by none at all";
    EXPECT_EQ(folder("Phone/Snapshot/Snapshot/a.jpg"), "Phone") << "the first of one kind";
}

TEST_F(UserFolders, APathWithoutAUserFolderIsAnOldOne)
{
    EXPECT_TRUE(UserFolderPaths::checkOldDataPath("Snapshot/a.jpg"));
    EXPECT_TRUE(UserFolderPaths::checkOldDataPath(""));
    EXPECT_FALSE(UserFolderPaths::checkOldDataPath("Phone/Snapshot/a.jpg"));
}

TEST_F(UserFolders, TheDevicesOwnAndOldItemsMayBeEdited)
{
    EXPECT_TRUE(UserFolderPaths::dataInUserFolder("/data/Orvane Whiteboard/Tablet/Snapshot/a.jpg"));
    EXPECT_TRUE(UserFolderPaths::dataInUserFolder("Snapshot/a.jpg"));
    EXPECT_TRUE(UserFolderPaths::dataInUserFolder(""));
    EXPECT_FALSE(UserFolderPaths::dataInUserFolder("Phone/Snapshot/a.jpg"));
    EXPECT_FALSE(UserFolderPaths::dataInUserFolder("Tablet 2/Snapshot/a.jpg"));
}

TEST_F(UserFolders, AStoredPathIsMadeWhole)
{
    const auto whole = &UserFolderPaths::autoFixOldDataPath;

    EXPECT_EQ(whole("Phone/Snapshot/a.jpg", ""), "/data/Orvane Whiteboard/Phone/Snapshot/a.jpg");
    EXPECT_EQ(whole("Phone/Snapshot/a.jpg", "Desk"), "/data/Orvane Whiteboard/Desk/Snapshot/a.jpg");
    EXPECT_EQ(whole("Snapshot/a.jpg", ""), "/data/Orvane Whiteboard/Tablet/Snapshot/a.jpg");
    EXPECT_EQ(whole("Snapshot/a.jpg", "Desk"), "/data/Orvane Whiteboard/Desk/Snapshot/a.jpg");
    EXPECT_EQ(whole("/old/Orvane Whiteboard/Snapshot/a.jpg", "Desk"),
              "/data/Orvane Whiteboard/Desk/Snapshot/a.jpg");
    EXPECT_EQ(whole("", "Desk"), "");
}

TEST_F(UserFolders, EveryOccurrenceOfTheFoldersNameIsReplaced)
{
    const auto whole = &UserFolderPaths::autoFixOldDataPath;

    EXPECT_EQ(whole("Phone/Snapshot/Phone 7.jpg", "Desk"),
              "/data/Orvane Whiteboard/Desk/Snapshot/Desk 7.jpg");
    EXPECT_EQ(whole("a/Snapshot/banana.jpg", "aa"),
              "/data/Orvane Whiteboard/aa/Snaapshot/baanaanaa.jpg")
        << "what was put in is not looked at again";
}

TEST_F(UserFolders, TheFolderIsTheDevicesNameAsItIsSafeForAFolder)
{
    AppConstants::instance().setDeviceName("Bob/Ann");

    EXPECT_EQ(UserFolderPaths::autoFixOldDataPath("Snapshot/a.jpg", ""),
              "/data/Orvane Whiteboard/Bob:Ann/Snapshot/a.jpg");
    EXPECT_TRUE(UserFolderPaths::dataInUserFolder("Bob:Ann/Snapshot/a.jpg"));
}

} // namespace
} // namespace orv::test
