#pragma once

#include "OrvAnnotation/Events.h"
#include "channels/EventNames.h"
#include "platform/foundation/NotificationCenter.h"

#include <fmt/format.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace orv::test {

/// Observes events of one plug-in and keeps them as "name wParam lParam", in order.
class EventLog {
public:
    EventLog(std::uint32_t pluginID, std::initializer_list<const char *> names)
    {
        for (const char *name : names) {
            platform::NotificationCenter::local().addObserver(
                this, eventName(name, pluginID),
                [this, name](std::string_view, const EventDictionary &event) {
                    events.push_back(fmt::format("{} {} {}", name,
                                                 getDictIntByKey(&event, "wParam"),
                                                 getDictIntByKey(&event, "lParam")));
                });
        }
    }
    ~EventLog() { platform::NotificationCenter::local().removeObserver(this); }
    EventLog(const EventLog &) = delete;
    EventLog &operator=(const EventLog &) = delete;

    std::vector<std::string> events;
};

} // namespace orv::test
