#include "canvas/AnnotationOverlayWindow.h"

#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

namespace orv {

namespace {

platform::Displays &displays()
{
    return platform::Platform::current().displays();
}

platform::Rect frameOf(const std::optional<platform::Screen> &screen)
{
    return screen ? screen->frame : platform::Rect{};
}

std::string describe(const std::optional<platform::Screen> &screen)
{
    return screen ? screen->description() : "(null)";
}

} // namespace

AnnotationOverlayWindow::AnnotationOverlayWindow(std::uint32_t styleMask)
    : Window(frameOf(displays().screen(displays().mainDisplayID())), styleMask)
{
    setTitle("Annotation Overlay");
    setBackgroundColor(platform::Color::clear());
    setIgnoresMouseEvents(true);
    setLevel(windowLevel);
}

AnnotationOverlayWindow::AnnotationOverlayWindow(platform::DisplayID displayID,
                                                 const std::shared_ptr<AnnotationsView> &view)
    : AnnotationOverlayWindow(platform::style::nonactivatingPanel)
{
    setFrame(frameOf(displays().screen(displayID)), true);
    displayID_ = displayID;
    setAnnotationsView(view);
}

void AnnotationOverlayWindow::setAnnotationsView(const std::shared_ptr<AnnotationsView> &view)
{
    annotationsView_ = view;
    view->setOverlayWindow(this);
    contentView()->addSubview(view);
    view->setFrame({{0.0, 0.0}, frame().size});
    makeFirstResponder(view);
}

bool AnnotationOverlayWindow::isMain() const
{
    return displayID_ == displays().mainDisplayID() || static_cast<std::int32_t>(displayID_) < 1;
}

std::optional<platform::Screen> AnnotationOverlayWindow::displayScreen() const
{
    const bool own = annotationManager_ != nullptr && annotationManager_->isSupportMultiScreen();
    if (static_cast<std::int32_t>(displayID_) > 0 && own) {
        return displays().screen(displayID_);
    }
    return annotationManager_ == nullptr ? std::nullopt
                                         : annotationManager_->displayScreenRequested();
}

void AnnotationOverlayWindow::resetDisplay()
{
    platform::guarded(
        [this] {
            const auto screen = displayScreen();
            const platform::Rect target = frameOf(screen);
            setFrame(target, true);
            annotationsView_->setFrame({{0.0, 0.0}, target.size});
            logLine(1,
                    fmt::format("-[AnnotationOverlayWindow resetDisplay] {} [{}][{{{{{}, {}}}, "
                                "{{{}, {}}}}}][{}]",
                                describe(screen), screen ? screen->displayID : 0, target.origin.x,
                                target.origin.y, target.size.width, target.size.height,
                                describe(displays().testHitScreen(frame().center()))));
        },
        [](const std::string &description) { logLine(1, description); });
}

} // namespace orv
