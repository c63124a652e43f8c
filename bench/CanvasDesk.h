#pragma once

#include "BenchDesk.h"
#include "canvas/AnnotationOverlayWindow.h"
#include "canvas/AnnotationRegistry.h"
#include "canvas/AnnotationsView.h"
#include "canvas/PathAnnotation.h"
#include "channels/AppConstants.h"

#include <cmath>
#include <memory>
#include <random>
#include <string>

namespace orv::bench {

/// Draws what a pen draws, without the session that owns tools.
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
class CanvasDesk {
public:
    static constexpr int pointsAStroke = 200;

    CanvasDesk()
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
    ~CanvasDesk()
    {
        window_.reset();
        canvas_.reset();
        AppConstants::destroy();
    }
    CanvasDesk(const CanvasDesk &) = delete;
    CanvasDesk &operator=(const CanvasDesk &) = delete;

    [[nodiscard]] AnnotationsView &canvas() { return *canvas_; }
    [[nodiscard]] AnnotationOverlayWindow &window() { return *window_; }
    [[nodiscard]] const std::string &home() const { return desk_.home(); }
    platform::VirtualPlatform &platform() { return desk_.platform(); }

    void settle(int strokes)
    {
        std::mt19937 random(7);
        std::uniform_real_distribution<double> x(0.0, 1920.0);
        std::uniform_real_distribution<double> y(0.0, 1080.0);
        std::uniform_real_distribution<double> step(-4.0, 4.0);
        const auto list = canvas_->document().annotations(canvas_->annotationModeKey());
        for (int i = 0; i < strokes; ++i) {
            const auto stroke = canvas_->currentTool()->createAnnotationInView(canvas_);
            platform::Point p{x(random), y(random)};
            stroke->mouseDownEventAtPoint(p);
            for (int point = 1; point < pointsAStroke; ++point) {
                p = {p.x + step(random), p.y + step(random)};
                stroke->mouseDraggedEventAtPoint(p);
            }
            stroke->mouseUpEventAtPoint(p);
            list->push_back(stroke);
        }
    }
    void press() { send(platform::EventType::leftMouseDown, {200.0, 200.0}); }
    /// Drags go round the display on a path that never closes.
    void drag(int number)
    {
        dragTo(
            {960.0 + 700.0 * std::cos(number * 0.0073), 540.0 + 400.0 * std::sin(number * 0.0054)});
    }
    void dragTo(platform::Point p) { send(platform::EventType::leftMouseDragged, p); }
    void release(platform::Point p) { send(platform::EventType::leftMouseUp, p); }
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
    void send(platform::EventType type, platform::Point at)
    {
        platform::Event event;
        event.type = type;
        event.location = at;
        event.windowNumber = window_->windowNumber();
        window_->sendEvent(event);
        desk_.platform().mainThread().drain();
    }

    BenchDesk desk_;
    std::shared_ptr<AnnotationOverlayWindow> window_;
    std::shared_ptr<AnnotationsView> canvas_;
};

} // namespace orv::bench
