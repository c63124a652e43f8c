#include "canvas/RawDataFiles.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/ports/Pictures.h"
#include "platform/virtual/VirtualPlatform.h"
#include "session/AnnotationManager.h"
#include "session/ScreenPictures.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

// What a whole snapshot of a display of 1920x1080 costs, its clean background and its data included
// and its animation not, as a ratio to the bare encoding of one such picture of the same run.

namespace {

using namespace orv;

class Bench {
public:
    Bench() : home_(makeHome()), desk_(settings(home_))
    {
        platform::Platform::install(&desk_);
        OrvFrameworkLogger::shared().setStandardOutput(false);
        manager_ = std::make_shared<AnnotationManager>(17);
        manager_->setDisplayID(1);
        manager_->showWindow();
        manager_->openAnnotationToolbox();
        manager_->handleSetToolRequest({8, 0, 6.0F, 0, 0xFFDC0000});
        for (int i = 0; i < 20; ++i) {
            stroke(100.0 + 80.0 * i);
        }
        desk_.mainThread().drain();
        screen_ = desk_.displays().screens().front();
        std::filesystem::create_directories(RawDataFiles(path()).folder);
    }
    ~Bench()
    {
        manager_->terminate();
        manager_.reset();
        AppConstants::destroy();
        OrvFrameworkLogger::release();
        platform::Platform::install(nullptr);
        std::filesystem::remove_all(home_);
    }
    Bench(const Bench &) = delete;
    Bench &operator=(const Bench &) = delete;

    [[nodiscard]] std::string path() const { return home_ + "/IMG.jpg"; }

    bool takeSnapshot()
    {
        const RawDataFiles raw(path());
        if (!saveImage(raw.background, screen_, getWindowID(1), false)) {
            return false;
        }
        manager_->annotationsView()->saveSanpshotData(raw.data);
        picture_ = saveImage(path(), screen_, getWindowID(0), true);
        return picture_ != nullptr;
    }
    bool encodeAlone()
    {
        return desk_.pictures().save(home_ + "/alone.jpg", *picture_, platform::PictureKind::jpeg,
                                     0.95F);
    }

private:
    static std::string makeHome()
    {
        std::string home = (std::filesystem::temp_directory_path() / "orv-bench-XXXXXX").string();
        return ::mkdtemp(home.data());
    }
    static platform::VirtualSettings settings(const std::string &home)
    {
        platform::VirtualSettings settings;
        settings.home = home;
        settings.resources = ORV_BUILT_RESOURCES;
        settings.displays = {{1, platform::Rect::make(0.0, 0.0, 1920.0, 1080.0), 1.0}};
        return settings;
    }
    void stroke(double x)
    {
        desk_.input().sendMouse(platform::EventType::leftMouseDown, {x, 200.0});
        desk_.input().sendMouse(platform::EventType::leftMouseDragged, {x + 60.0, 800.0});
        desk_.input().sendMouse(platform::EventType::leftMouseUp, {x + 60.0, 800.0});
    }

    std::string home_;
    platform::VirtualPlatform desk_;
    std::shared_ptr<AnnotationManager> manager_;
    platform::Screen screen_;
    platform::ImagePtr picture_;
};

template <class Work> double secondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(work());
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return taken.count();
}

void snapshot(benchmark::State &state)
{
    Bench bench;
    bench.takeSnapshot();
    double whole = 0.0;
    double bare = 0.0;
    for (auto _ : state) {
        const double seconds = secondsOf([&bench] { return bench.takeSnapshot(); });
        bare += secondsOf([&bench] { return bench.encodeAlone(); });
        whole += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["ratio_to_one_encoding"] = whole / bare;
}
BENCHMARK(snapshot)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
