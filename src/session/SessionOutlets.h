#pragma once

#include "canvas/AnnotationOverlayWindow.h"
#include "platform/views/Button.h"
#include "toolbox/AnnotationToolboxWindow.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace orv {

/// What the interface description "AnnotationManager" gives the session.
struct SessionOutlets {
    std::shared_ptr<AnnotationToolboxWindow> toolboxWindow;
    std::shared_ptr<AnnotationOverlayWindow> overlayWindow;
    std::shared_ptr<platform::View> toolSelectionView;
    std::shared_ptr<platform::View> standardAnnotationModeToolbarView;
    std::shared_ptr<platform::View> snapshotEditingModeToolbarView;
    std::shared_ptr<platform::View> toolMenuView;
    std::shared_ptr<platform::View> editToolMenuView;
    std::shared_ptr<platform::View> fixedToolMenuView;
    /// By outlet name, such as "penButton".
    std::map<std::string, std::shared_ptr<platform::Button>> buttons;

    /// Null for an unknown name.
    [[nodiscard]] std::shared_ptr<platform::Button> button(const std::string &outlet) const;
};

/// Loads the description from the resource folder. `selectTool` is what a press on a tool's button
/// does, `selectOthersToolMenu` what one on a button of the fixed menu does. Throws
/// `platform::Exception` that names the file when it is missing or does not fit.
[[nodiscard]] SessionOutlets
loadSessionOutlets(const std::function<void(platform::Button &)> &selectTool,
                   const std::function<void(platform::Button &)> &selectOthersToolMenu);

} // namespace orv
