#pragma once

#include "OrvAnnotation/AnnotationController.h"
#include "OrvAnnotation/DesktopPlatform.h"
#include "common/HostSettings.h"
#include "orvane-streamer/ScreenLog.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <string>

namespace orv::apps {

/// This desktop, a controller on it, and whoever listens to what comes back from the library.
///
/// One at a time, since the library's senders are plain functions.
///
/// Owns     platform and controller. Borrows the log.
/// Thread   made, run and destroyed on one thread, the main thread; `end` and `platform` from any;
///          what goes to the controller from one thread at a time.
class StreamerHost : private OrvAnnotationDelegate {
public:
    /// Both are called on the thread that the library sends from, which may be any.
    struct Listener {
        std::function<void(const stCommand_mgs &record)> record;
        std::function<void(std::span<const std::uint8_t> package)> package;
    };

    /// Throws `std::runtime_error` with one sentence when there is no display.
    StreamerHost(const HostSettings &settings, ScreenLog &log);
    ~StreamerHost();
    StreamerHost(const StreamerHost &) = delete;
    StreamerHost &operator=(const StreamerHost &) = delete;

    [[nodiscard]] DesktopPlatform &platform() { return platform_; }
    /// An empty one takes the present one away; no call of that comes after this.
    void setListener(Listener listener);
    /// Hands a record of the client to the library.
    void give(const stCommand_mgs &record) { controller_.CommandClient2App(record); }
    /// For the next session that a record opens.
    void setDeviceName(const std::string &name) { controller_.setDeviceName(name); }
    void setClientDimension(ScreenDimension size) { controller_.setM_clientDimension(size); }
    void setDisplay(std::uint32_t displayID) { controller_.setM_dpID(displayID); }
    /// Closes annotation mode, which saves, and lets `run` return 0.
    void end();
    int run() { return platform_.run(); }

private:
    static int sendCommand(const void *bytes, std::size_t length, std::uint32_t pluginID);
    static int sendData(const void *bytes, std::size_t length, std::uint32_t pluginID);

    void annotation(AnnotationController &controller, std::int32_t level,
                    const std::string &outputLog) override;
    void commandSent(const void *bytes, std::size_t length);
    void dataSent(const void *bytes, std::size_t length);

    ScreenLog &log_;
    std::mutex listenerMutex_;
    Listener listener_;
    DesktopPlatform platform_;
    AnnotationController controller_;
};

} // namespace orv::apps
