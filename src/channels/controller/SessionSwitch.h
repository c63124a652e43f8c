#pragma once

#include "channels/controller/ControllerState.h"
#include "channels/controller/EventReceivers.h"

namespace orv {

/// Makes, shows and hides the session.
///
/// Thread   the host's, under the monitor; the session reaches the main thread where it has to.
class SessionSwitch {
public:
    SessionSwitch(ControllerState &state, EventReceivers &receivers)
        : state_(state), receivers_(receivers)
    {
    }

    void ToggleAnnotationMode();
    /// True makes the session when there is none for the active plug-in, and opens it. False
    /// closes it and stops listening.
    void AnnotationMode(bool show);
    void RecoveryDesktop();
    void Createkillmefile();

private:
    void subscribe();
    void makeSession();
    void setAnnotationDispID();
    void applyDebugSettings();

    ControllerState &state_;
    EventReceivers &receivers_;
};

} // namespace orv
