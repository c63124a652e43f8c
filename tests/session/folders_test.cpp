#include "SessionDesk.h"

#include "session/DataFolders.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace orv::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;

class Folders : public SessionDesk {
protected:
    [[nodiscard]] fs::path documents() const { return fs::path(home.path()) / "Documents"; }
    [[nodiscard]] fs::path work() const { return documents() / "Orvane Whiteboard"; }
    [[nodiscard]] fs::path link() const
    {
        return fs::path(home.path()) / "Desktop" / "Orvane Whiteboard";
    }
    static void write(const fs::path &path, const std::string &text)
    {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }
    static std::string read(const fs::path &path)
    {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void logEverything()
    {
        OrvFrameworkLogger::shared().setStandardOutput(true);
        OrvFrameworkLogger::shared().setLevel("OrvAnnotation", 1);
    }
    void nameDevice(const std::string &name)
    {
        manager->setDeviceName(name);
        drain();
    }
};

TEST_F(Folders, AFreshHomeGetsTheWholeTree)
{
    make(17);
    drain();

    for (const char *name : {"Snapshot", "Flipchart", "Background"}) {
        EXPECT_TRUE(fs::is_directory(work() / "Default Data" / name)) << name;
    }
    EXPECT_TRUE(
        fs::is_directory(fs::path(home.path()) / ".local/share/Orvane Whiteboard/.transfer_tmp"));
    EXPECT_TRUE(fs::is_symlink(link()));
    EXPECT_TRUE(fs::equivalent(link(), work()));
}

TEST_F(Folders, NamesFollowTheVariant)
{
    make(12);
    EXPECT_TRUE(fs::is_directory(documents() / "Orvane Presenter" / "Default Data"));
    EXPECT_EQ(AppConstants::instance().APPAbbreviation, "OVP");
}

TEST_F(Folders, AViewerLeavesNothingThatShows)
{
    make(18);
    EXPECT_TRUE(fs::is_directory(documents() / ".Orvane Whiteboard Temporary" / "Default Data"));
    EXPECT_TRUE(fs::is_empty(fs::path(home.path()) / "Desktop"));
    EXPECT_EQ(AppConstants::instance().APPAbbreviation, ".OWT");
}

TEST_F(Folders, ALinkThatWasDeletedStaysDeletedWhileTheFolderIsThere)
{
    make(17);
    fs::remove(link());
    checkWhiteboardDataFolder();
    EXPECT_FALSE(fs::is_symlink(link()));

    fs::remove_all(work());
    checkWhiteboardDataFolder();
    EXPECT_TRUE(fs::is_symlink(link()));
}

TEST_F(Folders, AFolderThatWasDeletedComesBackAtTheNextCheck)
{
    make(17);
    drain();
    fs::remove_all(work() / "Default Data");
    checkWhiteboardDataFolder();
    drain();
    EXPECT_TRUE(fs::is_directory(work() / "Default Data" / "Snapshot"));
}

TEST_F(Folders, WithoutADesktopThereIsNoLinkAndNoHarm)
{
    fs::remove_all(fs::path(home.path()) / "Desktop");
    make(17);
    EXPECT_FALSE(fs::exists(fs::path(home.path()) / "Desktop"));
    EXPECT_TRUE(fs::is_directory(work() / "Default Data"));
}

TEST_F(Folders, WorkOfTheFlatLayoutIsPutAsideAndCopiedForEachDevice)
{
    write(work() / "Snapshot" / "one.jpg", "picture");
    write(work() / "Flipchart" / ".RawData" / "page.data", "page");

    make(17);
    drain();
    nameDevice("Tablet");

    EXPECT_FALSE(fs::exists(work() / "Snapshot"));
    EXPECT_EQ(read(work() / ".old_data_save_tmp" / "Snapshot" / "one.jpg"), "picture");
    for (const char *device : {"Default Data", "Tablet"}) {
        EXPECT_EQ(read(work() / device / "Snapshot" / "one.jpg"), "picture") << device;
        EXPECT_EQ(read(work() / device / "Flipchart" / ".RawData" / "page.data"), "page") << device;
        EXPECT_TRUE(fs::is_directory(work() / device / "Background")) << device;
    }
}

TEST_F(Folders, AFlatFolderBesideOldWorkStaysWhereItIs)
{
    write(work() / "Snapshot" / "new.jpg", "new");
    write(work() / ".old_data_save_tmp" / "Snapshot" / "old.jpg", "old");
    make(17);
    drain();
    checkWhiteboardDataFolder();
    EXPECT_EQ(read(work() / "Snapshot" / "new.jpg"), "new");
    EXPECT_EQ(read(work() / "Default Data" / "Snapshot" / "old.jpg"), "old");
    EXPECT_FALSE(fs::exists(work() / "Default Data" / "Snapshot" / "new.jpg"));
}

TEST_F(Folders, ADeviceGetsAFolderOfItsOwnWithASafeName)
{
    make(17);
    nameDevice("Tablet/One: 2");
    EXPECT_EQ(AppConstants::instance().AppUserDataPath,
              (work() / "Tablet:One\xEF\xBC\x9A 2").string());
    EXPECT_TRUE(fs::is_directory(work() / "Tablet:One\xEF\xBC\x9A 2" / "Snapshot"));
    EXPECT_TRUE(fs::is_directory(work() / "Default Data")) << "it stays";

    nameDevice("a\tb\\c");
    EXPECT_TRUE(fs::is_directory(work() / "a\\tb\\\\c"));
    nameDevice("Żółw 画板");
    EXPECT_TRUE(fs::is_directory(work() / "Żółw 画板"));
}

TEST_F(Folders, NoNameLeavesTheOneInForce)
{
    make(17);
    manager->setDeviceName(std::nullopt);
    EXPECT_EQ(AppConstants::instance().DeviceName(), "Default Data");
    EXPECT_EQ(AppConstants::instance().AppUserDataPath, (work() / "Default Data").string());
}

TEST_F(Folders, TheSameDeviceAgainCopiesNothing)
{
    write(work() / "Snapshot" / "one.jpg", "picture");
    make(17);
    nameDevice("Tablet");
    fs::remove(work() / "Tablet" / "Snapshot" / "one.jpg");
    nameDevice("Default Data");
    nameDevice("Tablet");
    EXPECT_FALSE(fs::exists(work() / "Tablet" / "Snapshot" / "one.jpg"));
}

TEST_F(Folders, TheMoveIsToldInTheLogAtBothEnds)
{
    logEverything();
    make(17);
    nameDevice("Tablet");
    EXPECT_THAT(systemLog, Contains(HasSubstr("-[AnnotationManager setDeviceName:] [Tablet]"
                                              "[Tablet]")));
    EXPECT_THAT(systemLog,
                Contains(HasSubstr("-[AnnotationManager moveDefaultDataToUserFolder] start ...")));
    EXPECT_THAT(systemLog,
                Contains(HasSubstr("-[AnnotationManager moveDefaultDataToUserFolder] finish ...")));
}

TEST_F(Folders, FoldersThatCannotBeMadeAreSurvived)
{
    write(documents() / "Orvane Whiteboard", "a file in the way");
    make(17);
    manager->showWindow();
    manager->openAnnotationToolbox();
    nameDevice("Tablet");
    localStroke({300.0, 300.0}, {400.0, 400.0});
    EXPECT_EQ(annotationCount(), 1U);
    EXPECT_EQ(read(documents() / "Orvane Whiteboard"), "a file in the way");
}

TEST_F(Folders, AMoveWhoseSessionHasEndedDoesNothing)
{
    make(17);
    AppConstants::destroy();
    moveDefaultDataToUserFolder();
    EXPECT_FALSE(fs::exists("/Snapshot"));
}

TEST_F(Folders, TheIconGoesToTheFolderAndToTheLink)
{
    make(17);
    const auto &icons = desk.files().folderIcons();
    EXPECT_EQ(icons.count(work().string() + "/"), 1U);
    EXPECT_EQ(icons.count(link().string()), 1U);
}

TEST_F(Folders, AnIconThatIsMissingIsToldInTheLogAndStopsNothing)
{
    platform::VirtualSettings settings = deskSettings(home.path());
    settings.resources = home.path() + "/nothing";
    platform::VirtualPlatform bare(settings);
    bare.hooks().systemLog = [this](const std::string &line) { systemLog.push_back(line); };
    platform::Platform::install(&bare);
    logEverything();

    make(17);
    EXPECT_THAT(systemLog, Contains(HasSubstr("File is not a valid image file: " + home.path() +
                                              "/nothing/pictures/Annotation_folder_icon.icns")));
    EXPECT_TRUE(fs::is_directory(work() / "Default Data"));

    manager.reset();
    platform::Platform::install(&desk);
}

} // namespace
} // namespace orv::test
