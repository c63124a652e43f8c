#include "channels/controller/EventReceivers.h"

#include "channels/EventNames.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"

#include <array>
#include <utility>

namespace orv {

namespace {

std::uint32_t wParam(const EventDictionary &event)
{
    return static_cast<std::uint32_t>(getDictIntByKey(&event, "wParam"));
}

std::uint32_t lParam(const EventDictionary &event)
{
    return static_cast<std::uint32_t>(getDictIntByKey(&event, "lParam"));
}

constexpr std::array kAllNames{"switchModeEvent",   "textModeEvent",    "toolboxEvent",
                               "helpRequested",     "snapshotTaken",    "videoRecording",
                               "toolChanged",       "shadeModeEvent",   "spotlightEvent",
                               "pagebtnStatus",     "mouseEventHandle", "keyboardEventHandle",
                               "shareFileTransfer", "undoreoEvent",     "sendCommandHandle"};

// Numbers of the records that the special events become.
constexpr std::uint32_t kScreenCover = 8;
constexpr std::uint32_t kSpotlight = 9;
constexpr std::uint32_t kPageButtons1 = 10;
constexpr std::uint32_t kPageButtons2 = 16;
constexpr std::uint32_t kMouse1 = 4;
constexpr std::uint32_t kMouse2 = 0xEFFD;
constexpr std::uint32_t kKeyboard1 = 7;
constexpr std::uint32_t kKeyboard2 = 0xEFFE;

} // namespace

EventReceivers::~EventReceivers()
{
    platform::NotificationCenter::local().removeObserver(this);
}

bool EventReceivers::checkActUniqueID(std::uint32_t uniqueID, std::int32_t pid) const
{
    const auto &manager = state_.m_annotationManager;
    return manager && manager->appActPid() == pid && manager->appActUniqueID() == uniqueID;
}

void EventReceivers::observe(const char *shortName, Receiver receiver)
{
    platform::NotificationCenter::local().addObserver(
        this, eventName(shortName, state_.m_dwActUniqueID),
        [this, receive = std::move(receiver)](std::string_view, const EventDictionary &event) {
            const auto uniqueID =
                static_cast<std::uint32_t>(getDictIntByKey(&event, "pluginIDParam"));
            if (checkActUniqueID(uniqueID, getDictIntByKey(&event, "pidParam"))) {
                receive(event);
            }
        });
}

EventReceivers::Receiver EventReceivers::onMain(Receiver receiver)
{
    return [self = weak_from_this(), receive = std::move(receiver)](const EventDictionary &event) {
        platform::Platform::current().mainThread().post([self, receive, event] {
            if (const auto keep = self.lock()) {
                receive(event);
            }
        });
    };
}

void EventReceivers::RegisterForNotifications()
{
    registerGeneration();
    registerSimpleEvents();
    registerInputEvents();
}

void EventReceivers::registerGeneration()
{
    if (!state_.isAnnotation2()) {
        observe("toolboxEvent", [this](const EventDictionary &event) {
            records_.SyncAnnotationMode(wParam(event) != 0);
        });
        return;
    }
    observe("switchModeEvent",
            onMain([this](const EventDictionary &event) { records_.SyncAnnotation2Mode(event); }));
    observe("undoreoEvent", [this](const EventDictionary &event) {
        records_.SyncAnnotation2UnDo(wParam(event), lParam(event));
    });
}

void EventReceivers::registerSimpleEvents()
{
    observe("textModeEvent", onMain([this](const EventDictionary &event) {
                if (wParam(event) != 0) {
                    records_.ShowKeyboard();
                } else {
                    records_.HideKeyboard();
                }
            }));
    observe("helpRequested", onMain([this](const EventDictionary &) { records_.HelpRequested(); }));
    observe("snapshotTaken",
            onMain([this](const EventDictionary &) { records_.SnapshotSuccess(); }));
    observe("videoRecording", [this](const EventDictionary &event) {
        const EventDictionary repacked{{"wparam", getDictIntByKey(&event, "wParam")},
                                       {"lparam", getDictIntByKey(&event, "lParam")}};
        onMain([this](const EventDictionary &ack) { records_.VideoRecordingAck(ack); })(repacked);
    });
    // Observed, so that a host may post it, and without effect.
    observe("toolChanged", [](const EventDictionary &) {});
}

void EventReceivers::registerInputEvents()
{
    observe("shadeModeEvent", [this](const EventDictionary &event) {
        records_.SwitchSpecialMode(kScreenCover, wParam(event) != 0);
    });
    observe("spotlightEvent", [this](const EventDictionary &event) {
        records_.SwitchSpecialMode(kSpotlight, wParam(event) != 0);
    });
    observe("pagebtnStatus", [this](const EventDictionary &event) {
        records_.SwitchSpecialMode(state_.isAnnotation2() ? kPageButtons2 : kPageButtons1,
                                   wParam(event) != 0);
    });
    observe("mouseEventHandle", [this](const EventDictionary &event) {
        records_.HandleCommandEvent(state_.isAnnotation2() ? kMouse2 : kMouse1,
                                    wParam(event) != 0 ? 1 : 0);
    });
    observe("keyboardEventHandle", [this](const EventDictionary &event) {
        records_.HandleCommandEvent(state_.isAnnotation2() ? kKeyboard2 : kKeyboard1,
                                    wParam(event) != 0 ? 1 : 0);
    });
    // Observed; the transfer of a shared file to the client has nothing to wrap it yet.
    observe("shareFileTransfer", [](const EventDictionary &) {});
    observe("sendCommandHandle", [this](const EventDictionary &event) {
        records_.HandleCommandEvent(wParam(event), lParam(event));
    });
}

void EventReceivers::UnregisterForNotifications()
{
    for (const char *name : kAllNames) {
        platform::NotificationCenter::local().removeObserver(
            this, eventName(name, state_.m_dwActUniqueID));
    }
}

} // namespace orv
