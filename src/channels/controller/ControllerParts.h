#pragma once

#include "channels/controller/CommandDispatcher.h"
#include "channels/controller/ControllerState.h"
#include "channels/controller/EventReceivers.h"
#include "channels/controller/OutgoingRecords.h"
#include "channels/controller/SessionForwarder.h"
#include "channels/controller/SessionSwitch.h"

#include <memory>

namespace orv {

/// What an `AnnotationController` is made of.
struct ControllerParts : OrvFrameworkLoggerDelegate {
    explicit ControllerParts(AnnotationController &owner) : controller(owner) {}
    virtual ~ControllerParts() = default;

    /// Passes a line on to the host, when it comes through this very delegate.
    void logger(const void *sender, std::int32_t level, const std::string &outputLog) override;

    AnnotationController &controller;
    ControllerState state;
    OutgoingRecords records{state};
    std::shared_ptr<EventReceivers> receivers = std::make_shared<EventReceivers>(state, records);
    SessionForwarder forwarder{state};
    SessionSwitch sessionSwitch{state, *receivers};
    CommandDispatcher dispatcher{state, sessionSwitch, forwarder};
};

} // namespace orv
