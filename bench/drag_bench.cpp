#include "BenchDesk.h"
#include "canvas/AnnotationOverlayWindow.h"
#include "canvas/AnnotationRegistry.h"
#include "canvas/AnnotationsView.h"
#include "canvas/PathAnnotation.h"
#include "channels/AppConstants.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <random>
#include <string>

// What frames cost on a canvas of 1920x1080 with settled strokes of 200 points on it, as ratios
// within one run: a drag to one on an empty canvas and to one of a short stroke, an undo to a full
// repaint.

namespace {

using namespace orv;
using platform::Event;
using platform::EventType;
using platform::Point;

constexpr int kPointsAStroke = 200;
constexpr int kDrags = 300;

class PenOfFourPoints : public CanvasTool {
public:
    [[nodiscard]] const std::string &name() const override { return name_; }
    [[nodiscard]] bool createsAnnotations() const override { return true; }
    [[nodiscard]] std::int32_t annotationType() const override { return annotation_type::pen; }
    [[nodiscard]] bool transient() const override { return false; }
    [[nodiscard]] std::optional<platform::Cursor> cursor() const override { return std::nullopt; }
    [[nodiscard]] std::shared_ptr<Annotation>
    createAnnotationInView(const std::shared_ptr<platform::View> &view) const override
    {
        auto annotation = Annotation::annotationOfType(annotation_type::pen);
        annotation->setContainerView(view);
        annotation->setSize(4.0F);
        annotation->setColor(platform::Color(0.8, 0.1, 0.1));
        return annotation;
    }

private:
    std::string name_ = "pen";
};

/// A virtual display with one canvas that can be filled and dragged on.
class Bench {
public:
    Bench()
    {
        registerStrokeAnnotations(AnnotationRegistry::shared());
        AppConstants::instance().setAppActUniqueID(16);
        window_ = std::make_shared<AnnotationOverlayWindow>(0);
        canvas_ = std::make_shared<AnnotationsView>(window_->frame());
        window_->setAnnotationsView(canvas_);
        canvas_->setAnnotationModeKey(AnnotationsView::annotationModeKeyStandard);
        canvas_->setCurrentTool(std::make_shared<PenOfFourPoints>());
        window_->orderFront();
        desk_.platform().mainThread().drain();
    }
    ~Bench()
    {
        window_.reset();
        canvas_.reset();
        AppConstants::destroy();
    }
    Bench(const Bench &) = delete;
    Bench &operator=(const Bench &) = delete;

    void settle(int strokes)
    {
        std::mt19937 random(7);
        std::uniform_real_distribution<double> x(0.0, 1920.0);
        std::uniform_real_distribution<double> y(0.0, 1080.0);
        std::uniform_real_distribution<double> step(-4.0, 4.0);
        const auto list = canvas_->document().annotations(canvas_->annotationModeKey());
        for (int i = 0; i < strokes; ++i) {
            const auto stroke = canvas_->currentTool()->createAnnotationInView(canvas_);
            Point p{x(random), y(random)};
            stroke->mouseDownEventAtPoint(p);
            for (int point = 1; point < kPointsAStroke; ++point) {
                p = {p.x + step(random), p.y + step(random)};
                stroke->mouseDraggedEventAtPoint(p);
            }
            stroke->mouseUpEventAtPoint(p);
            list->push_back(stroke);
        }
    }
    void press() { send(EventType::leftMouseDown, {200.0, 200.0}); }
    void dragTo(Point p) { send(EventType::leftMouseDragged, p); }
    void undo()
    {
        canvas_->undoAnnotation();
        desk_.platform().mainThread().drain();
    }
    /// As when annotation mode opens: nothing is kept from the time before.
    void repaintAll()
    {
        window_->orderOut();
        window_->orderFront();
        desk_.platform().mainThread().drain();
    }

private:
    void send(EventType type, Point at)
    {
        Event event;
        event.type = type;
        event.location = at;
        event.windowNumber = window_->windowNumber();
        window_->sendEvent(event);
        desk_.platform().mainThread().drain();
    }

    bench::BenchDesk desk_;
    std::shared_ptr<AnnotationOverlayWindow> window_;
    std::shared_ptr<AnnotationsView> canvas_;
};

/// What one of the drags from `first` to `last` takes.
double secondsOfDrags(Bench &bench, int first, int last)
{
    const double seconds = bench::secondsOf([&] {
        for (int i = first; i <= last; ++i) {
            bench.dragTo({960.0 + 700.0 * std::cos(i * 0.05), 540.0 + 400.0 * std::sin(i * 0.037)});
        }
    });
    return seconds / (last - first + 1);
}

double secondsADrag(int settled)
{
    Bench full;
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
        Bench bench;
        bench.settle(100);
        bench.press();
        const double early = secondsOfDrags(bench, 11, 110);
        secondsOfDrags(bench, 111, points);
        const double late = secondsOfDrags(bench, points + 1, points + 100);
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

void undo(benchmark::State &state)
{
    constexpr int undos = 20;
    for (auto _ : state) {
        Bench bench;
        bench.settle(static_cast<int>(state.range(0)));
        const double repaint = bench::secondsOf([&] { bench.repaintAll(); });
        const double seconds = bench::secondsOf([&] {
                                   for (int i = 0; i < undos; ++i) {
                                       bench.undo();
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
