#include "OrvAnnotation/AnnotationController.h"
#include "channels/AppConstants.h"
#include "channels/controller/ControllerParts.h"
#include "platform/desktop/display/Desk.h"

#include <X11/keysym.h>
#include <gmock/gmock.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// The way of a mouse press to a stroke and back to the client, as docs/architecture.md tells it.

namespace orv::test {
namespace {

using platform::test::pumpUntil;

constexpr std::uint32_t kGreen = 0x00FF00;
constexpr std::uint32_t kRed = 0xFF0000;
constexpr std::uint32_t kHalfBlueOnGreen = 0x007F7F;
constexpr std::uint32_t kPlugin = 17;
constexpr std::uint32_t kFirstGeneration = 12;

std::mutex &recordMutex()
{
    static std::mutex mutex;
    return mutex;
}

std::vector<stCommand_mgs> &records()
{
    static std::vector<stCommand_mgs> list;
    return list;
}

int takeRecord(const void *bytes, std::size_t /*length*/, std::uint32_t /*pluginID*/)
{
    const std::lock_guard lock(recordMutex());
    stCommand_mgs record;
    std::memcpy(&record, bytes, sizeof record);
    records().push_back(record);
    return 0;
}

bool hasCounts(std::uint8_t undo, std::uint8_t redo)
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
    [[nodiscard]] std::shared_ptr<AnnotationManager> manager()
    {
        return controller->parts().state.m_annotationManager;
    }

    std::uint32_t plugin = kPlugin;
    std::unique_ptr<AnnotationController> controller;

private:
    std::string home_;
};

class AnyDisplayWithAHost : public HostOnScreen {};
class ComposedDisplayWithAHost : public HostOnScreen {};

TEST_F(AnyDisplayWithAHost, ShowsAPointersStrokeAndTellsTheClient)
{
    openSecondGeneration();
    usePen();
    ASSERT_TRUE(comesToShow(400, 300, kGreen)) << "an empty overlay is not seen";

    dragPointer(300, 500, 300);

    EXPECT_TRUE(comesToShow(400, 300, kRed));
    EXPECT_TRUE(comesToShow(400, 330, kGreen)) << "beside the stroke the window below shows";
    EXPECT_TRUE(pumpUntil([] { return hasCounts(1, 0); }));
    EXPECT_EQ(client.pressesSeen(), 0) << "the overlay took the press";
}

TEST_F(AnyDisplayWithAHost, DrawsUndoesRedoesAndWipesByTheClientsRecords)
{
    openSecondGeneration();
    usePen();
    clientMouse(5, 300, 300);
    clientMouse(10, 500, 300);
    clientMouse(6, 500, 300);
    EXPECT_TRUE(comesToShow(400, 300, kRed));
    send(17, 1);
    EXPECT_TRUE(comesToShow(400, 300, kGreen));
    EXPECT_TRUE(pumpUntil([] { return hasCounts(0, 1); }));
    send(17, 2);
    EXPECT_TRUE(comesToShow(400, 300, kRed));
    send(19, 1);
    EXPECT_TRUE(comesToShow(400, 300, kGreen));
}

TEST_F(AnyDisplayWithAHost, ClosesOnEscapeAndLeavesTheScreenAsItWas)
{
    openSecondGeneration();
    usePen();
    dragPointer(300, 500, 300);
    ASSERT_TRUE(comesToShow(400, 300, kRed));

    client.key(XK_Escape, true);
    client.key(XK_Escape, false);

    EXPECT_TRUE(comesToShow(400, 300, kGreen));
    EXPECT_TRUE(manager()->canvasHandler()->isHidden());
    EXPECT_TRUE(std::filesystem::exists(AppConstants::instance().DefaultAppDataPath + "/" +
                                        manager()->annotationsView()->annoDefaultDataFileName()));
}

TEST_F(AnyDisplayWithAHost, LetsClicksThroughWhenTheMouseOfThisMachineIsIgnored)
{
    controller->setIsIgnoreMouseEvent(1);
    openSecondGeneration();
    usePen();
    client.movePointer(400, 300);
    client.button(1, true);
    client.button(1, false);
    EXPECT_TRUE(pumpUntil([this] { return client.pressesSeen() == 1; }));

    clientMouse(5, 300, 300);
    clientMouse(10, 500, 300);
    clientMouse(6, 500, 300);
    EXPECT_TRUE(comesToShow(400, 300, kRed)) << "the client draws all the same";
}

TEST_F(AnyDisplayWithAHost, PutsTheToolboxAboveTheOverlayWhereItTakesClicks)
{
    openFirstGeneration();
    const auto &outlets = manager()->outlets();
    const auto button = outlets.button("highlighterButton");
    const platform::Point at =
        button->frameInWindow().center() + outlets.toolboxWindow->frame().origin;
    client.movePointer(static_cast<int>(at.x), static_cast<int>(1080.0 - at.y));
    client.button(1, true);
    client.button(1, false);

    EXPECT_TRUE(pumpUntil([this] { return manager()->currentTool()->name() == "highlighter"; }));
    EXPECT_FALSE(manager()->annotationsView()->hasAnnotations());
    EXPECT_TRUE(
        comesToShow(static_cast<int>(at.x) - 20, static_cast<int>(1080.0 - at.y) - 20, 0xF2F2F2))
        << "the button's face";
}

TEST_F(AnyDisplayWithAHost, TakesRecordsFromAThreadOfTheirOwn)
{
    controller->SetActiveOpt(0, plugin);
    std::atomic<bool> done = false;
    std::thread host([&] {
        send(0, 0, {1});
        usePen();
        clientMouse(5, 300, 300);
        for (std::uint32_t x = 301; x <= 500; ++x) {
            clientMouse(10, x, 300);
        }
        clientMouse(6, 500, 300);
        done = true;
    });
    EXPECT_TRUE(pumpUntil([&] { return done.load(); }));
    host.join();
    EXPECT_TRUE(comesToShow(400, 300, kRed));
    EXPECT_TRUE(pumpUntil([] { return hasCounts(1, 0); }));
}

TEST_F(ComposedDisplayWithAHost, ShowsAHighlighterHalfWayToWhatLiesBelow)
{
    openSecondGeneration();
    send(1, 1, {0, 0, 0, 0, 30, 0, 255, 0, 0, 255});
    clientMouse(5, 300, 300);
    clientMouse(10, 500, 300);
    clientMouse(6, 500, 300);
    EXPECT_TRUE(comesToShow(400, 300, kHalfBlueOnGreen));
    EXPECT_TRUE(comesToShow(400, 340, kGreen));
}

} // namespace
} // namespace orv::test
