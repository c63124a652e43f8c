#pragma once

#include "OrvAnnotation/Events.h"
#include "OrvAnnotation/Export.h"
#include "OrvAnnotation/Records.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace orv {

class AnnotationController;
class AnnotationManager;
struct ControllerParts;

/// Receives the library's finished log lines. Both operations may be called from any thread.
class ORV_EXPORT OrvAnnotationDelegate {
public:
    /// `level`: 0 and 1 debug, 2 info, 3 warning, 4 error, 5 fatal.
    virtual void annotation(AnnotationController &controller, std::int32_t level,
                            const std::string &outputLog) = 0;

protected:
    virtual ~OrvAnnotationDelegate() = default;
};

/// A plain function that takes bytes, their length and the active plug-in ID. Its result is not
/// read. It may be called from several threads, the main thread included.
using ChannelSender = int (*)(const void *bytes, std::size_t length, std::uint32_t pluginID);

/// A width and a height in pixels of a screen.
struct ScreenDimension {
    double width = 0.0;
    double height = 0.0;
    friend bool operator==(const ScreenDimension &, const ScreenDimension &) = default;
};

/// The one object that a host makes and talks to: takes the client's records, answers with records.
///
/// Install a platform first (for a desktop: `DesktopPlatform`). Then, in this order: make the
/// controller, give it the senders, the active plug-in and the settings, and feed it records.
/// `RecoveryDesktop` hides the session; destroying the controller ends it.
///
/// Owns     the session. Borrows the delegate, which may be null and must outlive it.
/// Thread   records may come from any one thread at a time; what draws is queued to the main
///          thread. Construct and destroy it on the main thread or under its event loop.
/// Fails    nothing is thrown: what goes wrong inside is logged, and the session goes on.
class ORV_EXPORT AnnotationController {
public:
    /// Logger threshold 4, nothing to the system's log; no session yet.
    AnnotationController();
    ~AnnotationController();
    AnnotationController(const AnnotationController &) = delete;
    AnnotationController &operator=(const AnnotationController &) = delete;

    /// Null is refused: the sender that was set stays.
    void SetClientCommandCHSender(ChannelSender sender);
    void SetClientDataCHSender(ChannelSender sender);
    /// `option` is stored and not used. No record of a real plug-in passes before this.
    void SetActiveOpt(std::uint32_t option, std::uint32_t uniqueID);

    /// Read when the next session is made; an empty name counts as none.
    void setDeviceName(std::string_view name);
    /// The display on which the session opens.
    void setM_dpID(std::uint32_t displayID);
    /// The size of the client's screen.
    void setM_clientDimension(ScreenDimension dimension);
    /// Not 0: the canvases let the mouse of this machine through.
    void setIsIgnoreMouseEvent(std::int32_t ignore);
    void setDebug(bool debug);
    /// Keys "pBorderColorHex" and "pDebugInfoColorHex"; null for none.
    void setDebugDict(const std::map<std::string, std::string> *debugDict);
    void setDelegate(OrvAnnotationDelegate *delegate);

    [[nodiscard]] std::uint32_t m_dwActUniqueID() const;
    [[nodiscard]] bool isPresenter() const;
    [[nodiscard]] bool isIAP() const;
    /// The second generation of the protocol: plug-ins 16 to 18.
    [[nodiscard]] bool isAnnotation2() const;

    /// The door for all commands; a record for another plug-in is dropped.
    void CommandClient2App(stCommand_mgs record) noexcept;
    /// The door for data packets.
    void DataClient2App(const stDataPacket &packet) noexcept;

    void SendCommandToClient(const stCommand_mgs &record);
    void SendDataToClient(const std::vector<std::uint8_t> &data);
    /// Wraps a file and hands it to the data sender.
    void SendFileToClient(const std::string &folder, const std::string &file);

    /// Hides the session, stops a recording and removes the observers. The session stays alive.
    void RecoveryDesktop() noexcept;
    /// Makes the marker file "/tmp/.OrvWhiteboardStatus", when there is a session.
    void Createkillmefile() noexcept;
    /// Tells the client the size and colour of the current tool.
    void ToolChanged() noexcept;

    /// Left empty on purpose.
    void SyncAnnotation2Mode(bool mode, bool ack);
    void SetDataCHProcess(std::int32_t process);

    /// The parts behind this class, for the library's own tests and tools.
    [[nodiscard]] ControllerParts &parts() { return *parts_; }

private:
    std::shared_ptr<ControllerParts> parts_;
};

} // namespace orv
