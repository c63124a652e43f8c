#include "session/SessionOutlets.h"

#include "platform/foundation/Exception.h"
#include "platform/ports/Files.h"
#include "platform/ports/Platform.h"
#include "platform/views/LayoutReader.h"

#include <array>

namespace orv {

namespace {

using platform::Rect;

constexpr std::uint64_t kLargestLayout = 1U << 20U;

constexpr std::array kButtonOutlets{
    "iconButton",    "moreButton",        "saveSSButton",   "snapshotButton", "galleryButton",
    "penButton",     "highlighterButton", "eraserButton",   "circleButton",   "rectangleButton",
    "textButton",    "lineButton",        "stampButton",    "undoButton",     "redoButton",
    "closeSSButton", "flipchartButton",   "eraseallButton", "minimizerButton"};

std::string readLayout(const std::string &path)
{
    const auto bytes = platform::Platform::current().files().read(path, kLargestLayout);
    if (!bytes) {
        throw platform::Exception("layout " + path + " can't be read");
    }
    return {bytes->begin(), bytes->end()};
}

void bindWindows(platform::LayoutBindings &bindings, SessionOutlets &outlets)
{
    bindings.windowClasses["AnnotationToolboxWindow"] = [](const Rect &frame, std::uint32_t) {
        return std::make_shared<AnnotationToolboxWindow>(frame);
    };
    bindings.windowClasses["AnnotationOverlayWindow"] = [](const Rect &, std::uint32_t styleMask) {
        return std::make_shared<AnnotationOverlayWindow>(styleMask);
    };
    bindings.windowOutlets["toolboxWindow"] = [&outlets](const auto &window) {
        outlets.toolboxWindow = std::dynamic_pointer_cast<AnnotationToolboxWindow>(window);
    };
    bindings.windowOutlets["overlayWindow"] = [&outlets](const auto &window) {
        outlets.overlayWindow = std::dynamic_pointer_cast<AnnotationOverlayWindow>(window);
    };
}

void bindViews(platform::LayoutBindings &bindings, SessionOutlets &outlets,
               std::shared_ptr<AnnotationsView> &canvas)
{
    const auto view = [&bindings](const char *name, std::shared_ptr<platform::View> &place) {
        bindings.viewOutlets[name] = [&place](const auto &found) { place = found; };
    };
    view("toolSelectionView", outlets.toolSelectionView);
    view("standardAnnotationModeToolbarView", outlets.standardAnnotationModeToolbarView);
    view("snapshotEditingModeToolbarView", outlets.snapshotEditingModeToolbarView);
    view("toolMenuView", outlets.toolMenuView);
    view("editToolMenuView", outlets.editToolMenuView);
    view("fixedToolMenuView", outlets.fixedToolMenuView);
    for (const char *name : kButtonOutlets) {
        bindings.viewOutlets[name] = [&outlets, name](const auto &found) {
            outlets.buttons[name] = std::dynamic_pointer_cast<platform::Button>(found);
        };
    }
    bindings.viewClasses["AnnotationsView"] = [](const Rect &frame) {
        return std::make_shared<AnnotationsView>(frame);
    };
    bindings.viewOutlets["annotationsView"] = [&canvas](const auto &found) {
        canvas = std::dynamic_pointer_cast<AnnotationsView>(found);
    };
}

std::function<void(platform::View &)>
forButtons(const std::function<void(platform::Button &)> &action)
{
    return [action](platform::View &sender) {
        if (auto *button = dynamic_cast<platform::Button *>(&sender)) {
            action(*button);
        }
    };
}

void connect(SessionOutlets &outlets, const std::shared_ptr<AnnotationsView> &canvas,
             const std::string &path)
{
    if (!outlets.toolboxWindow || !outlets.overlayWindow || !canvas) {
        throw platform::Exception("layout " + path + ": a window or the canvas has a wrong class");
    }
    outlets.overlayWindow->setAnnotationsView(canvas);
    outlets.toolboxWindow->setToolSelectionView(outlets.toolSelectionView);
    // The button that starts a wipe is the one that the canvas calls the squeegee's.
    outlets.toolboxWindow->setControls(
        {outlets.button("eraserButton"), outlets.button("undoButton"), outlets.button("redoButton"),
         outlets.button("eraseallButton"), outlets.button("saveSSButton"),
         outlets.button("closeSSButton"), outlets.button("snapshotButton"),
         outlets.button("flipchartButton"), outlets.standardAnnotationModeToolbarView,
         outlets.snapshotEditingModeToolbarView});
}

} // namespace

std::shared_ptr<platform::Button> SessionOutlets::button(const std::string &outlet) const
{
    const auto found = buttons.find(outlet);
    return found == buttons.end() ? nullptr : found->second;
}

SessionOutlets
loadSessionOutlets(const std::function<void(platform::Button &)> &selectTool,
                   const std::function<void(platform::Button &)> &selectOthersToolMenu)
{
    const std::string path = platform::joinPath(
        platform::Platform::current().files().resourceFolder(), "layouts/AnnotationManager.json");
    SessionOutlets outlets;
    std::shared_ptr<AnnotationsView> canvas;
    platform::LayoutBindings bindings;
    bindWindows(bindings, outlets);
    bindViews(bindings, outlets, canvas);
    bindings.actions["selectTool"] = forButtons(selectTool);
    bindings.actions["selectOthersToolMenu"] = forButtons(selectOthersToolMenu);
    platform::loadLayout(readLayout(path), path, bindings);
    connect(outlets, canvas, path);
    return outlets;
}

} // namespace orv
