#pragma once

#include "OrvAnnotation/AnnotationController.h"
#include "common/HostSettings.h"
#include "orv-replay/OutputLines.h"
#include "platform/virtual/VirtualPlatform.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orv::apps {

/// Where a run reads and writes.
struct ReplayFolders {
    /// Absolute, as is the other.
    std::string home;
    std::string out;
};

/// A host on a virtual desk: installs the platform, makes the controller, prints what comes back.
///
/// One at a time, since the library's senders are plain functions.
///
/// Owns     platform and controller. Borrows the output.
/// Thread   one, which is the main thread of the platform.
class ReplayHost : private OrvAnnotationDelegate {
public:
    /// Throws `ScriptError` or `platform::Exception` when the desk cannot be as the settings want.
    ReplayHost(const HostSettings &settings, ReplayFolders folders, bool quietLog,
               OutputLines &output);
    ~ReplayHost();
    ReplayHost(const ReplayHost &) = delete;
    ReplayHost &operator=(const ReplayHost &) = delete;

    [[nodiscard]] platform::VirtualPlatform &platform() { return platform_; }
    /// Null after `release`.
    [[nodiscard]] AnnotationController *controller() { return controller_.get(); }
    [[nodiscard]] const ReplayFolders &folders() const { return folders_; }
    /// The plug-in that the settings name.
    [[nodiscard]] std::uint16_t plugin() const { return plugin_; }

    void releaseController() { controller_.reset(); }
    /// Why what the library handed over could not be kept; empty while nothing went wrong.
    [[nodiscard]] const std::string &failure() const { return failure_; }

private:
    static int sendCommand(const void *bytes, std::size_t length, std::uint32_t pluginID);
    static int sendData(const void *bytes, std::size_t length, std::uint32_t pluginID);

    void annotation(AnnotationController &controller, std::int32_t level,
                    const std::string &outputLog) override;
    void writeData(const void *bytes, std::size_t length);
    void connectHooks();

    ReplayFolders folders_;
    OutputLines &output_;
    bool quietLog_;
    std::uint16_t plugin_;
    int dataFiles_ = 0;
    std::string failure_;
    platform::VirtualPlatform platform_;
    std::unique_ptr<AnnotationController> controller_;
};

/// The library's displays from a script's.
[[nodiscard]] std::vector<platform::Screen> screens(const std::vector<ScriptDisplay> &displays);

} // namespace orv::apps
