#include "platform/foundation/AtomicFile.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace orv::platform;

constexpr std::size_t kPoints = 200;
constexpr std::uint64_t kReadLimit = std::uint64_t{1} << 32U;

struct Coordinates {
    double x;
    double y;
};

/// A freehand stroke with one dictionary for each point, as documents store it.
class Stroke : public Archivable {
public:
    std::vector<Coordinates> points;

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override
    {
        return {"PencilAnnotation", "PathAnnotation", "Annotation"};
    }
    void encodeWithCoder(KeyedArchiver &coder) const override
    {
        coder.encodeInt("annotationType", 2);
        coder.encodeFloat("annotationSize", 3.0F);
        coder.encodeArray("path", [this](ArchiveArray &path) {
            for (const Coordinates &point : points) {
                path.addDictionary([this, &point](ArchiveDictionary &element) {
                    std::array<std::uint8_t, sizeof point> bytes{};
                    std::memcpy(bytes.data(), &point, bytes.size());
                    element.setInt("elementType", &point == points.data() ? 0 : 1);
                    element.setData("elementPoints", bytes);
                });
            }
        });
    }
    static std::shared_ptr<Archivable> decode(KeyedUnarchiver &coder)
    {
        auto stroke = std::make_shared<Stroke>();
        const auto path = coder.decodeNode("path");
        const std::size_t count = path ? path->size() : 0;
        stroke->points.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            const auto element = path->at(i);
            const auto type = element->find("elementType");
            const auto data = element->find("elementPoints")->asData();
            Coordinates point{};
            std::memcpy(&point, data.data(), std::min(data.size(), sizeof point));
            stroke->points.push_back(type->asInt() > 1 ? Coordinates{} : point);
        }
        return stroke;
    }
};

std::vector<std::shared_ptr<Stroke>> strokes(std::size_t count)
{
    std::vector<std::shared_ptr<Stroke>> made;
    for (std::size_t i = 0; i < count; ++i) {
        made.push_back(std::make_shared<Stroke>());
        for (std::size_t p = 0; p < kPoints; ++p) {
            made.back()->points.push_back(
                {static_cast<double>(p) * 1.25, static_cast<double>(i) + 0.5});
        }
    }
    return made;
}

Data archived(const std::vector<std::shared_ptr<Stroke>> &list)
{
    KeyedArchiver archiver;
    archiver.encodeArray("standardAnnotations", [&list](ArchiveArray &array) {
        for (const auto &stroke : list) {
            array.addObject(stroke);
        }
    });
    return archiver.finishEncoding();
}

std::size_t pointsRead(const Data &bytes)
{
    ClassTable classes;
    classes.add("PencilAnnotation", &Stroke::decode);
    KeyedUnarchiver unarchiver(bytes, classes);
    const auto list = unarchiver.decodeNode("standardAnnotations");
    std::size_t points = 0;
    for (std::size_t i = 0; i < list->size(); ++i) {
        points += std::dynamic_pointer_cast<Stroke>(list->at(i)->asObject())->points.size();
    }
    return points;
}

void countPoints(benchmark::State &state, std::size_t bytes)
{
    const auto points = state.range(0) * static_cast<std::int64_t>(kPoints);
    state.SetItemsProcessed(state.iterations() * points);
    state.counters["bytes"] = static_cast<double>(bytes);
    state.SetComplexityN(points);
}

void writeArchive(benchmark::State &state)
{
    const auto list = strokes(static_cast<std::size_t>(state.range(0)));
    std::size_t size = 0;
    for ([[maybe_unused]] auto _ : state) {
        const Data bytes = archived(list);
        size = bytes.size();
        benchmark::DoNotOptimize(bytes.data());
    }
    countPoints(state, size);
}

void readArchive(benchmark::State &state)
{
    const Data bytes = archived(strokes(static_cast<std::size_t>(state.range(0))));
    for ([[maybe_unused]] auto _ : state) {
        if (pointsRead(bytes) != static_cast<std::size_t>(state.range(0)) * kPoints) {
            state.SkipWithError("points are missing");
        }
    }
    countPoints(state, bytes.size());
}

std::string scratchFile()
{
    return (std::filesystem::temp_directory_path() / "orv-archive-bench.dat").string();
}

void writeFileOfSameSize(benchmark::State &state)
{
    const Data bytes = archived(strokes(static_cast<std::size_t>(state.range(0))));
    const std::string path = scratchFile();
    for ([[maybe_unused]] auto _ : state) {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char *>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
    std::filesystem::remove(path);
    countPoints(state, bytes.size());
}

void readFileOfSameSize(benchmark::State &state)
{
    const Data bytes = archived(strokes(static_cast<std::size_t>(state.range(0))));
    const std::string path = scratchFile();
    if (!writeFileAtomically(path, bytes)) {
        state.SkipWithError("the scratch file can't be written");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(readFile(path, kReadLimit));
    }
    std::filesystem::remove(path);
    countPoints(state, bytes.size());
}

void writeFileAtomicallyOfSameSize(benchmark::State &state)
{
    const Data bytes = archived(strokes(static_cast<std::size_t>(state.range(0))));
    const std::string path = scratchFile();
    for ([[maybe_unused]] auto _ : state) {
        if (!writeFileAtomically(path, bytes)) {
            state.SkipWithError("the scratch file can't be written");
        }
    }
    std::filesystem::remove(path);
    countPoints(state, bytes.size());
}

} // namespace

BENCHMARK(writeArchive)
    ->Arg(250)
    ->Arg(500)
    ->Arg(1000)
    ->Arg(2000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(readArchive)
    ->Arg(250)
    ->Arg(500)
    ->Arg(1000)
    ->Arg(2000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(writeFileOfSameSize)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeFileAtomicallyOfSameSize)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readFileOfSameSize)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_MAIN();
