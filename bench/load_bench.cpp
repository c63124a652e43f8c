#include "CanvasDesk.h"
#include "canvas/CanvasArchive.h"
#include "canvas/RawDataFiles.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/BinaryPropertyList.h"
#include "platform/ports/Files.h"
#include "platform/ports/Pictures.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>

// What a person waits for when saved strokes of 200 points come back at 1920x1080: reading the file
// into a canvas that can draw it, as ratios within one run to a bare check of the file's values, to
// the painting that follows, and to a fifth of the strokes; and then the painting itself.

namespace {

using namespace orv;
using bench::secondsOf;

constexpr std::uint64_t kReadLimit = std::uint64_t{1} << 32U;
constexpr int kRounds = 3;

/// What one round takes, in seconds; of several rounds the least of each.
struct Waits {
    double load = std::numeric_limits<double>::max();
    double paint = std::numeric_limits<double>::max();
};

Waits leastOf(const Waits &a, const Waits &b)
{
    return {std::min(a.load, b.load), std::min(a.paint, b.paint)};
}

/// A canvas with its strokes in two files: its own, and a snapshot's.
class LoadDesk {
public:
    explicit LoadDesk(int strokes) : strokes_(static_cast<std::size_t>(strokes))
    {
        OrvFrameworkLogger::shared().setStandardOutput(false);
        AppConstants::instance().DefaultAppDataPath = desk_.home() + "/data/";
        AppConstants::instance().AppDataPath = desk_.home() + "/";
        view().loadDefaultAnnotationData();
        desk_.settle(strokes);
        view().saveDefaultAnnotationDataAndWait();
        const RawDataFiles raw(picturePath());
        std::filesystem::create_directories(raw.folder);
        view().saveSanpshotData(raw.data);
        desk_.platform().pictures().save(raw.background, platform::Image(1920, 1080),
                                         platform::PictureKind::jpeg, 0.95F);
        clear();
    }

    [[nodiscard]] platform::Data bytes()
    {
        return desk_.platform()
            .files()
            .read(desk_.home() + "/data/" + view().annoDefaultDataFileName(), kReadLimit)
            .value();
    }
    /// As when a session starts: the window comes up with what the canvas's own file holds.
    Waits openSession()
    {
        desk_.window().orderOut();
        Waits waits;
        waits.load = secondsOf([this] { view().loadDefaultAnnotationData(); });
        waits.paint = secondsOf([this] {
            desk_.window().orderFront();
            desk_.platform().mainThread().drain();
        });
        return waits;
    }
    Waits openSnapshot()
    {
        Waits waits;
        waits.load = secondsOf(
            [this] { view().enterSnapshotEditingModeWithImageFile(picturePath(), false); });
        waits.paint = secondsOf([this] { desk_.platform().mainThread().drain(); });
        return waits;
    }
    [[nodiscard]] bool isLoaded()
    {
        return view().document().annotationCount(view().annotationModeKey()) == strokes_;
    }
    void clear()
    {
        view().clearForNewAnnotations();
        view().enterStandardAnnotationMode();
        view().clearForNewAnnotations();
        desk_.platform().mainThread().drain();
    }

private:
    AnnotationsView &view() { return desk_.canvas(); }
    [[nodiscard]] std::string picturePath() const { return desk_.home() + "/IMG.jpg"; }

    bench::CanvasDesk desk_;
    std::size_t strokes_;
};

/// Of as many strokes, each on a desk of its own.
struct Measured {
    Waits waits;
    double check = 0.0;
};

double secondsOfACheck(LoadDesk &desk)
{
    platform::Data bytes = desk.bytes();
    return secondsOf([&bytes] {
        const platform::BinaryPropertyList list(std::move(bytes));
        benchmark::DoNotOptimize(list.size());
    });
}

template <class Open> Measured measured(benchmark::State &state, int strokes, Open open)
{
    LoadDesk desk(strokes);
    Measured least;
    least.check = secondsOfACheck(desk);
    for (int i = 0; i < kRounds; ++i) {
        least.waits = leastOf(least.waits, open(desk));
        if (!desk.isLoaded()) {
            state.SkipWithError("strokes are missing");
        }
        desk.clear();
        least.check = std::min(least.check, secondsOfACheck(desk));
    }
    return least;
}

template <class Open> void opening(benchmark::State &state, Open open)
{
    const auto strokes = static_cast<int>(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        const Measured all = measured(state, strokes, open);
        const Measured fifth = measured(state, strokes / 5, open);
        state.SetIterationTime(all.waits.load + all.waits.paint);
        state.counters["load_ms"] = all.waits.load * 1e3;
        state.counters["paint_ms"] = all.waits.paint * 1e3;
        state.counters["load_to_check"] = all.waits.load / all.check;
        state.counters["load_to_paint"] = all.waits.load / all.waits.paint;
        state.counters["load_to_fifth"] = all.waits.load / fifth.waits.load;
    }
}

void openSession(benchmark::State &state)
{
    opening(state, [](LoadDesk &desk) { return desk.openSession(); });
}
BENCHMARK(openSession)->Arg(10000)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void openSnapshot(benchmark::State &state)
{
    opening(state, [](LoadDesk &desk) { return desk.openSnapshot(); });
}
BENCHMARK(openSnapshot)->Arg(10000)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
