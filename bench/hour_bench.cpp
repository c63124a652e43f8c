#include "PenClient.h"

#include <benchmark/benchmark.h>

// What an hour of ink costs without a display: a pen of 240 records a second, strokes of one and of
// two seconds in turn, no wipe, each record drawn, a save each minute.

namespace {

using namespace orv;

constexpr int kHour = 864'000;
constexpr int kShortStroke = 240;
constexpr int kLongStroke = 480;

void hour(benchmark::State &state)
{
    for (auto _ : state) {
        bench::PenClient client;
        const platform::ImagePtr before = client.picture();
        const double seconds = bench::secondsOf([&client] {
            for (int sent = 0; sent < kHour; sent += kShortStroke + kLongStroke) {
                client.stroke(kShortStroke);
                client.stroke(kLongStroke);
            }
        });
        if (*client.picture() == *before) {
            state.SkipWithError("nothing was drawn");
        }
        state.SetIterationTime(seconds);
        state.counters["us_a_record"] = seconds / kHour * 1e6;
    }
}
BENCHMARK(hour)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);

} // namespace

BENCHMARK_MAIN();
