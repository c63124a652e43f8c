#pragma once

#include <functional>
#include <memory>
#include <string>

namespace orv {

/// This desktop as the library's platform: windows, input and clock of the display that the
/// process is connected to.
///
/// Make it first, on the thread that is to be the main thread; it installs itself. Destroy it last.
/// Throws `std::runtime_error` with one sentence when there is no display to connect to.
class DesktopPlatform {
public:
    struct Options {
        /// The desktop-entry ID of the host program.
        std::string bundleIdentifier = "com.orvane.Orvane-Streamer";
        /// Where layouts and pictures lie; empty for the folder that was installed with the
        /// library.
        std::string resourceFolder;
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
    /// One line that says how overlays are shown here: blended by a compositor, or shaped.
    [[nodiscard]] std::string describe() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace orv
