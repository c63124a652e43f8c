#include "BenchDesk.h"
#include "canvas/DefaultBackgroundUtilities.h"
#include "platform/ports/Pictures.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <string>

// What it costs to prepare each drawn background of a page of 3840x2160, as drawn and as drawn and
// saved, as ratios to filling as many pixels once in the same run.

namespace {

using namespace orv;

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;

void prepare(benchmark::State &state, bool (DefaultBackgroundUtilities::*add)())
{
    const bench::BenchDesk desk;
    platform::Image page(kWidth, kHeight);
    double filling = 0.0;
    double drawing = 0.0;
    double saving = 0.0;
    for (auto _ : state) {
        const double filled = bench::secondsOf([&page] {
            std::fill_n(page.data(), std::ptrdiff_t{kWidth} * kHeight, 0xFFFFFFFFU);
            benchmark::DoNotOptimize(page.data());
            benchmark::ClobberMemory();
        });
        DefaultBackgroundUtilities background({kWidth, kHeight});
        const double drawn = bench::secondsOf([&background, add] { (background.*add)(); });
        const double saved = bench::secondsOf([&background, &desk] {
            background.saveToFile(desk.home() + "/.whiteboard.jpg", 1.0F);
        });
        state.SetIterationTime(drawn + saved);
        filling += filled;
        drawing += drawn;
        saving += saved;
    }
    state.counters["drawn_to_filled"] = drawing / filling;
    state.counters["drawn_and_saved_to_filled"] = (drawing + saving) / filling;
}
BENCHMARK_CAPTURE(prepare, venn2, &DefaultBackgroundUtilities::addVenn2)->UseManualTime();
BENCHMARK_CAPTURE(prepare, venn3, &DefaultBackgroundUtilities::addVenn3)->UseManualTime();
BENCHMARK_CAPTURE(prepare, quardrant, &DefaultBackgroundUtilities::addQuardrant)->UseManualTime();
BENCHMARK_CAPTURE(prepare, kwl, &DefaultBackgroundUtilities::addKWL)->UseManualTime();

} // namespace

BENCHMARK_MAIN();
