#pragma once

#include "OrvAnnotation/Export.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace orv {

/// This desktop as the library's platform: windows, input and clock of the display that the
/// process is connected to.
///
/// Make it first, on the thread that is to be the main thread; it installs itself. Destroy it last.
/// Throws `std::runtime_error` with one sentence when there is no display to connect to.
class ORV_EXPORT DesktopPlatform {
public:
    struct Options {
        /// The desktop-entry ID of the host program.
        std::string bundleIdentifier = "com.orvane.Orvane-Streamer";
        /// Where layouts and pictures lie; empty for the folder that was installed with the
        /// library.
        std::string resourceFolder;
    };

    /// A display's ID, as `AnnotationController::setM_dpID` takes it, its size in points, and where
    /// its pixels lie: device pixels from the top left corner of the X screen.
    struct Display {
        std::uint32_t displayID = 0;
        double width = 0.0;
        double height = 0.0;
        int pixelX = 0;
        int pixelY = 0;
        int pixelWidth = 0;
        int pixelHeight = 0;
    };

    explicit DesktopPlatform(Options options);
    ~DesktopPlatform();
    DesktopPlatform(const DesktopPlatform &) = delete;
    DesktopPlatform &operator=(const DesktopPlatform &) = delete;

    /// Runs the event loop until `quit`; answers the exit code given there.
    int run();
    /// From any thread and from a signal handler's helper thread.
    void quit(int exitCode);
    /// Runs `task` on the main thread, soon; from any thread.
    void post(std::function<void()> task);
    /// Runs `task` on the main thread once, `seconds` from now; from any thread.
    void after(double seconds, std::function<void()> task);
    /// Writes what the display shows now, overlay included, as a PNG file. Main thread. False when
    /// the screen can't be read or the file not be written.
    bool writeScreenshot(const std::string &path);
    /// The main display as it stands now; from any thread. The ID 0 when there is none.
    [[nodiscard]] Display mainDisplay() const;
    /// `changed` is called on the main thread after displays came, went, moved or got another size,
    /// once the library has followed them. Main thread.
    void setDisplaysChanged(std::function<void()> changed);
    /// One line that says how overlays are shown here: blended by a compositor, or shaped.
    [[nodiscard]] std::string describe() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace orv
