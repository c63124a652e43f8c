#pragma once

namespace orv::platform {

class Applications;
class Displays;
class Files;
class MainThread;
class Pictures;
class Processes;
class ScreenCapture;
class SystemLog;
class WindowServer;

/// All that the logic needs of an operating system, in one place.
///
/// A program installs one before it makes a controller and takes it away after the controller has
/// gone. Its owner is the program; the library borrows it.
class Platform {
public:
    virtual ~Platform() = default;

    /// The installed one. Throws `Exception` when a program forgot to install one.
    static Platform &current();
    [[nodiscard]] static bool isInstalled();
    /// Null takes the present one away.
    static void install(Platform *platform);

    virtual MainThread &mainThread() = 0;
    virtual Displays &displays() = 0;
    virtual WindowServer &windowServer() = 0;
    virtual Applications &applications() = 0;
    virtual Files &files() = 0;
    virtual Pictures &pictures() = 0;
    virtual Processes &processes() = 0;
    virtual ScreenCapture &screenCapture() = 0;
    virtual SystemLog &systemLog() = 0;
};

} // namespace orv::platform
