#pragma once

#include "OrvAnnotation/Records.h"
#include "channels/controller/ControllerState.h"
#include "channels/controller/SessionForwarder.h"
#include "channels/controller/SessionSwitch.h"

#include <cstdint>

namespace orv {

/// Reads a command record in one of the two protocols and calls what it asks for.
///
/// Thread   the host's, under the monitor.
/// Fails    a record for another plug-in, or with an unknown number, does nothing.
class CommandDispatcher {
public:
    CommandDispatcher(ControllerState &state, SessionSwitch &session, SessionForwarder &forwarder)
        : state_(state), session_(session), forwarder_(forwarder)
    {
    }

    void CommandClient2App(const stCommand_mgs &record);

private:
    void ProcessCommand(const stCommand_mgs &record);
    void ProcessCommand2(const stCommand_mgs &record);
    /// `pInfo` is the record's `ext`.
    bool SwitchMode(std::uint32_t mode, const std::uint8_t *pInfo);
    void HandleDrawType(const stCommand_mgs &record);
    void setAutoClear(bool autoClear);
    void openSettings(std::uint32_t which);

    ControllerState &state_;
    SessionSwitch &session_;
    SessionForwarder &forwarder_;
};

} // namespace orv
