#pragma once

#include <QGuiApplication>

#include <array>
#include <optional>
#include <string>

namespace orv::platform {

/// Makes this process a GUI application on X11, with the toolkit set up for overlays: no scaling of
/// its own, every motion of the pointer, no end with the last window.
///
/// Thread   the thread that makes it is the main thread.
class GuiProcess {
public:
    /// Throws `std::runtime_error` with one sentence when there is no usable display.
    explicit GuiProcess(const std::string &bundleIdentifier);
    GuiProcess(const GuiProcess &) = delete;
    GuiProcess &operator=(const GuiProcess &) = delete;

private:
    /// The application keeps references to its arguments.
    std::string name_;
    std::array<char *, 2> arguments_{};
    int count_ = 1;
    std::optional<QGuiApplication> application_;
};

} // namespace orv::platform
