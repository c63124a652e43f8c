#pragma once

#include "platform/virtual/VirtualPlatform.h"

#include <chrono>
#include <filesystem>
#include <string>

namespace orv::bench {

/// A virtual platform with one display and a home folder of its own, installed for its life.
class BenchDesk {
public:
    explicit BenchDesk(platform::Size display = {1920.0, 1080.0})
        : home_(makeHome()), platform_(settings(home_, display))
    {
        platform::Platform::install(&platform_);
    }
    ~BenchDesk()
    {
        platform::Platform::install(nullptr);
        std::filesystem::remove_all(home_);
    }
    BenchDesk(const BenchDesk &) = delete;
    BenchDesk &operator=(const BenchDesk &) = delete;

    [[nodiscard]] const std::string &home() const { return home_; }
    platform::VirtualPlatform &platform() { return platform_; }

private:
    static std::string makeHome()
    {
        std::string home = (std::filesystem::temp_directory_path() / "orv-bench-XXXXXX").string();
        return ::mkdtemp(home.data());
    }
    static platform::VirtualSettings settings(const std::string &home, platform::Size display)
    {
        platform::VirtualSettings settings;
        settings.home = home;
        settings.resources = ORV_BUILT_RESOURCES;
        settings.displays = {{1, {{0.0, 0.0}, display}, 1.0}};
        return settings;
    }

    std::string home_;
    platform::VirtualPlatform platform_;
};

/// How long the work takes, in seconds.
template <class Work> double secondsOf(Work &&work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return taken.count();
}

} // namespace orv::bench
