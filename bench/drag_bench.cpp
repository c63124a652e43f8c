#include "CanvasDesk.h"
#include "platform/raster/PixelRect.h"

#include <benchmark/benchmark.h>

#include <algorithm>

// What frames cost on a canvas of 1920x1080 with settled strokes of 200 points on it, as ratios
// within one run: a drag to one on an empty canvas and to one of a short stroke, an undo to a full
// repaint.

namespace {

using namespace orv;
using bench::CanvasDesk;

constexpr int kDrags = 300;

/// What one of the drags from `first` to `last` takes.
double secondsOfDrags(CanvasDesk &desk, int first, int last)
{
    const double seconds = bench::secondsOf([&] {
        for (int i = first; i <= last; ++i) {
            desk.drag(i);
        }
    });
    return seconds / (last - first + 1);
}

double secondsADrag(int settled)
{
    CanvasDesk full;
    full.settle(settled);
    full.press();
    return secondsOfDrags(full, 1, kDrags);
}

void drag(benchmark::State &state)
{
    const double empty = secondsADrag(0);
    double total = 0.0;
    for (auto _ : state) {
        const double seconds = secondsADrag(static_cast<int>(state.range(0)));
        state.SetIterationTime(seconds);
        total += seconds;
    }
    state.counters["ratio_to_empty"] = total / static_cast<double>(state.iterations()) / empty;
}
BENCHMARK(drag)->Arg(0)->Arg(100)->Arg(1000)->Arg(10000)->UseManualTime()->Iterations(1)->Unit(
    benchmark::kMillisecond);

void dragOfALongStroke(benchmark::State &state)
{
    const auto points = static_cast<int>(state.range(0));
    for (auto _ : state) {
        CanvasDesk desk;
        desk.settle(100);
        desk.press();
        const double early = secondsOfDrags(desk, 11, 110);
        secondsOfDrags(desk, 111, points);
        const double late = secondsOfDrags(desk, points + 1, points + 100);
        state.SetIterationTime(late);
        state.counters["ratio_to_short"] = late / early;
    }
}
BENCHMARK(dragOfALongStroke)
    ->Arg(500)
    ->Arg(2000)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// What copying the pixels once takes that lie in the box of the drags.
double secondsOfACopy()
{
    constexpr platform::PixelRect box{260, 140, 1400, 800};
    constexpr int copies = 20;
    const platform::Image from(1920, 1080);
    platform::Image to(1920, 1080);
    return bench::secondsOf([&] {
               for (int y = 0; y < copies * box.height; ++y) {
                   const int row = box.y + y % box.height;
                   std::copy_n(from.row(row) + box.x, box.width, to.row(row) + box.x);
                   benchmark::ClobberMemory();
               }
           }) /
           copies;
}

void releaseOfALongStroke(benchmark::State &state)
{
    for (auto _ : state) {
        CanvasDesk desk;
        desk.settle(100);
        desk.press();
        secondsOfDrags(desk, 1, static_cast<int>(state.range(0)));
        // Not where the last drag was: then the stroke is closed as well.
        const double seconds = bench::secondsOf([&] { desk.release({400.0, 700.0}); });
        state.SetIterationTime(seconds);
        state.counters["ratio_to_copy"] = seconds / secondsOfACopy();
    }
}
BENCHMARK(releaseOfALongStroke)
    ->Arg(2000)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

void undo(benchmark::State &state)
{
    constexpr int undos = 20;
    for (auto _ : state) {
        CanvasDesk desk;
        desk.settle(static_cast<int>(state.range(0)));
        const double repaint = bench::secondsOf([&] { desk.repaintAll(); });
        const double seconds = bench::secondsOf([&] {
                                   for (int i = 0; i < undos; ++i) {
                                       desk.undo();
                                   }
                               }) /
                               undos;
        state.SetIterationTime(seconds);
        state.counters["repaints_for_one"] = repaint / seconds;
    }
}
BENCHMARK(undo)->Arg(1000)->Arg(10000)->UseManualTime()->Iterations(1)->Unit(
    benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
