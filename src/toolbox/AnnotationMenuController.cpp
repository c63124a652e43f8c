#include "toolbox/AnnotationMenuController.h"

namespace orv {

void AnnotationMenuController::setView(const std::shared_ptr<platform::View> &view)
{
    view_ = view;
    hideMenu();
}

void AnnotationMenuController::toggleMenu()
{
    if (view_ && view_->isHidden()) {
        showMenu();
    } else {
        hideMenu();
    }
}

void AnnotationMenuController::showMenu()
{
    if (view_) {
        view_->setHidden(false);
    }
}

void AnnotationMenuController::hideMenu()
{
    if (view_) {
        view_->setHidden(true);
    }
}

} // namespace orv
