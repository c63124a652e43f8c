#pragma once

#include "OrvAnnotation/AnnotationController.h"
#include "OrvAnnotation/DesktopPlatform.h"
#include "common/HostSettings.h"
#include "orvane-streamer/ScreenLog.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

namespace orv::apps {

/// This desktop, a controller on it, and what comes back from the library as lines of text.
///
/// One at a time, since the library's senders are plain functions.
///
/// Owns     platform and controller. Borrows the log.
/// Thread   made, run and destroyed on one thread, the main thread; `give`, `end` and `platform`
///          from any.
class StreamerHost : private OrvAnnotationDelegate {
public:
    using Listener = std::function<void(const stCommand_mgs &record)>;

    /// Throws `std::runtime_error` with one sentence when there is no display.
    StreamerHost(const HostSettings &settings, ScreenLog &log);
    ~StreamerHost();
    StreamerHost(const StreamerHost &) = delete;
    StreamerHost &operator=(const StreamerHost &) = delete;

    [[nodiscard]] DesktopPlatform &platform() { return platform_; }
    /// Gets each record of the library after it was printed, on the thread that it comes from.
    void setListener(Listener listener);
    /// Hands a record of the client to the library. One thread at a time.
    void give(const stCommand_mgs &record) { controller_.CommandClient2App(record); }
    /// Closes annotation mode, which saves, and lets `run` return 0.
    void end();
    int run() { return platform_.run(); }

private:
    static int sendCommand(const void *bytes, std::size_t length, std::uint32_t pluginID);
    static int sendData(const void *bytes, std::size_t length, std::uint32_t pluginID);

    void annotation(AnnotationController &controller, std::int32_t level,
                    const std::string &outputLog) override;
    void commandSent(const void *bytes, std::size_t length);

    ScreenLog &log_;
    std::mutex listenerMutex_;
    Listener listener_;
    DesktopPlatform platform_;
    AnnotationController controller_;
};

} // namespace orv::apps
