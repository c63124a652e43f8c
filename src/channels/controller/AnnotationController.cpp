#include "OrvAnnotation/AnnotationController.h"

#include "channels/controller/ControllerParts.h"
#include "platform/foundation/Exception.h"
#include "platform/foundation/Monitor.h"
#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"

#include <functional>

namespace orv {

namespace {

constexpr std::uint32_t kLogErrors = 4;

// The door between host and library: under the monitor, and nothing gets out of it.
void enter(const std::function<void()> &body) noexcept
{
    platform::guarded(
        [&body] {
            const platform::Monitor::Hold hold;
            body();
        },
        [](const std::string &description) { logLine(1, description); });
}

} // namespace

void ControllerParts::logger(const void *sender, std::int32_t level, const std::string &outputLog)
{
    const void *self = static_cast<OrvFrameworkLoggerDelegate *>(this);
    OrvAnnotationDelegate *host = state.delegate;
    if (sender == self && host != nullptr) {
        host->annotation(controller, level, outputLog);
    }
}

AnnotationController::AnnotationController() : parts_(std::make_shared<ControllerParts>(*this))
{
    const platform::Monitor::Hold hold;
    OrvFrameworkLogger &logger = OrvFrameworkLogger::shared();
    logger.setLevel(OrvAnnotation::className, kLogErrors);
    logger.setStandardOutput(false);
    logger.setDelegate(parts_.get());
    platform::Platform::current().mainThread().setErrorSink(
        [](const std::string &description) { logLine(1, description); });
}

AnnotationController::~AnnotationController()
{
    enter([this] {
        OrvFrameworkLogger::release();
        ControllerState &state = parts_->state;
        state.DeviceName.reset();
        if (const auto manager = std::exchange(state.m_annotationManager, nullptr)) {
            manager->terminate();
        }
    });
}

void AnnotationController::SetClientCommandCHSender(ChannelSender sender)
{
    enter([&] {
        if (sender != nullptr) {
            parts_->state.sendCommandCHData = sender;
            logLine(2, "SetClientCommandCHSender write OK");
        } else {
            logLine(4, "SetClientCommandCHSender write Fail");
        }
    });
}

void AnnotationController::SetClientDataCHSender(ChannelSender sender)
{
    enter([&] {
        if (sender != nullptr) {
            parts_->state.sendDataCHData = sender;
            logLine(2, "SetClientDataCHSender write OK");
        } else {
            logLine(4, "SetClientDataCHSender write Fail");
        }
    });
}

void AnnotationController::SetActiveOpt(std::uint32_t option, std::uint32_t uniqueID)
{
    enter([&] {
        parts_->state.m_dwActOpt = option;
        parts_->state.m_dwActUniqueID = uniqueID;
    });
}

void AnnotationController::setDeviceName(std::string_view name)
{
    enter([&] {
        parts_->state.DeviceName =
            name.empty() ? std::nullopt : std::optional<std::string>(std::string(name));
    });
}

void AnnotationController::setM_dpID(std::uint32_t displayID)
{
    enter([&] { parts_->state.m_dpID = displayID; });
}

void AnnotationController::setM_clientDimension(ScreenDimension dimension)
{
    enter([&] { parts_->state.m_clientDimension = dimension; });
}

void AnnotationController::setIsIgnoreMouseEvent(std::int32_t ignore)
{
    enter([&] { parts_->state.isIgnoreMouseEvent = ignore; });
}

void AnnotationController::setDebug(bool debug)
{
    enter([&] { parts_->state.debug = debug; });
}

void AnnotationController::setDebugDict(const std::map<std::string, std::string> *debugDict)
{
    enter([&] {
        if (debugDict == nullptr) {
            parts_->state.debugDict.reset();
        } else {
            parts_->state.debugDict = *debugDict;
        }
    });
}

void AnnotationController::setDelegate(OrvAnnotationDelegate *delegate)
{
    enter([&] { parts_->state.delegate = delegate; });
}

std::uint32_t AnnotationController::m_dwActUniqueID() const
{
    const platform::Monitor::Hold hold;
    return parts_->state.m_dwActUniqueID;
}

bool AnnotationController::isPresenter() const
{
    const platform::Monitor::Hold hold;
    return parts_->state.isPresenter();
}

bool AnnotationController::isIAP() const
{
    const platform::Monitor::Hold hold;
    return parts_->state.isIAP();
}

bool AnnotationController::isAnnotation2() const
{
    const platform::Monitor::Hold hold;
    return parts_->state.isAnnotation2();
}

void AnnotationController::CommandClient2App(stCommand_mgs record) noexcept
{
    enter([&] { parts_->dispatcher.CommandClient2App(record); });
}

// No receiver for packets of the client is ever made, so that there is nobody to hand one to.
void AnnotationController::DataClient2App(const stDataPacket & /*packet*/) noexcept {}

void AnnotationController::SendCommandToClient(const stCommand_mgs &record)
{
    enter([&] { parts_->records.SendCommandToClient(record); });
}

void AnnotationController::SendDataToClient(const std::vector<std::uint8_t> &data)
{
    enter([&] { parts_->records.DataApp2Client(data); });
}

void AnnotationController::SendFileToClient(const std::string &folder, const std::string &file)
{
    enter([&] { parts_->records.DataFileApp2Client(folder, file); });
}

void AnnotationController::RecoveryDesktop() noexcept
{
    enter([&] { parts_->sessionSwitch.RecoveryDesktop(); });
}

void AnnotationController::Createkillmefile() noexcept
{
    enter([&] { parts_->sessionSwitch.Createkillmefile(); });
}

void AnnotationController::ToolChanged() noexcept
{
    enter([&] { parts_->records.ToolChanged(); });
}

void AnnotationController::SyncAnnotation2Mode(bool /*mode*/, bool /*ack*/) {}
void AnnotationController::SetDataCHProcess(std::int32_t /*process*/) {}

} // namespace orv
