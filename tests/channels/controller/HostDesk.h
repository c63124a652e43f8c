#pragma once

#include "OrvAnnotation/AnnotationController.h"
#include "canvas/PathAnnotation.h"
#include "channels/AppConstants.h"
#include "channels/controller/ControllerParts.h"
#include "support/VirtualDesk.h"

#include <fmt/format.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace orv::test {

/// What the senders and the log delegate of a host have been given.
struct HostMailbox {
    std::mutex mutex;
    std::vector<stCommand_mgs> records;
    std::vector<std::vector<std::uint8_t>> data;
    std::vector<std::uint32_t> pluginIDs;
};

inline HostMailbox &mailbox()
{
    static HostMailbox box;
    return box;
}

inline int takeRecord(const void *bytes, std::size_t length, std::uint32_t pluginID)
{
    const std::lock_guard lock(mailbox().mutex);
    stCommand_mgs record;
    EXPECT_EQ(length, sizeof record);
    std::memcpy(&record, bytes, sizeof record);
    mailbox().records.push_back(record);
    mailbox().pluginIDs.push_back(pluginID);
    return 0;
}

inline int takeData(const void *bytes, std::size_t length, std::uint32_t /*pluginID*/)
{
    const std::lock_guard lock(mailbox().mutex);
    const auto *first = static_cast<const std::uint8_t *>(bytes);
    mailbox().data.emplace_back(first, first + length);
    return 0;
}

/// A host with a controller on a virtual desk.
class HostDesk : public VirtualDesk, public OrvAnnotationDelegate {
protected:
    HostDesk()
    {
        mailbox().records.clear();
        mailbox().data.clear();
        mailbox().pluginIDs.clear();
        controller = std::make_unique<AnnotationController>();
        controller->SetClientCommandCHSender(takeRecord);
        controller->SetClientDataCHSender(takeData);
        controller->setDelegate(this);
        controller->setM_dpID(1);
        controller->setM_clientDimension({1440.0, 900.0});
    }
    ~HostDesk() override
    {
        controller.reset();
        AppConstants::destroy();
        OrvFrameworkLogger::release();
    }
    void annotation(AnnotationController &sender, std::int32_t level,
                    const std::string &outputLog) override
    {
        const std::lock_guard lock(mailbox().mutex);
        senders.push_back(&sender);
        log.push_back(fmt::format("{} {}", level, outputLog));
    }

    void usePlugin(std::uint32_t id)
    {
        plugin = id;
        controller->SetActiveOpt(0, id);
    }
    void useDebug()
    {
        controller->setDebug(true);
        OrvFrameworkLogger::shared().setLevel(OrvAnnotation::className, 0);
    }
    void send(std::uint32_t wparam, std::uint32_t lparam = 0,
              const std::vector<std::uint8_t> &ext = {})
    {
        stCommand_mgs record;
        record.pluginID = static_cast<std::uint16_t>(plugin);
        record.wparam = wparam;
        record.lparam = lparam;
        std::copy(ext.begin(), ext.end(), record.ext.begin());
        controller->CommandClient2App(record);
        drain();
    }
    void mouse(std::uint32_t event, std::uint32_t x, std::uint32_t y)
    {
        send(0xEFFD, event,
             {0, 0, static_cast<std::uint8_t>(x >> 8U), static_cast<std::uint8_t>(x), 0, 0,
              static_cast<std::uint8_t>(y >> 8U), static_cast<std::uint8_t>(y)});
    }
    /// Opens the session in the second generation.
    void open(std::uint32_t id = 17)
    {
        usePlugin(id);
        send(0, 0, {1});
    }
    void close() { send(0, 0, {0}); }

    [[nodiscard]] ControllerState &state() { return controller->parts().state; }
    [[nodiscard]] std::shared_ptr<AnnotationManager> manager()
    {
        return state().m_annotationManager;
    }
    [[nodiscard]] std::size_t annotationCount()
    {
        const auto view = manager()->annotationsView();
        return view->document().annotationCount(view->annotationModeKey());
    }
    /// "wparam lparam e0 e1 e2 e3" of each record so far, and forgets them.
    std::vector<std::string> takeRecords()
    {
        std::vector<std::string> lines;
        for (const stCommand_mgs &r : mailbox().records) {
            EXPECT_EQ(r.pluginID, plugin);
            EXPECT_EQ(r.headerWord2, 1);
            lines.push_back(fmt::format("{:x} {} {} {} {} {}", r.wparam, r.lparam, r.ext[0],
                                        r.ext[1], r.ext[2], r.ext[3]));
        }
        mailbox().records.clear();
        return lines;
    }
    /// The log without its lead, and forgets it.
    std::vector<std::string> takeLog() { return std::exchange(log, {}); }

    std::uint32_t plugin = 0;
    std::vector<std::string> log;
    std::vector<AnnotationController *> senders;
    std::unique_ptr<AnnotationController> controller;
};

} // namespace orv::test
