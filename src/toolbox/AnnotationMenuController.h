#pragma once

#include "platform/views/View.h"
#include "toolbox/MenuTool.h"

#include <cstdint>
#include <memory>

namespace orv {

/// The menu of one tool: what can be chosen for it, by index, and the panel that offers it.
///
/// Borrows  its tool, which owns it. Shares its panel with the toolbox's view tree.
/// Thread   main thread, or the host's under the monitor.
/// Fails    an index outside a list changes nothing; without a tool or a panel nothing happens.
class AnnotationMenuController {
public:
    virtual ~AnnotationMenuController() = default;

    void setTool(MenuTool *tool) { tool_ = tool; }
    [[nodiscard]] MenuTool *tool() const { return tool_; }
    /// Hidden at first; null for a menu without a panel.
    void setView(const std::shared_ptr<platform::View> &view);
    [[nodiscard]] const std::shared_ptr<platform::View> &view() const { return view_; }

    void toggleMenu();
    void showMenu();
    void hideMenu();

    /// What the client, saved settings or the defaults choose. A menu without such a list ignores
    /// it.
    virtual void selectColorAtIndex(std::int32_t /*index*/) {}
    virtual void selectSizeAtIndex(std::int32_t /*index*/) {}
    virtual void selectStyleAtIndex(std::int32_t /*index*/) {}

private:
    MenuTool *tool_ = nullptr;
    std::shared_ptr<platform::View> view_;
};

} // namespace orv
