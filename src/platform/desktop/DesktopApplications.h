#pragma once

#include "platform/desktop/FrontWindow.h"
#include "platform/desktop/XConnection.h"
#include "platform/ports/Applications.h"

#include <string>

namespace orv::platform {

/// The applications of an X session: who has the front by the window manager, and who runs by the
/// process table.
///
/// X knows windows and processes, not applications: a bundle identifier is the desktop entry that
/// fits a window's class or a process's program best, or the program's name where none fits.
///
/// Thread   any.
class DesktopApplications final : public Applications {
public:
    /// What it is given outlives it.
    DesktopApplications(const XConnection &x, const FrontWindow &front,
                        std::string mainBundleIdentifier);

    /// This process while a window of ours has the keyboard.
    [[nodiscard]] std::int32_t frontProcess() const override;
    void setFrontProcess(std::int32_t pid) override;
    [[nodiscard]] std::string bundleIdentifier(std::int32_t pid) const override;
    [[nodiscard]] bool isRunning(const std::string &bundleIdentifier) const override;
    [[nodiscard]] std::string mainBundleIdentifier() const override
    {
        return mainBundleIdentifier_;
    }
    /// Whether the session's accessibility bus says so; false without a session bus.
    [[nodiscard]] bool isAccessibilityEnabled() const override;
    /// Overlay windows are above all others and take the front from nobody: there is nothing to
    /// bring forward, only requests to send off.
    void activateOwn() override { x_.flush(); }
    /// Overlay windows are above panels and docks as well, and X has no way to ask a panel to hide.
    void setPresentationOptions(std::uint32_t) override {}

private:
    [[nodiscard]] std::string windowClass(std::int32_t pid) const;
    [[nodiscard]] xcb_window_t windowOf(std::int32_t pid) const;

    const XConnection &x_;
    const FrontWindow &front_;
    std::string mainBundleIdentifier_;
};

} // namespace orv::platform
