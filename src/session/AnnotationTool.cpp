#include "session/AnnotationTool.h"

#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"
#include "toolbox/AnnotationMenuUtilities.h"

#include <utility>

namespace orv {

namespace {

// The pictures of one style stand together, one for each colour of the tables.
constexpr std::int32_t kColors = 5;

platform::PictureResourcePtr imageAt(const std::vector<platform::PictureResourcePtr> &images,
                                     std::int32_t index)
{
    return index >= 0 && index < std::ssize(images) ? images[static_cast<std::size_t>(index)]
                                                    : nullptr;
}

const std::vector<std::string> &orElse(const std::vector<std::string> &names,
                                       const std::vector<std::string> &others)
{
    return names.empty() ? others : names;
}

} // namespace

AnnotationTool::AnnotationTool(std::int32_t annotationType, std::string name,
                               std::shared_ptr<platform::Button> button,
                               const ToolPictures &pictures)
    : annotationType_(annotationType), name_(std::move(name)), button_(std::move(button)),
      offImages_(AnnotationMenuUtilities::imagesWithNames(pictures.off)),
      offAltImages_(
          AnnotationMenuUtilities::imagesWithNames(orElse(pictures.offAlt, pictures.off))),
      onImages_(AnnotationMenuUtilities::imagesWithNames(orElse(pictures.on, pictures.off))),
      onAltImages_(AnnotationMenuUtilities::imagesWithNames(orElse(pictures.onAlt, pictures.off)))
{
    refreshButtons();
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

void AnnotationTool::deselect()
{
    isSelected_ = false;
    refreshVisualElements();
}

void AnnotationTool::selectAndToggleMenu(bool toggleMenu)
{
    if (!transient_) {
        isSelected_ = true;
        refreshVisualElements();
    } else if (transientAction_) {
        platform::Platform::current().mainThread().postAndWait(transientAction_);
    }
    if (toggleMenu && menu_) {
        menu_->toggleMenu();
    }
}

void AnnotationTool::enableSelectedImageMirroringToButton(std::shared_ptr<platform::Button> button)
{
    mirrorButton_ = std::move(button);
}

void AnnotationTool::enableCursorWithImages(const std::vector<std::string> &names,
                                            platform::Point hotSpot,
                                            const std::shared_ptr<AnnotationsView> &view)
{
    annotationsView_ = view;
    cursors_.clear();
    for (const auto &image : AnnotationMenuUtilities::imagesWithNames(names)) {
        cursors_.push_back({image, hotSpot});
    }
    refreshVisualElements();
}

void AnnotationTool::enableTransientSelection(std::function<void()> action)
{
    transient_ = true;
    transientAction_ = std::move(action);
}

void AnnotationTool::setMenuController(std::unique_ptr<AnnotationMenuController> menu)
{
    menu_ = std::move(menu);
    if (menu_) {
        menu_->setTool(this);
    }
}

void AnnotationTool::hideMenu()
{
    if (menu_) {
        menu_->hideMenu();
    }
}

platform::Rect AnnotationTool::getToolMenuRect() const
{
    return menu_ && menu_->view() ? menu_->view()->frame() : platform::Rect{};
}

bool AnnotationTool::getToolMenuIsHidden() const
{
    return !menu_ || !menu_->view() || menu_->view()->isHidden();
}

void AnnotationTool::selectToolNoifty()
{
    if (const auto view = annotationsView_.lock()) {
        view->noiftyToolChenage();
    }
}

void AnnotationTool::selectOnCanvas()
{
    if (const auto view = annotationsView_.lock()) {
        view->setCurrentTool(shared_from_this());
    }
}

void AnnotationTool::selectPrimaryTraitAtIndex(std::int32_t index)
{
    primaryTraitIndex_ = index;
    refreshVisualElements();
}

void AnnotationTool::selectTertiaryTraitAtIndex(std::int32_t index)
{
    tertiaryTraitIndex_ = index;
    refreshVisualElements();
}

void AnnotationTool::refreshButtons()
{
    const std::int32_t index = tertiaryTraitIndex_ * kColors + primaryTraitIndex_;
    if (button_) {
        button_->setImage(imageAt(isSelected_ ? onImages_ : offImages_, index));
        button_->setAlternateImage(imageAt(isSelected_ ? onAltImages_ : offAltImages_, index));
    }
    // The mirror is plain by design: pressed, it looks the same.
    if (isSelected_ && mirrorButton_) {
        mirrorButton_->setImage(imageAt(onImages_, index));
        mirrorButton_->setAlternateImage(imageAt(onImages_, index));
    }
}

void AnnotationTool::refreshVisualElements()
{
    refreshButtons();
    if (cursors_.empty()) {
        return;
    }
    if (primaryTraitIndex_ >= 0 && primaryTraitIndex_ < std::ssize(cursors_)) {
        cursor_ = cursors_[static_cast<std::size_t>(primaryTraitIndex_)];
    }
    const auto view = annotationsView_.lock();
    if (isSelected_ && view) {
        view->refreshCursor();
    }
}

} // namespace orv
