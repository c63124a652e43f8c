#include "canvas/AnnotationsView.h"

#include "canvas/AnnotationOverlayWindow.h"
#include "platform/foundation/TextConversion.h"

#include <fmt/format.h>

// How a canvas looks: the list from its first to its last annotation, what debug use adds, and the
// backdrop, which goes in behind all of it.

namespace orv {

namespace {

using platform::Rect;

constexpr double kBorderRadius = 5.0;
constexpr double kBorderWidth = 3.0;
constexpr double kBorderInset = 2.0;
constexpr double kBorderShrink = 3.0;
constexpr double kDebugTextWidth = 400.0;
constexpr double kDebugTextHeight = 50.0;

} // namespace

void AnnotationsView::drawRect(platform::GraphicsContext &context, const Rect &dirty)
{
    if (overlayWindow_ == nullptr || !overlayWindow_->isVisible()) {
        return;
    }
    if (const auto list = document_.annotations(annotationModeKey_)) {
        context.drawList(*list);
    }
    if (isBroder()) {
        drawBorder(context, dirty);
        drawDebugInfo(context, dirty);
    }
    // Behind and last: an eraser's stroke punches through the annotations before it and shows the
    // backdrop, which itself is never erased.
    if (const platform::ImagePtr &pattern = overlayWindow_->backgroundPattern()) {
        context.fillPattern(bounds(), pattern, platform::CompositingOperation::destinationOver);
    } else {
        context.setFillColor(overlayWindow_->backgroundColor());
        context.fillRect(bounds(), platform::CompositingOperation::destinationOver);
    }
}

bool AnnotationsView::isBroder() const
{
    const CanvasSession *session = annotationManager();
    return session != nullptr && session->debug();
}

void AnnotationsView::drawBorder(platform::GraphicsContext &context, const Rect &rect) const
{
    const OrvAnnotationDebugSetting *setting = annotationManager()->debugSetting();
    if (setting == nullptr || bounds().size.height > rect.size.height) {
        return;
    }
    platform::Path border;
    border.addRoundedRect(Rect::make(rect.origin.x + kBorderInset, rect.origin.y + kBorderInset,
                                     rect.size.width - kBorderShrink,
                                     rect.size.height - kBorderShrink),
                          kBorderRadius, kBorderRadius);
    context.saveState();
    context.setBlendMode(platform::BlendMode::normal);
    context.setLineDash(0.0, {});
    context.setStrokeColor(setting->pBorderColor());
    context.setLineWidth(kBorderWidth);
    context.strokePath(border);
    context.restoreState();
}

void AnnotationsView::drawDebugInfo(platform::GraphicsContext &context, const Rect &rect) const
{
    CanvasSession *session = annotationManager();
    const OrvAnnotationDebugSetting *setting = session->debugSetting();
    if (setting == nullptr) {
        return;
    }
    const auto screen = overlayWindow_->displayScreen();
    const std::string frameText =
        screen ? fmt::format("{{{{{}, {}}}, {{{}, {}}}}}", screen->frame.origin.x,
                             screen->frame.origin.y, screen->frame.size.width,
                             screen->frame.size.height)
               : std::string();
    const std::string text =
        fmt::format("Annotation Manager : {} \nDisplayID : {} {}\n{}", session->description(),
                    static_cast<std::int32_t>(overlayWindow_->displayID()),
                    screen ? screen->description() : "(null)", frameText);
    const Rect place =
        Rect::make(setting->offset(), rect.size.height - kDebugTextHeight - setting->offset(),
                   kDebugTextWidth, kDebugTextHeight);
    context.saveState();
    context.setFillColor(setting->pDebugInfoColor());
    context.drawText(platform::utf16FromUtf8(text), place, platform::Font{},
                     platform::TextAlignment::natural);
    context.restoreState();
}

} // namespace orv
