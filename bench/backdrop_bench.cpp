#include "canvas/DefaultBackgroundUtilities.h"
#include "platform/ports/Pictures.h"
#include "platform/virtual/VirtualPlatform.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

// What it costs to prepare each drawn background of a page of 3840x2160, as drawn and as drawn and
// saved, as ratios to filling as many pixels once in the same run.

namespace {

using namespace orv;

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;

/// A virtual platform with a home of its own.
class Desk {
public:
    Desk() : home_(makeHome()), desk_(settings(home_)) { platform::Platform::install(&desk_); }
    ~Desk()
    {
        platform::Platform::install(nullptr);
        std::filesystem::remove_all(home_);
    }
    Desk(const Desk &) = delete;
    Desk &operator=(const Desk &) = delete;

    [[nodiscard]] std::string file() const { return home_ + "/.whiteboard.jpg"; }

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
        return settings;
    }

    std::string home_;
    platform::VirtualPlatform desk_;
};

template <class Work> double secondsOf(Work &&work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return taken.count();
}

void prepare(benchmark::State &state, bool (DefaultBackgroundUtilities::*add)())
{
    const Desk desk;
    platform::Image page(kWidth, kHeight);
    double filling = 0.0;
    double drawing = 0.0;
    double saving = 0.0;
    for (auto _ : state) {
        const double filled = secondsOf([&page] {
            std::fill_n(page.data(), std::ptrdiff_t{kWidth} * kHeight, 0xFFFFFFFFU);
            benchmark::DoNotOptimize(page.data());
            benchmark::ClobberMemory();
        });
        DefaultBackgroundUtilities background({kWidth, kHeight});
        const double drawn = secondsOf([&background, add] { (background.*add)(); });
        const double saved =
            secondsOf([&background, &desk] { background.saveToFile(desk.file(), 1.0F); });
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
