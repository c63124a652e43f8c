#include "platform/desktop/DesktopEntries.h"
#include "platform/desktop/DesktopFiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

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
