#include "OrvAnnotation/AnnotationController.h"
#include "channels/AppConstants.h"
#include "channels/controller/ControllerParts.h"
#include "platform/desktop/display/Desk.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// A presenter plugs a second display in and out while annotating.

namespace orv::test {
namespace {

using platform::DisplayID;
using platform::Rect;
using platform::test::PluggedDisplay;
using platform::test::pumpUntil;

constexpr std::uint32_t kGreen = 0x00FF00;
constexpr std::uint32_t kRed = 0xFF0000;
constexpr std::uint32_t kPlugin = 17;
constexpr const char *kLeftHalf = "960/254x1080/286+0+0";
constexpr const char *kRightPart = "960/254x800/286+960+0";
const Rect kRightFrame = Rect::make(960, 280, 960, 800);

int dropRecord(const void * /*bytes*/, std::size_t /*length*/, std::uint32_t /*pluginID*/)
{
    return 0;
}

/// A host that annotates on all displays, on a machine whose main display is the screen's left
/// half.
class AnyDisplayThatIsJoined : public platform::test::Desk {
protected:
    void SetUp() override
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "orv-e2e-XXXXXX").string();
        home_ = ::mkdtemp(pattern.data());
        ::setenv("HOME", home_.c_str(), 1);
        ::setenv("XDG_DATA_HOME", (home_ + "/data").c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", (home_ + "/config").c_str(), 1);
        Desk::SetUp();
        main_.emplace("left", kLeftHalf, true);
        ASSERT_TRUE(pumpUntil([] {
            const auto screens = displays().screens();
            return screens.size() == 1 && screens.front().frame.size.width == 960;
        }));
        client.showWindow(1000, 100, 800, 600, kGreen);
        ASSERT_TRUE(comesToShow(1400, 300, kGreen));
        controller = std::make_unique<AnnotationController>();
        controller->SetClientCommandCHSender(dropRecord);
        controller->setM_dpID(displays().mainDisplayID());
        controller->setM_clientDimension({960.0, 1080.0});
        controller->SetActiveOpt(0, kPlugin);
        send(0, 0, {1});
        usePen();
    }
    void TearDown() override
    {
        controller->RecoveryDesktop();
        controller.reset();
        AppConstants::destroy();
        main_.reset();
        std::filesystem::remove_all(home_);
    }

    static platform::Displays &displays() { return platform::Platform::current().displays(); }
    void send(std::uint32_t wparam, std::uint32_t lparam, const std::vector<std::uint8_t> &ext = {})
    {
        stCommand_mgs record;
        record.pluginID = kPlugin;
        record.wparam = wparam;
        record.lparam = lparam;
        std::copy(ext.begin(), ext.end(), record.ext.begin());
        controller->CommandClient2App(record);
    }
    void usePen() { send(1, 8, {0, 0, 0, 0, 20, 0, 255, 255, 0, 0}); }
    /// A new canvas has no tool before the session changes to another one.
    void changeToolsBackToPen()
    {
        send(1, 1, {0, 0, 0, 0, 30, 0, 255, 0, 0, 255});
        usePen();
    }
    void clientMouse(std::uint32_t event, std::uint32_t x, std::uint32_t y)
    {
        send(0xEFFD, event,
             {0, 0, static_cast<std::uint8_t>(x >> 8U), static_cast<std::uint8_t>(x), 0, 0,
              static_cast<std::uint8_t>(y >> 8U), static_cast<std::uint8_t>(y)});
    }
    /// Across the second display, 300 pixels below its upper edge: a client's points count from the
    /// main one's top left corner.
    void drawOnSecondDisplay()
    {
        clientMouse(5, 1160, 300);
        clientMouse(10, 1560, 300);
        clientMouse(6, 1560, 300);
    }
    [[nodiscard]] std::shared_ptr<AnnotationOverlayWindow> overlayOf(DisplayID display)
    {
        const auto &overlays =
            controller->parts().state.m_annotationManager->canvasHandler()->canvasDict();
        const auto found = overlays.find(display);
        return found == overlays.end() ? nullptr : found->second;
    }
    /// The second display's ID, once its overlay is shown.
    [[nodiscard]] DisplayID shownSecondDisplay()
    {
        DisplayID second = 0;
        EXPECT_TRUE(pumpUntil([&] {
            const auto screens = displays().screens();
            second = screens.size() == 2 ? screens.back().displayID : 0;
            const auto overlay = overlayOf(second);
            return overlay && overlay->isVisible();
        }));
        return second;
    }
    [[nodiscard]] bool comesToBeGone(DisplayID display)
    {
        return pumpUntil([&] { return !overlayOf(display)->isVisible(); });
    }

    std::unique_ptr<AnnotationController> controller;

private:
    std::string home_;
    std::optional<PluggedDisplay> main_;
};

TEST_F(AnyDisplayThatIsJoined, GetsAnOverlayOfItsOwnThatGoesWithIt)
{
    std::optional<PluggedDisplay> right(std::in_place, "right", kRightPart, false);
    const DisplayID second = shownSecondDisplay();
    EXPECT_EQ(overlayOf(second)->frame(), kRightFrame);
    EXPECT_EQ(overlayOf(displays().mainDisplayID())->frame(), Rect::make(0, 0, 960, 1080));
    EXPECT_TRUE(comesToShow(1360, 300, kGreen)) << "an empty overlay is not seen";

    right.reset();

    EXPECT_TRUE(comesToBeGone(second));
    EXPECT_TRUE(overlayOf(displays().mainDisplayID())->isVisible());
}

TEST_F(AnyDisplayThatIsJoined, TakesAStrokeAndComesBackWithItsInk)
{
    std::optional<PluggedDisplay> right(std::in_place, "right", kRightPart, false);
    const DisplayID second = shownSecondDisplay();
    const auto overlay = overlayOf(second);
    // A new canvas has no mode to draw in before its display is announced again.
    right.reset();
    ASSERT_TRUE(comesToBeGone(second));
    right.emplace("right", kRightPart, false);
    ASSERT_EQ(shownSecondDisplay(), second);

    changeToolsBackToPen();
    drawOnSecondDisplay();
    EXPECT_TRUE(comesToShow(1360, 300, kRed));
    EXPECT_TRUE(comesToShow(1360, 340, kGreen)) << "beside the stroke the window below shows";

    right.reset();
    EXPECT_TRUE(comesToBeGone(second));
    EXPECT_TRUE(comesToShow(1360, 300, kGreen));

    right.emplace("right", kRightPart, false);
    EXPECT_EQ(shownSecondDisplay(), second);
    EXPECT_EQ(overlayOf(second), overlay);
    EXPECT_EQ(overlay->frame(), kRightFrame);
    EXPECT_TRUE(comesToShow(1360, 300, kRed));
}

} // namespace
} // namespace orv::test
