#include "BenchDesk.h"
#include "canvas/AnnotationOverlayWindow.h"
#include "canvas/AnnotationRegistry.h"
#include "canvas/AnnotationsView.h"
#include "canvas/PathAnnotation.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

// What an autosave costs, and how much of it the main thread is held up by: with strokes of 200
// points, all finished, and with one of them in progress.

namespace {

using namespace orv;
using platform::Point;

constexpr int kPointsAStroke = 200;

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A virtual display with one canvas that is full of strokes.
class Bench {
public:
    Bench()
    {
        registerStrokeAnnotations(AnnotationRegistry::shared());
        OrvFrameworkLogger::shared().setStandardOutput(false);
        AppConstants::instance().setAppActUniqueID(16);
        AppConstants::instance().DefaultAppDataPath = desk_.home() + "/data/";
        window_ = std::make_shared<AnnotationOverlayWindow>(0);
        canvas_ = std::make_shared<AnnotationsView>(window_->frame());
        window_->setAnnotationsView(canvas_);
        canvas_->loadDefaultAnnotationData();
        desk_.platform().mainThread().drain();
    }
    ~Bench()
    {
        window_.reset();
        canvas_.reset();
        AppConstants::destroy();
        OrvFrameworkLogger::release();
    }
    Bench(const Bench &) = delete;
    Bench &operator=(const Bench &) = delete;

    void draw(std::int64_t strokes, int points)
    {
        const auto list = canvas_->document().annotations(canvas_->annotationModeKey());
        for (std::int64_t i = 0; i < strokes; ++i) {
            const auto stroke = Annotation::annotationOfType(annotation_type::pen);
            Point p{static_cast<double>(i), 0.5};
            stroke->mouseDownEventAtPoint(p);
            for (int point = 1; point < points; ++point) {
                p = p + Point{1.25, 2.5};
                stroke->mouseDraggedEventAtPoint(p);
            }
            stroke->mouseUpEventAtPoint(p);
            list->push_back(stroke);
        }
    }
    void press(int points)
    {
        const auto stroke = Annotation::annotationOfType(annotation_type::pen);
        stroke->mouseDownEventAtPoint({});
        for (int point = 1; point < points; ++point) {
            stroke->mouseDraggedEventAtPoint({static_cast<double>(point), 2.0});
        }
        canvas_->document().annotations(canvas_->annotationModeKey())->push_back(stroke);
    }
    /// What the main thread does.
    void askForSave() { canvas_->saveDefaultAnnotationData(); }
    /// What the worker does.
    void work() { desk_.platform().mainThread().drain(); }
    [[nodiscard]] bool hasSaved() const
    {
        return std::filesystem::exists(desk_.home() + "/data/" +
                                       canvas_->annoDefaultDataFileName());
    }

private:
    bench::BenchDesk desk_;
    std::shared_ptr<AnnotationOverlayWindow> window_;
    std::shared_ptr<AnnotationsView> canvas_;
};

void saveAll(benchmark::State &state, Bench &bench)
{
    double onMainThread = 0.0;
    double whole = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        const auto start = Clock::now();
        bench.askForSave();
        const double asked = secondsSince(start);
        bench.work();
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        onMainThread += asked;
        whole += seconds;
    }
    if (!bench.hasSaved()) {
        state.SkipWithError("nothing was saved");
    }
    state.counters["main_ms"] = onMainThread * 1e3 / static_cast<double>(state.iterations());
    state.counters["main_share"] = onMainThread / whole;
}

void save(benchmark::State &state)
{
    Bench bench;
    bench.draw(state.range(0), kPointsAStroke);
    saveAll(state, bench);
    state.SetComplexityN(state.range(0));
}

/// The argument is the number of points of the stroke in progress.
void saveWhileDrawing(benchmark::State &state)
{
    constexpr std::int64_t strokes = 1000;
    Bench bench;
    bench.draw(strokes, kPointsAStroke);
    bench.press(static_cast<int>(state.range(0)));
    saveAll(state, bench);
}

BENCHMARK(save)
    ->Arg(200)
    ->Arg(1000)
    ->Arg(5000)
    ->Complexity(benchmark::oN)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(saveWhileDrawing)->Arg(200)->Arg(20000)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
