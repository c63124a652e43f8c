#include "HostOnScreen.h"

#include <X11/keysym.h>
#include <gmock/gmock.h>

#include <atomic>
#include <thread>

// The way of a mouse press to a stroke and back to the client, as docs/architecture.md tells it.

namespace orv::test {
namespace {

constexpr std::uint32_t kHalfBlueOnGreen = 0x007F7F;

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
    const auto face = button->image()->image()->pixel(6, 6);
    ASSERT_EQ(face >> 24U, 0xFFU);
    EXPECT_TRUE(comesToShow(static_cast<int>(at.x) - 20, static_cast<int>(1080.0 - at.y) - 20,
                            face & 0xFFFFFFU))
        << "the button's picture";
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
