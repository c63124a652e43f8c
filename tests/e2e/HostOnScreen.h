#pragma once

#include "OrvAnnotation/AnnotationController.h"
#include "channels/AppConstants.h"
#include "channels/controller/ControllerParts.h"
#include "platform/desktop/display/Desk.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace orv::test {

using platform::test::pumpUntil;

constexpr std::uint32_t kGreen = 0x00FF00;
constexpr std::uint32_t kRed = 0xFF0000;
constexpr std::uint32_t kPlugin = 17;
constexpr std::uint32_t kFirstGeneration = 12;

inline std::mutex &recordMutex()
{
    static std::mutex mutex;
    return mutex;
}

inline std::vector<stCommand_mgs> &records()
{
    static std::vector<stCommand_mgs> list;
    return list;
}

inline int takeRecord(const void *bytes, std::size_t /*length*/, std::uint32_t /*pluginID*/)
{
    const std::lock_guard lock(recordMutex());
    stCommand_mgs record;
    std::memcpy(&record, bytes, sizeof record);
    records().push_back(record);
    return 0;
}

/// A record of this number went out.
inline bool hasRecord(std::uint32_t wparam)
{
    const std::lock_guard lock(recordMutex());
    for (const stCommand_mgs &record : records()) {
        if (record.wparam == wparam) {
            return true;
        }
    }
    return false;
}

inline bool hasCounts(std::uint8_t undo, std::uint8_t redo)
{
    const std::lock_guard lock(recordMutex());
    for (auto it = records().rbegin(); it != records().rend(); ++it) {
        if (it->wparam == 17) {
            return it->ext[0] == undo && it->ext[2] == redo;
        }
    }
    return false;
}

/// A host on this display, with a green window of another program below.
class HostOnScreen : public platform::test::Desk {
protected:
    void SetUp() override
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "orv-e2e-XXXXXX").string();
        home_ = ::mkdtemp(pattern.data());
        ::setenv("HOME", home_.c_str(), 1);
        ::setenv("XDG_DATA_HOME", (home_ + "/data").c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", (home_ + "/config").c_str(), 1);
        Desk::SetUp();
        records().clear();
        showGreenWindow();
        controller = std::make_unique<AnnotationController>();
        controller->SetClientCommandCHSender(takeRecord);
        controller->setM_dpID(platform::Platform::current().displays().mainDisplayID());
        controller->setM_clientDimension({1920.0, 1080.0});
    }
    void TearDown() override
    {
        controller->RecoveryDesktop();
        controller.reset();
        AppConstants::destroy();
        std::filesystem::remove_all(home_);
    }
    void send(std::uint32_t wparam, std::uint32_t lparam, const std::vector<std::uint8_t> &ext = {})
    {
        stCommand_mgs record;
        record.pluginID = static_cast<std::uint16_t>(plugin);
        record.wparam = wparam;
        record.lparam = lparam;
        std::copy(ext.begin(), ext.end(), record.ext.begin());
        controller->CommandClient2App(record);
    }
    void openSecondGeneration()
    {
        controller->SetActiveOpt(0, plugin);
        send(0, 0, {1});
    }
    void openFirstGeneration()
    {
        plugin = kFirstGeneration;
        controller->SetActiveOpt(0, plugin);
        send(0, 0);
    }
    void usePen() { send(1, 8, {0, 0, 0, 0, 20, 0, 255, 255, 0, 0}); }
    void clientMouse(std::uint32_t event, std::uint32_t x, std::uint32_t y)
    {
        send(0xEFFD, event,
             {0, 0, static_cast<std::uint8_t>(x >> 8U), static_cast<std::uint8_t>(x), 0, 0,
              static_cast<std::uint8_t>(y >> 8U), static_cast<std::uint8_t>(y)});
    }
    void dragPointer(int fromX, int toX, int y)
    {
        client.movePointer(fromX, y);
        client.button(1, true);
        for (int x = fromX; x <= toX; x += 10) {
            client.movePointer(x, y);
        }
        client.button(1, false);
    }
    [[nodiscard]] const std::string &home() const { return home_; }
    [[nodiscard]] std::shared_ptr<AnnotationManager> manager()
    {
        return controller->parts().state.m_annotationManager;
    }

    std::uint32_t plugin = kPlugin;
    std::unique_ptr<AnnotationController> controller;

private:
    std::string home_;
};

} // namespace orv::test
