#include "orv-replay/ViewFinder.h"

#include "channels/controller/ControllerParts.h"
#include "common/ScriptError.h"
#include "orv-replay/ReplayHost.h"
#include "platform/views/Window.h"

#include <fmt/format.h>

#include <vector>

namespace orv::apps {

namespace {

using platform::View;
using platform::Window;

struct Wanted {
    std::string outlet;
    /// Empty for any.
    std::string enclosing;
};

Wanted wantedView(const std::string &name)
{
    const auto at = name.find('@');
    return at == std::string::npos ? Wanted{name, ""}
                                   : Wanted{name.substr(0, at), name.substr(at + 1)};
}

// The class of the object that a window's description was loaded for.
std::string controllerClass(ReplayHost &host, const Window &window)
{
    const auto *controller = host.controller();
    if (controller == nullptr) {
        return "";
    }
    const auto &manager = host.controller()->parts().state.m_annotationManager;
    if (!manager) {
        return "";
    }
    const SessionOutlets &outlets = manager->outlets();
    const bool owned =
        &window == outlets.toolboxWindow.get() || &window == outlets.overlayWindow.get();
    return owned ? "AnnotationManager" : "";
}

bool isEnclosed(ReplayHost &host, const View &view, const std::string &enclosing)
{
    if (enclosing.empty()) {
        return true;
    }
    for (const View *above = view.superview(); above != nullptr; above = above->superview()) {
        if (above->className() == enclosing) {
            return true;
        }
    }
    return view.window()->className() == enclosing ||
           controllerClass(host, *view.window()) == enclosing;
}

void collect(ReplayHost &host, const View &view, const Wanted &wanted,
             std::vector<const View *> &found)
{
    if (view.isHidden()) {
        return;
    }
    if (view.outlet() == wanted.outlet && isEnclosed(host, view, wanted.enclosing)) {
        found.push_back(&view);
    }
    for (const auto &below : view.subviews()) {
        collect(host, *below, wanted, found);
    }
}

} // namespace

platform::Point middleOfView(ReplayHost &host, const std::string &name)
{
    const Wanted wanted = wantedView(name);
    if (wanted.outlet.empty()) {
        throw ScriptError(fmt::format(R"("click" names no outlet: "{}")", name));
    }
    std::vector<const View *> found;
    for (const auto *surface : host.platform().windowServer().surfaces()) {
        const auto *window = dynamic_cast<const Window *>(&surface->events());
        if (window != nullptr && surface->isVisible() && window->contentView()) {
            collect(host, *window->contentView(), wanted, found);
        }
    }
    if (found.empty()) {
        throw ScriptError(fmt::format(R"("click": no visible view is called "{}")", name));
    }
    if (found.size() > 1) {
        throw ScriptError(fmt::format(
            R"("click": {} visible views are called "{}"; say NAME@CLASS)", found.size(), name));
    }
    const View &view = *found.front();
    return view.window()->convertPointToScreen(view.frameInWindow().center());
}

} // namespace orv::apps
