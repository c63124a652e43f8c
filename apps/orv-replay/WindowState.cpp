#include "orv-replay/WindowState.h"

#include "platform/views/Button.h"
#include "platform/views/ImageView.h"
#include "platform/views/Window.h"

namespace orv::apps {

namespace {

OutputJson rectState(const platform::Rect &rect)
{
    return OutputJson::array({rect.origin.x, rect.origin.y, rect.size.width, rect.size.height});
}

/// The name of the picture that a button or an image view shows, or null.
OutputJson imageName(const platform::View &view)
{
    platform::PictureResourcePtr image;
    if (const auto *button = dynamic_cast<const platform::Button *>(&view)) {
        image = button->image();
    } else if (const auto *imageView = dynamic_cast<const platform::ImageView *>(&view)) {
        image = imageView->image();
    }
    return image ? OutputJson(image->name()) : OutputJson(nullptr);
}

OutputJson viewState(const platform::View &view)
{
    const auto *button = dynamic_cast<const platform::Button *>(&view);
    OutputJson below = OutputJson::array();
    for (const auto &subview : view.subviews()) {
        below.push_back(viewState(*subview));
    }
    const std::string &outlet = view.outlet();
    return {{"class", view.className()},
            {"outlet", outlet.empty() ? OutputJson(nullptr) : OutputJson(outlet)},
            {"frame", rectState(view.frame())},
            {"frameInWindow", rectState(view.frameInWindow())},
            {"hidden", view.isHidden()},
            {"alpha", view.alpha()},
            {"rotation", view.frameRotation()},
            {"title", button == nullptr ? OutputJson(nullptr) : OutputJson(button->title())},
            {"image", imageName(view)},
            {"enabled", button == nullptr ? OutputJson(nullptr) : OutputJson(button->isEnabled())},
            {"subviews", std::move(below)}};
}

OutputJson windowState(const platform::VirtualWindowSurface &surface)
{
    OutputJson views = OutputJson::array();
    const auto *window = dynamic_cast<const platform::Window *>(&surface.events());
    if (window != nullptr && window->contentView()) {
        views.push_back(viewState(*window->contentView()));
    }
    return {{"title", surface.title()},
            {"class", surface.events().className()},
            {"windowNumber", surface.windowNumber()},
            {"level", surface.level()},
            {"frame", rectState(surface.frame())},
            {"isVisible", surface.isVisible()},
            {"isKey", surface.isKey()},
            {"ignoresMouseEvents", surface.ignoresMouseEvents()},
            {"styleMask", surface.styleMask()},
            {"alpha", surface.alpha()},
            {"views", std::move(views)}};
}

} // namespace

OutputJson windowsState(const platform::VirtualWindowServer &windows)
{
    OutputJson state = OutputJson::array();
    for (const auto *surface : windows.surfaces()) {
        state.push_back(windowState(*surface));
    }
    return state;
}

} // namespace orv::apps
