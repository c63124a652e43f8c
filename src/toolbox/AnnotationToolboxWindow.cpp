#include "toolbox/AnnotationToolboxWindow.h"

#include <cmath>

namespace orv {

namespace {

using platform::Rect;

constexpr double kSlideSeconds = 0.35;
// 0.35 seconds for each 300 points.
constexpr double kSecondsPerPoint = 0.0011666666666666665;
constexpr double kOffScreenMargin = 1.0;

template <class Control> Control *held(const std::weak_ptr<Control> &control)
{
    return control.lock().get();
}

} // namespace

AnnotationToolboxWindow::AnnotationToolboxWindow(const Rect &contentRect)
    : Window(contentRect, platform::style::nonactivatingPanel)
{
    setBackgroundColor(platform::Color::clear());
    setLevel(windowLevel);
}

double AnnotationToolboxWindow::animationResizeTime(const Rect & /*frame*/) const
{
    return duration_;
}

std::optional<platform::Screen> AnnotationToolboxWindow::displayScreen() const
{
    return annotationManager_ == nullptr ? std::nullopt
                                         : annotationManager_->displayScreenRequested();
}

void AnnotationToolboxWindow::setToolSelectionView(const std::shared_ptr<platform::View> &view)
{
    toolSelectionView_ = view;
}

void AnnotationToolboxWindow::resetDisplay()
{
    const auto screen = displayScreen();
    const Rect area = screen ? screen->frame : Rect{};
    Rect home = frame();
    home.origin = {area.origin.x + (area.size.width - home.size.width) / 2.0,
                   area.origin.y + (area.size.height - home.size.height)};
    setFrame(home, true);
    windowFrameCenteredAtTopEdge_ = home;
    const double stripHeight = toolSelectionView_ ? toolSelectionView_->frame().size.height : 0.0;
    windowFrameOffScreenTopEdge_ = home.offsetBy(0.0, stripHeight + kOffScreenMargin);
    windowFrameLastMoved_ = home;
}

double AnnotationToolboxWindow::secondsFromHome() const
{
    const platform::Point way = windowFrameCenteredAtTopEdge_.origin - windowFrameLastMoved_.origin;
    return std::hypot(static_cast<float>(way.x), static_cast<float>(way.y)) * kSecondsPerPoint;
}

void AnnotationToolboxWindow::glideTo(const Rect &frame, double seconds, bool animate)
{
    duration_ = seconds;
    setFrame(frame, true, animate);
}

void AnnotationToolboxWindow::hideToolboxWindow(bool animate)
{
    if (isIconized_) {
        return;
    }
    const double seconds = secondsFromHome();
    if (seconds != 0.0) {
        glideTo(windowFrameCenteredAtTopEdge_, seconds, animate);
    }
    glideTo(windowFrameOffScreenTopEdge_, kSlideSeconds, animate);
    if (toolSelectionView_) {
        toolSelectionView_->setHidden(true);
    }
    // What is left of the panel is transparent, and clicks on it are meant for what lies below.
    setIgnoresMouseEvents(true);
    isIconized_ = true;
}

void AnnotationToolboxWindow::showToolboxWindow(bool animate)
{
    if (!isIconized_) {
        return;
    }
    if (toolSelectionView_) {
        toolSelectionView_->setHidden(false);
    }
    setIgnoresMouseEvents(false);
    const double seconds = secondsFromHome();
    glideTo(windowFrameCenteredAtTopEdge_, kSlideSeconds, animate);
    if (seconds != 0.0) {
        glideTo(windowFrameLastMoved_, seconds, animate);
    }
    isIconized_ = false;
}

platform::Button *AnnotationToolboxWindow::eraserButton() const
{
    return held(controls_.eraserButton);
}

platform::Button *AnnotationToolboxWindow::undoButton() const
{
    return held(controls_.undoButton);
}

platform::Button *AnnotationToolboxWindow::redoButton() const
{
    return held(controls_.redoButton);
}

platform::Button *AnnotationToolboxWindow::squeegeeButton() const
{
    return held(controls_.squeegeeButton);
}

platform::Button *AnnotationToolboxWindow::saveSSButton() const
{
    return held(controls_.saveSSButton);
}

platform::Button *AnnotationToolboxWindow::closeSSButton() const
{
    return held(controls_.closeSSButton);
}

platform::Button *AnnotationToolboxWindow::snapshotButton() const
{
    return held(controls_.snapshotButton);
}

platform::Button *AnnotationToolboxWindow::flipchartButton() const
{
    return held(controls_.flipchartButton);
}

platform::View *AnnotationToolboxWindow::standardAnnotationModeToolbarView() const
{
    return held(controls_.standardAnnotationModeToolbarView);
}

platform::View *AnnotationToolboxWindow::snapshotEditingModeToolbarView() const
{
    return held(controls_.snapshotEditingModeToolbarView);
}

} // namespace orv
