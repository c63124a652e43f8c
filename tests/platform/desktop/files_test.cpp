#include "platform/desktop/DesktopEntries.h"
#include "platform/desktop/DesktopFiles.h"
#include "platform/desktop/FolderIcon.h"
#include "platform/raster/Pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace orv::platform {

namespace {

/// Another value of an environment variable for the length of a scope.
class Environment {
public:
    Environment(const char *name, const std::string &value) : name_(name)
    {
        if (const char *before = std::getenv(name)) {
            before_ = before;
        }
        ::setenv(name, value.c_str(), 1);
    }
    ~Environment() { before_ ? ::setenv(name_, before_->c_str(), 1) : ::unsetenv(name_); }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    const char *name_;
    std::optional<std::string> before_;
};

class TemporaryFolder : public testing::Test {
protected:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "orvXXXXXX").string();
        folder = ::mkdtemp(pattern.data());
    }
    ~TemporaryFolder() override { std::filesystem::remove_all(folder); }

    void write(const std::string &name, const std::string &text) const
    {
        std::ofstream(folder + "/" + name) << text;
    }

    std::string folder;
};

class DesktopFilesTest : public TemporaryFolder {};
class DesktopEntriesTest : public TemporaryFolder {};

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kBlue = 0xFF0000FF;
constexpr const char *kSettings = "[Desktop Entry]\nIcon=./.OrvAnnotationFolder.png\n";

ImagePtr icon(std::uint32_t pixel)
{
    auto image = std::make_shared<Image>(4, 4);
    std::fill_n(image->data(), 16, pixel);
    return image;
}

class FolderIconTest : public TemporaryFolder {
protected:
    [[nodiscard]] std::string read(const std::string &name) const
    {
        std::ifstream in(folder + "/" + name);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    [[nodiscard]] std::ptrdiff_t fileCount() const
    {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }
    /// Of the picture and the settings; a file that is written again gets another.
    [[nodiscard]] std::pair<ino_t, ino_t> inodes() const
    {
        struct stat picture {};
        struct stat settings {};
        EXPECT_EQ(::stat((folder + "/.OrvAnnotationFolder.png").c_str(), &picture), 0);
        EXPECT_EQ(::stat((folder + "/.directory").c_str(), &settings), 0);
        return {picture.st_ino, settings.st_ino};
    }
    void makeProgram(const std::string &name, const std::string &text) const
    {
        write(name, text);
        std::filesystem::permissions(folder + "/" + name, std::filesystem::perms::owner_all);
    }

private:
    /// The session of whoever runs the tests is not to be told of their folders.
    Environment noBus_{"DBUS_SESSION_BUS_ADDRESS", ""};
};

} // namespace

TEST_F(DesktopFilesTest, findsTheUsersFoldersByTheXdgRules)
{
    const Environment home("HOME", folder);
    const Environment config("XDG_CONFIG_HOME", folder + "/config");
    const Environment data("XDG_DATA_HOME", folder + "/data/");
    const Environment temporary("TMPDIR", folder + "/tmp/");
    std::filesystem::create_directories(folder + "/config");
    write("config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n");
    const DesktopFiles files("");

    EXPECT_EQ(files.userFolder(UserFolder::privateData), folder + "/data");
    EXPECT_EQ(files.userFolder(UserFolder::documents), folder + "/Papers");
    EXPECT_EQ(files.userFolder(UserFolder::desktop), folder + "/Desktop");
    EXPECT_EQ(files.userFolder(UserFolder::temporary), folder + "/tmp");
}

TEST_F(DesktopFilesTest, ignoresRelativeFoldersInTheEnvironment)
{
    const Environment home("HOME", folder);
    const Environment data("XDG_DATA_HOME", "data");
    const Environment temporary("TMPDIR", "tmp");
    const DesktopFiles files("");

    EXPECT_EQ(files.userFolder(UserFolder::privateData), folder + "/.local/share");
    EXPECT_EQ(files.userFolder(UserFolder::temporary), "/tmp");
}

TEST_F(DesktopFilesTest, takesTheResourceFolderGivenOrFindsOne)
{
    EXPECT_EQ(DesktopFiles("/opt/resources/").resourceFolder(), "/opt/resources");
    EXPECT_TRUE(std::filesystem::is_directory(DesktopFiles("").resourceFolder()));
}

TEST_F(DesktopFilesTest, tellsAFilesAgeByTheWallClock)
{
    write("old", "text");
    const auto changed = std::filesystem::last_write_time(folder + "/old");
    std::filesystem::last_write_time(folder + "/old", changed - std::chrono::hours(1));
    const DesktopFiles files("");

    const auto age = files.age(folder + "/old");

    ASSERT_TRUE(age.has_value());
    EXPECT_GE(*age, 3600.0);
    EXPECT_LT(*age, 3700.0);
    EXPECT_EQ(files.age(folder + "/missing"), std::nullopt);
}

TEST_F(FolderIconTest, liesHiddenInTheFolderWithTheSettingsThatNameIt)
{
    DesktopFiles files("");

    EXPECT_TRUE(files.setFolderIcon(folder, icon(kRed)));

    EXPECT_EQ(read(".directory"), kSettings);
    const ImagePtr written = readPicture(folder + "/.OrvAnnotationFolder.png");
    ASSERT_NE(written, nullptr);
    EXPECT_EQ(*written, *icon(kRed));
    EXPECT_EQ(fileCount(), 2);
}

TEST_F(FolderIconTest, isNotWrittenAgainWhileBothFilesAreAsTheyWould)
{
    DesktopFiles files("");
    ASSERT_TRUE(files.setFolderIcon(folder, icon(kRed)));
    const auto before = inodes();

    EXPECT_TRUE(files.setFolderIcon(folder, icon(kRed)));
    EXPECT_EQ(inodes(), before);

    EXPECT_TRUE(files.setFolderIcon(folder, icon(kBlue)));
    EXPECT_EQ(*readPicture(folder + "/.OrvAnnotationFolder.png"), *icon(kBlue));
    EXPECT_EQ(inodes().second, before.second) << "the settings are the same";

    std::filesystem::remove(folder + "/.directory");
    EXPECT_TRUE(files.setFolderIcon(folder, icon(kBlue)));
    EXPECT_EQ(read(".directory"), kSettings);
}

TEST_F(FolderIconTest, leavesTheUsersOwnSettingsAlone)
{
    const std::string own = "[Desktop Entry]\nIcon=folder-music\n";
    write(".directory", own);
    DesktopFiles files("");

    EXPECT_TRUE(files.setFolderIcon(folder, icon(kRed)));

    EXPECT_EQ(read(".directory"), own);
    EXPECT_EQ(fileCount(), 1);

    std::filesystem::remove(folder + "/.directory");
    std::filesystem::create_symlink("missing", folder + "/.directory");
    EXPECT_TRUE(files.setFolderIcon(folder, icon(kRed)));
    EXPECT_TRUE(std::filesystem::is_symlink(folder + "/.directory"));
}

TEST_F(FolderIconTest, goesThroughALinkToTheFolderItself)
{
    std::filesystem::create_directory(folder + "/target");
    std::filesystem::create_directory_symlink("target", folder + "/link");

    EXPECT_TRUE(DesktopFiles("").setFolderIcon(folder + "/link", icon(kRed)));

    EXPECT_EQ(read("target/.directory"), kSettings);
    EXPECT_TRUE(std::filesystem::is_symlink(folder + "/link"));
}

TEST_F(FolderIconTest, isRefusedWithoutAFolderOrAPictureOrRoomForIt)
{
    DesktopFiles files("");
    write("file", "text");
    std::filesystem::create_directories(folder + "/full/.OrvAnnotationFolder.png");

    EXPECT_FALSE(files.setFolderIcon(folder + "/missing", icon(kRed)));
    EXPECT_FALSE(files.setFolderIcon(folder + "/file", icon(kRed)));
    EXPECT_FALSE(files.setFolderIcon(folder, nullptr));
    EXPECT_FALSE(files.setFolderIcon(folder, std::make_shared<Image>(0, 0)));
    EXPECT_FALSE(files.setFolderIcon(folder + std::string(1, '\0'), icon(kRed)));
    EXPECT_FALSE(files.setFolderIcon(folder + "/full", icon(kRed)))
        << "a folder stands where the picture goes";
    EXPECT_FALSE(std::filesystem::exists(folder + "/.directory"));
    EXPECT_FALSE(std::filesystem::exists(folder + "/full/.directory"));
}

TEST_F(FolderIconTest, isNotedWithAnEncodedAddressWhereASessionKeepsNotes)
{
    std::filesystem::create_directories(folder + "/bin");
    const Environment path("PATH", folder + "/bin");
    const Environment bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    EXPECT_THAT(folderIconNote("/a b", "/a b/p#1%.png"), testing::IsEmpty()) << "no program";

    makeProgram("bin/gio", "#!/bin/sh\n");

    EXPECT_THAT(folderIconNote("/a b", "/a b/p#1%.png"),
                testing::ElementsAre(folder + "/bin/gio", "set", "-t", "string", "/a b",
                                     "metadata::custom-icon", "file:///a%20b/p%231%25.png"));
    const Environment none("DBUS_SESSION_BUS_ADDRESS", "");
    EXPECT_THAT(folderIconNote("/a b", "/a b/p#1%.png"), testing::IsEmpty()) << "no session";
}

TEST_F(FolderIconTest, isNotedWhenItIsWritten)
{
    std::filesystem::create_directories(folder + "/bin");
    std::filesystem::create_directories(folder + "/target");
    ASSERT_EQ(::mkfifo((folder + "/pipe").c_str(), 0600), 0);
    makeProgram("bin/gio", "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + folder + "/pipe'\n");
    const Environment path("PATH", folder + "/bin");
    const Environment bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");

    EXPECT_TRUE(DesktopFiles("").setFolderIcon(folder + "/target", icon(kRed)));

    const std::string target = std::filesystem::canonical(folder + "/target").string();
    EXPECT_EQ(read("pipe"), "set\n-t\nstring\n" + target + "\nmetadata::custom-icon\nfile://" +
                                target + "/.OrvAnnotationFolder.png\n");
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
}

TEST_F(DesktopEntriesTest, findsTheEntryOfAWindowClassANameOrAProgram)
{
    write("org.example.Editor.desktop",
          "[Desktop Entry]\nExec=/usr/bin/edit %U\nStartupWMClass=EditWindow\n");
    write("browser.desktop", "[Desktop Entry]\nExec=\"/opt/b r/browse\" --new\n"
                             "[Desktop Action x]\nExec=other\n");
    write("notes.txt", "[Desktop Entry]\nExec=notes\n");
    const DesktopEntries entries({folder, folder + "/missing"});

    EXPECT_EQ(entries.find("editwindow", ""), "org.example.Editor");
    EXPECT_EQ(entries.find("Editor", ""), "org.example.Editor");
    EXPECT_EQ(entries.find("Browser", ""), "browser");
    EXPECT_EQ(entries.find("", "edit"), "org.example.Editor");
    EXPECT_EQ(entries.find("unknown", "browse"), "browser");
    EXPECT_EQ(entries.find("", "other"), std::nullopt);
    EXPECT_EQ(entries.find("", "notes"), std::nullopt);
    EXPECT_EQ(entries.find("", ""), std::nullopt);
}

} // namespace orv::platform
