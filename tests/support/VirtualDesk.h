#pragma once

#include "platform/virtual/VirtualPlatform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace orv::test {

/// A folder that is empty at first and gone at the end.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "orv-test-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    [[nodiscard]] const std::string &path() const { return path_; }

private:
    std::string path_;
};

inline platform::VirtualSettings deskSettings(const std::string &home)
{
    platform::VirtualSettings settings;
    settings.home = home;
    settings.resources = ORV_BUILT_RESOURCES;
    return settings;
}

/// A virtual desk with a home folder of its own, installed for the length of a test.
class VirtualDesk : public ::testing::Test {
protected:
    VirtualDesk() : desk(deskSettings(home.path()))
    {
        platform::Platform::install(&desk);
        desk.hooks().systemLog = [this](const std::string &line) { systemLog.push_back(line); };
    }
    ~VirtualDesk() override { platform::Platform::install(nullptr); }

    void drain() { desk.mainThread().drain(); }
    void wait(double seconds) { desk.mainThread().advance(seconds); }

    TemporaryFolder home;
    std::vector<std::string> systemLog;
    platform::VirtualPlatform desk;
};

} // namespace orv::test
