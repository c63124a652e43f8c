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

// What one drag costs on a canvas of 1920x1080 with settled strokes of 200 points on it, as a ratio
// to the same drag on an empty canvas of the same run.

namespace {

using namespace orv;
using platform::Event;
using platform::EventType;
using platform::Point;

constexpr int kPointsAStroke = 200;

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

double secondsADrag(int settled)
{
    Bench full;
    full.settle(settled);
    full.press();
    const int drags = settled >= 1000 ? 2 : 20;
    const double seconds = bench::secondsOf([&] {
        for (int i = 1; i <= drags; ++i) {
            full.dragTo({200.0 + 4.0 * i, 200.0 + 30.0 * std::sin(i * 0.2)});
        }
    });
    return seconds / drags;
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

} // namespace

BENCHMARK_MAIN();
