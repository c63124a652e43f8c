#include "BenchDesk.h"
#include "canvas/RawDataFiles.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/ports/Pictures.h"
#include "session/AnnotationManager.h"
#include "session/ScreenPictures.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>

// What a whole snapshot of a display of 1920x1080 costs, its clean background and its data included
// and its animation not, as a ratio to the bare encoding of one such picture of the same run.

namespace {

using namespace orv;

class Bench {
public:
    Bench()
    {
        OrvFrameworkLogger::shared().setStandardOutput(false);
        manager_ = std::make_shared<AnnotationManager>(17);
        manager_->setDisplayID(1);
        manager_->showWindow();
        manager_->openAnnotationToolbox();
        manager_->handleSetToolRequest({8, 0, 6.0F, 0, 0xFFDC0000});
        for (int i = 0; i < 20; ++i) {
            stroke(100.0 + 80.0 * i);
        }
        desk_.platform().mainThread().drain();
        screen_ = desk_.platform().displays().screens().front();
        std::filesystem::create_directories(RawDataFiles(path()).folder);
    }
    ~Bench()
    {
        manager_->terminate();
        manager_.reset();
        AppConstants::destroy();
        OrvFrameworkLogger::release();
    }
    Bench(const Bench &) = delete;
    Bench &operator=(const Bench &) = delete;

    [[nodiscard]] std::string path() const { return desk_.home() + "/IMG.jpg"; }

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
        return desk_.platform().pictures().save(desk_.home() + "/alone.jpg", *picture_,
                                                platform::PictureKind::jpeg, 0.95F);
    }

private:
    void stroke(double x)
    {
        desk_.platform().input().sendMouse(platform::EventType::leftMouseDown, {x, 200.0});
        desk_.platform().input().sendMouse(platform::EventType::leftMouseDragged,
                                           {x + 60.0, 800.0});
        desk_.platform().input().sendMouse(platform::EventType::leftMouseUp, {x + 60.0, 800.0});
    }

    bench::BenchDesk desk_;
    std::shared_ptr<AnnotationManager> manager_;
    platform::Screen screen_;
    platform::ImagePtr picture_;
};

void snapshot(benchmark::State &state)
{
    Bench desk;
    desk.takeSnapshot();
    double whole = 0.0;
    double bare = 0.0;
    for (auto _ : state) {
        const double seconds =
            bench::secondsOf([&desk] { benchmark::DoNotOptimize(desk.takeSnapshot()); });
        bare += bench::secondsOf([&desk] { benchmark::DoNotOptimize(desk.encodeAlone()); });
        whole += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["ratio_to_one_encoding"] = whole / bare;
}
BENCHMARK(snapshot)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
