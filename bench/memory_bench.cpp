#include "PenClient.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <fstream>
#include <string>

// What a stroke of 200 points leaves behind in memory: how much more is resident after 40,000
// strokes than after 20,000, everything that a session keeps of them included, and a save at both
// ends. What does not grow with them is told as the memory of the whole process without them.

namespace {

using namespace orv;

constexpr int kStrokes = 20'000;
constexpr int kRecordsAStroke = 200;
constexpr double kSecondsToASave = 60.0;

/// Of the process, in bytes; 0 where the system does not tell.
double residentBytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::stod(line.substr(sizeof "VmRSS:" - 1)) * 1024.0;
        }
    }
    return 0.0;
}

struct Resident {
    double asItIs = 0.0;
    /// Without what the allocator holds back.
    double trimmed = 0.0;
};

Resident resident()
{
    Resident now;
    now.asItIs = residentBytes();
    ::malloc_trim(0);
    now.trimmed = residentBytes();
    return now;
}

Resident residentAfter(bench::PenClient &client, int strokes)
{
    for (int i = 0; i < strokes; ++i) {
        client.strokeAtOnce(kRecordsAStroke);
    }
    client.pass(kSecondsToASave);
    return resident();
}

void memory(benchmark::State &state)
{
    for (auto _ : state) {
        bench::PenClient client;
        const Resident half = residentAfter(client, kStrokes);
        const Resident whole = residentAfter(client, kStrokes);
        const double slope = (whole.trimmed - half.trimmed) / kStrokes;
        state.counters["bytes_a_stroke"] = slope;
        state.counters["untrimmed"] = (whole.asItIs - half.asItIs) / kStrokes;
        state.counters["MB_without_strokes"] = (half.trimmed - slope * kStrokes) / 1e6;
    }
}
BENCHMARK(memory)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace

BENCHMARK_MAIN();
