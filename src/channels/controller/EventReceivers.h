#pragma once

#include "OrvAnnotation/Events.h"
#include "channels/controller/ControllerState.h"
#include "channels/controller/OutgoingRecords.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace orv {

/// Observes the library's events and turns each into a record for the client.
///
/// Thread   a receiver runs on the thread that posts; some go on to the main thread.
/// Life     what is queued for the main thread is dropped when this object has gone.
class EventReceivers : public std::enable_shared_from_this<EventReceivers> {
public:
    EventReceivers(ControllerState &state, OutgoingRecords &records)
        : state_(state), records_(records)
    {
    }
    ~EventReceivers();
    EventReceivers(const EventReceivers &) = delete;
    EventReceivers &operator=(const EventReceivers &) = delete;

    /// Under the plug-in ID of this moment: the set of its generation.
    void RegisterForNotifications();
    /// All names of both generations.
    void UnregisterForNotifications();
    /// The event is from this process and for the plug-in of the session; false without a session.
    [[nodiscard]] bool checkActUniqueID(std::uint32_t uniqueID, std::int32_t pid) const;

private:
    using Receiver = std::function<void(const EventDictionary &)>;

    void observe(const char *shortName, Receiver receiver);
    void registerGeneration();
    void registerSimpleEvents();
    void registerInputEvents();
    /// Wraps an operation so that it runs on the main thread with a copy of the event.
    [[nodiscard]] Receiver onMain(Receiver receiver);

    ControllerState &state_;
    OutgoingRecords &records_;
};

} // namespace orv
