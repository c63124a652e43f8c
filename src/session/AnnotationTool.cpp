#include "session/AnnotationTool.h"

#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"

#include <utility>

namespace orv {

AnnotationTool::AnnotationTool(std::int32_t annotationType, std::string name,
                               std::shared_ptr<platform::Button> button)
    : annotationType_(annotationType), name_(std::move(name)), button_(std::move(button))
{
}

float AnnotationTool::fitSizeWithScreenSize(float size, const platform::View *view) const
{
    const double width = view == nullptr ? 0.0 : view->frame().size.width;
    return static_cast<float>(static_cast<double>(size) * width);
}

std::shared_ptr<Annotation>
AnnotationTool::createAnnotationInView(const std::shared_ptr<platform::View> &view) const
{
    auto annotation = Annotation::annotationOfType(annotationType_);
    annotation->setContainerView(view);
    const bool fitted = fitMode_ && annotationType_ != annotation_type::stamp;
    annotation->setSize(fitted ? fitSizeWithScreenSize(annotationSize_, view.get())
                               : annotationSize_);
    annotation->setColor(annotationColor_);
    annotation->setStyle(annotationStyle_);
    annotation->setDashMode(annotationDash_);
    return annotation;
}

void AnnotationTool::enableTransientSelection(std::function<void()> action)
{
    transientAction_ = std::move(action);
}

void AnnotationTool::selectAndToggleMenu(bool /*toggleMenu*/)
{
    if (transientAction_) {
        platform::Platform::current().mainThread().postAndWait(transientAction_);
    } else {
        isSelected_ = true;
    }
}

} // namespace orv
