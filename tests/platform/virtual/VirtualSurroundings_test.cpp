#include "Desk.h"

#include "platform/foundation/Exception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace orv::platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(VirtualPlatformTest, IsReachedWhileItIsInstalledAndTakenAwayAtItsEnd)
{
    {
        Desk desk;
        Platform::install(&desk.platform);
        EXPECT_EQ(&Platform::current().mainThread(), &desk.platform.mainThread());
        EXPECT_EQ(&Platform::current().files(), &desk.platform.files());
    }

    EXPECT_FALSE(Platform::isInstalled());
}

TEST(VirtualPlatformTest, LeavesAnotherPlatformInstalled)
{
    Desk installed;
    Platform::install(&installed.platform);
    {
        const Desk other;
    }

    EXPECT_TRUE(Platform::isInstalled());
}

TEST(VirtualPlatformTest, TellsWhichHomeFolderCannotBeUsed)
{
    const TemporaryFolder folder;
    std::ofstream(folder.path() + "/file") << "no folder";
    for (const std::string &home : {std::string("relative"), folder.path() + "/file"}) {
        VirtualSettings settings;
        settings.home = home;
        try {
            const VirtualPlatform platform(settings);
            FAIL() << home;
        } catch (const Exception &exception) {
            EXPECT_THAT(exception.what(), HasSubstr(home));
        }
    }
}

TEST(VirtualPlatformTest, ErrorsOfTasksGoToTheSystemLog)
{
    Desk desk;
    std::vector<std::string> lines;
    desk.platform.hooks().systemLog = [&](const std::string &line) { lines.push_back(line); };

    desk.platform.mainThread().post([] { throw Exception("broken"); });
    desk.platform.mainThread().drain();
    desk.platform.systemLog().write("plain");

    EXPECT_THAT(lines, ElementsAre(HasSubstr("broken"), "plain"));
}

TEST(VirtualSystemLogTest, GoesToStandardErrorWithoutAReceiver)
{
    const VirtualHooks hooks;
    testing::internal::CaptureStderr();

    VirtualSystemLog(hooks).write("a line");

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a line\n");
}

TEST(VirtualProcessesTest, AreToldAndNotStarted)
{
    VirtualHooks hooks;
    VirtualProcesses processes(hooks);
    processes.start("/bin/true", {});
    processes.runScript("nobody listens");

    std::vector<std::vector<std::string>> commands;
    std::string script;
    hooks.process = [&](const std::vector<std::string> &command) { commands.push_back(command); };
    hooks.script = [&](const std::string &text) { script = text; };
    processes.start("/usr/bin/touch", {"/tmp/x y"});
    processes.runScript("tell");

    EXPECT_THAT(commands, ElementsAre(ElementsAre("/usr/bin/touch", "/tmp/x y")));
    EXPECT_EQ(script, "tell");
}

class VirtualApplicationsTest : public testing::Test {
protected:
    VirtualApplicationsTest()
    {
        hooks_.activate = [this](std::int32_t pid) { activated_.push_back(pid); };
        hooks_.presentation = [this](std::uint32_t options) { options_.push_back(options); };
    }
    static VirtualSettings settings()
    {
        VirtualSettings made;
        made.front = {77, "com.example.slides"};
        made.running = {"com.example.mail"};
        made.accessibility = true;
        return made;
    }

    std::vector<std::int32_t> activated_;
    std::vector<std::uint32_t> options_;
    VirtualHooks hooks_;
    VirtualApplications applications_{settings(), hooks_};
};

TEST_F(VirtualApplicationsTest, BeginAsTheSettingsSay)
{
    EXPECT_EQ(applications_.frontProcess(), 77);
    EXPECT_EQ(applications_.bundleIdentifier(77), "com.example.slides");
    EXPECT_EQ(applications_.bundleIdentifier(78), "");
    EXPECT_TRUE(applications_.isRunning("com.example.mail"));
    EXPECT_TRUE(applications_.isRunning("com.example.slides"));
    EXPECT_FALSE(applications_.isRunning("com.example.music"));
    EXPECT_TRUE(applications_.isAccessibilityEnabled());
    EXPECT_EQ(applications_.mainBundleIdentifier(), "com.orvane.Orvane-Streamer");
}

TEST_F(VirtualApplicationsTest, AKnownOneGetsTheFrontBack)
{
    applications_.setFront({80, "com.example.mail"});

    applications_.setFrontProcess(77);
    applications_.setFrontProcess(0);
    applications_.setFrontProcess(12345);

    EXPECT_EQ(applications_.frontProcess(), 77);
    EXPECT_THAT(activated_, ElementsAre(77));
}

TEST_F(VirtualApplicationsTest, AnswersChange)
{
    applications_.setFront({});
    applications_.setRunning({"com.example.music"});
    applications_.setAccessibility(false);

    EXPECT_EQ(applications_.frontProcess(), 0);
    EXPECT_FALSE(applications_.isRunning("com.example.slides"));
    EXPECT_FALSE(applications_.isRunning("com.example.mail"));
    EXPECT_TRUE(applications_.isRunning("com.example.music"));
    EXPECT_FALSE(applications_.isAccessibilityEnabled());
}

TEST_F(VirtualApplicationsTest, PresentationOptionsAreTold)
{
    applications_.setPresentationOptions(1);
    applications_.setPresentationOptions(0);

    EXPECT_THAT(options_, ElementsAre(1U, 0U));
}

TEST_F(VirtualApplicationsTest, NobodyNeedsToListen)
{
    const VirtualHooks deaf;
    VirtualApplications applications(settings(), deaf);

    applications.setFrontProcess(77);
    applications.setPresentationOptions(1);
    applications.activateOwn();

    EXPECT_EQ(applications.frontProcess(), 77);
}

class VirtualFilesTest : public testing::Test {
protected:
    Desk desk_;
    VirtualFiles &files_ = desk_.platform.files();
};

TEST_F(VirtualFilesTest, FoldersOfTheUserLieBelowHomeAndExist)
{
    const std::string &home = desk_.home.path();

    EXPECT_EQ(files_.home(), home);
    EXPECT_EQ(files_.userFolder(UserFolder::privateData), home + "/.local/share");
    EXPECT_EQ(files_.userFolder(UserFolder::documents), home + "/Documents");
    EXPECT_EQ(files_.userFolder(UserFolder::desktop), home + "/Desktop");
    EXPECT_EQ(files_.userFolder(UserFolder::temporary), home + "/tmp");
    EXPECT_TRUE(files_.exists(home + "/.local/share"));
    EXPECT_TRUE(files_.exists(home + "/tmp"));
}

TEST_F(VirtualFilesTest, PathsOfFoldersHaveNoSlashAtTheirEnd)
{
    const VirtualFiles files(desk_.platform.mainThread(), desk_.home.path() + "//", "/resources/",
                             0);

    EXPECT_EQ(files.home(), desk_.home.path());
    EXPECT_EQ(files.resourceFolder(), "/resources");
}

TEST_F(VirtualFilesTest, AgesCountByTheVirtualWallClock)
{
    const std::string path = desk_.home.path() + "/file";
    ASSERT_TRUE(files_.writeAtomically(path, {1, 2}));
    EXPECT_NEAR(files_.age(path).value(), 0.0, 1e-3);

    desk_.platform.mainThread().advance(3600.0);
    EXPECT_NEAR(files_.age(path).value(), 3600.0, 1e-3);
    ASSERT_TRUE(files_.setAge(path, 90000.0));

    EXPECT_NEAR(files_.age(path).value(), 90000.0, 1e-3);
    EXPECT_EQ(files_.age(path + "2"), std::nullopt);
    EXPECT_FALSE(files_.setAge(path + "2", 1.0));
}

TEST_F(VirtualFilesTest, CopiedFilesAreAsNewAsTheVirtualClockSays)
{
    const std::string &home = desk_.home.path();
    ASSERT_TRUE(files_.createFolder(home + "/from/inner"));
    ASSERT_TRUE(files_.writeAtomically(home + "/from/inner/file", {1}));
    desk_.platform.mainThread().advance(3600.0);

    ASSERT_TRUE(files_.copy(home + "/from", home + "/to"));
    ASSERT_TRUE(files_.copy(home + "/from/inner/file", home + "/single"));

    EXPECT_NEAR(files_.age(home + "/to/inner/file").value(), 0.0, 1e-3);
    EXPECT_NEAR(files_.age(home + "/single").value(), 0.0, 1e-3);
    EXPECT_NEAR(files_.age(home + "/from/inner/file").value(), 3600.0, 1e-3);
    EXPECT_FALSE(files_.copy(home + "/single", home + "/from/inner/file"));
    EXPECT_NEAR(files_.age(home + "/from/inner/file").value(), 3600.0, 1e-3);
}

TEST_F(VirtualFilesTest, IconsOfFoldersAreKeptInMemory)
{
    const std::string &home = desk_.home.path();
    const auto icon = std::make_shared<const Image>(2, 2);
    ASSERT_TRUE(files_.writeAtomically(home + "/file", {1}));

    EXPECT_TRUE(files_.setFolderIcon(home + "/Desktop", icon));
    EXPECT_FALSE(files_.setFolderIcon(home + "/Documents", nullptr));
    EXPECT_FALSE(files_.setFolderIcon(home + "/missing", icon));
    EXPECT_FALSE(files_.setFolderIcon(home + "/file", icon));

    EXPECT_THAT(files_.folderIcons(), ElementsAre(testing::Pair(home + "/Desktop", icon)));
    EXPECT_TRUE(std::filesystem::is_empty(home + "/Desktop"));
}

TEST_F(VirtualFilesTest, FreeSpaceIsWhatItIsSaidToBe)
{
    EXPECT_EQ(files_.freeBytes(), 1'000'000'000'000U);

    files_.setFreeBytes(5);

    EXPECT_EQ(files_.freeBytes(), 5U);
}

} // namespace
} // namespace orv::platform
