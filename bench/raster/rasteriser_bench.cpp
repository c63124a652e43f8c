#include "BenchDesk.h"
#include "Engines.h"
#include "platform/raster/GuiApplication.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

// What engines take for strokes of 200 points on 1920x1080, as parts of the toolkit's painter, and
// how many pixels each leaves different when it paints the picture in pieces.

namespace {

using namespace orv;
using bench::BenchStroke;
using bench::Engine;
using platform::Image;
using platform::PixelRect;
using platform::Point;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kStrokes = 1000;
constexpr int kPointsAStroke = 200;
constexpr int kTile = 60;

std::vector<BenchStroke> strokes(int count, double width, double alpha)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> x(0.0, kWidth);
    std::uniform_real_distribution<double> y(0.0, kHeight);
    std::uniform_real_distribution<double> turn(-0.4, 0.4);
    std::uniform_real_distribution<double> step(2.0, 8.0);
    std::vector<BenchStroke> found;
    for (int i = 0; i < count; ++i) {
        BenchStroke stroke{{}, width, {0.8, 0.1, 0.1, alpha}, {}};
        Point p{x(random), y(random)};
        double direction = turn(random) * 8.0;
        stroke.path.moveTo(p);
        for (int point = 1; point < kPointsAStroke; ++point) {
            direction += turn(random);
            const double length = step(random);
            p = {p.x + length * std::cos(direction), p.y + length * std::sin(direction)};
            stroke.path.lineTo(p);
        }
        found.push_back(std::move(stroke));
    }
    return found;
}

double secondsOf(const Engine &engine, const std::vector<BenchStroke> &ink)
{
    Image picture(kWidth, kHeight);
    engine.paint(picture, ink, std::nullopt);
    return bench::secondsOf([&] { engine.paint(picture, ink, std::nullopt); });
}

template <class Kind> void repaint(benchmark::State &state)
{
    const Kind engine;
    platform::ensureGuiApplication();
    const auto ink = strokes(kStrokes, static_cast<double>(state.range(0)), 1.0);
    double total = 0.0;
    double toolkit = 0.0;
    for (auto _ : state) {
        const double seconds = secondsOf(engine, ink);
        toolkit += secondsOf(bench::PainterEngine{}, ink);
        total += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["part_of_QPainter"] = total / toolkit;
}

template <class Kind> void inPieces(benchmark::State &state)
{
    const Kind engine;
    platform::ensureGuiApplication();
    const auto ink = strokes(kStrokes / 10, static_cast<double>(state.range(0)), 0.5);
    int different = 0;
    for (auto _ : state) {
        Image whole(kWidth, kHeight);
        engine.paint(whole, ink, std::nullopt);
        Image pieces(kWidth, kHeight);
        for (int y = 0; y < kHeight; y += kTile) {
            for (int x = 0; x < kWidth; x += kTile) {
                engine.paint(pieces, ink, PixelRect{x, y, kTile, kTile});
            }
        }
        different = 0;
        for (int i = 0; i < kWidth * kHeight; ++i) {
            different += whole.data()[i] == pieces.data()[i] ? 0 : 1;
        }
    }
    state.counters["different_pixels"] = different;
}

void repaints(benchmark::internal::Benchmark *what)
{
    what->Arg(4)->Arg(20)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
}
void pieces(benchmark::internal::Benchmark *what)
{
    what->Arg(20)->Iterations(1)->Unit(benchmark::kMillisecond);
}
BENCHMARK_TEMPLATE(repaint, bench::PainterEngine)->Apply(repaints);
BENCHMARK_TEMPLATE(repaint, bench::AggEngine)->Apply(repaints);
BENCHMARK_TEMPLATE(repaint, bench::MaskEngine)->Apply(repaints);
BENCHMARK_TEMPLATE(repaint, bench::BandsEngine)->Apply(repaints);
BENCHMARK_TEMPLATE(inPieces, bench::PainterEngine)->Apply(pieces);
BENCHMARK_TEMPLATE(inPieces, bench::AggEngine)->Apply(pieces);
BENCHMARK_TEMPLATE(inPieces, bench::MaskEngine)->Apply(pieces);

} // namespace

BENCHMARK_MAIN();
