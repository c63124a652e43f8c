#include "SessionDesk.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace orv::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(SessionDesk, ANewSessionHasNamesAndFoldersAndNoWindow)
{
    make(17);
    const AppConstants &constants = AppConstants::instance();
    EXPECT_EQ(constants.APPName, "Orvane Whiteboard");
    EXPECT_EQ(constants.APPAbbreviation, "OW");
    EXPECT_EQ(constants.AppDataPath, home.path() + "/Documents/Orvane Whiteboard/");
    EXPECT_EQ(constants.AppUserDataPath, constants.AppDataPath + "Default Data");
    EXPECT_EQ(constants.AppLinkPath, home.path() + "/Desktop/Orvane Whiteboard");
    EXPECT_TRUE(std::filesystem::is_directory(constants.AppUserDataPath));
    EXPECT_EQ(manager->annotationsView(), nullptr);
    EXPECT_THAT(desk.windowServer().surfaces(), IsEmpty());
}

TEST_F(SessionDesk, VariantsHaveTheirOwnNames)
{
    make(12);
    EXPECT_EQ(AppConstants::instance().APPName, "Orvane Presenter");
    EXPECT_EQ(AppConstants::instance().APPAbbreviation, "OVP");
    make(18);
    EXPECT_EQ(AppConstants::instance().APPName, ".Orvane Whiteboard Temporary");
    EXPECT_EQ(AppConstants::instance().APPAbbreviation, ".OWT");
}

TEST_F(SessionDesk, ADeviceNameMovesTheUserFolder)
{
    make(17);
    manager->setDeviceName("Tablet/One");
    EXPECT_TRUE(AppConstants::instance().AppUserDataPath.ends_with("/Tablet:One"));
    EXPECT_TRUE(std::filesystem::is_directory(AppConstants::instance().AppUserDataPath));
    manager->setDeviceName(std::nullopt);
    EXPECT_TRUE(AppConstants::instance().AppUserDataPath.ends_with("/Tablet:One"));
}

TEST_F(SessionDesk, OpeningShowsTheCanvasAndTheToolboxAboveIt)
{
    open(12);
    const auto shown = desk.windowServer().orderedWindows();
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0], manager->outlets().toolboxWindow->windowNumber());
    EXPECT_EQ(shown[1], manager->outlets().overlayWindow->windowNumber());
    EXPECT_EQ(desk.windowServer().keyWindow(), shown[1]);
    EXPECT_FALSE(canvas().isHidden());
    EXPECT_EQ(canvas().annotationModeKey(), "AnnotationModeStandard");
    EXPECT_EQ(manager->currentTool()->name(), "pen");
    EXPECT_EQ(manager->outlets().overlayWindow->frame(), platform::Rect::make(0, 0, 1440, 900));
}

TEST_F(SessionDesk, OpeningTellsTheClientInOrder)
{
    EventLog log(17, {"switchModeEvent", "toolboxEvent", "mouseEventHandle", "keyboardEventHandle",
                      "sendCommandHandle"});
    make(17);
    manager->showWindow();
    log.events.clear();
    manager->openAnnotationToolbox();
    // The multi-screen pass says standard mode, then the acknowledgement, then entering says it
    // once more.
    EXPECT_THAT(log.events,
                ElementsAre("switchModeEvent 0 5", "switchModeEvent 0 7", "switchModeEvent 0 5",
                            "toolboxEvent 1 1", "mouseEventHandle 1 0", "keyboardEventHandle 1 0"));
}

TEST_F(SessionDesk, ClosingTellsTheClientInOrderEachTime)
{
    open(17);
    EventLog log(17,
                 {"switchModeEvent", "toolboxEvent", "mouseEventHandle", "keyboardEventHandle"});
    for (int i = 0; i < 3; ++i) {
        log.events.clear();
        manager->closeAnnotationToolbox();
        EXPECT_THAT(log.events, ElementsAre("mouseEventHandle 0 0", "keyboardEventHandle 0 0",
                                            "toolboxEvent 0 1", "switchModeEvent 0 3"));
    }
    EXPECT_THAT(desk.windowServer().orderedWindows(), IsEmpty());
}

TEST_F(SessionDesk, AClosedSessionOpensAgainWithAllItsAnnotations)
{
    open(12);
    localStroke({300.0, 300.0}, {400.0, 400.0});
    const auto toolbox = manager->outlets().toolboxWindow;
    manager->closeAnnotationToolbox();

    manager->showWindow();
    manager->openAnnotationToolbox();

    EXPECT_EQ(manager->outlets().toolboxWindow, toolbox) << "nothing is loaded twice";
    EXPECT_EQ(annotationCount(), 1U);
}

TEST_F(SessionDesk, TheSecondGenerationHidesItsToolbox)
{
    open(17);
    EXPECT_TRUE(manager->outlets().toolboxWindow->isIconized());
    EXPECT_TRUE(manager->outlets().toolSelectionView->isHidden());
}

TEST_F(SessionDesk, PlugIn16HidesItAtEachOpening)
{
    open(16);
    wait(2.0);
    EXPECT_TRUE(manager->outlets().toolboxWindow->isIconized());
    manager->closeAnnotationToolbox();
    manager->outlets().toolboxWindow->showToolboxWindow(false);
    manager->openAnnotationToolbox();
    wait(2.0);
    EXPECT_TRUE(manager->outlets().toolboxWindow->isIconized());
}

TEST_F(SessionDesk, MinimizingIsForTheFirstGenerationOnly)
{
    open(17);
    manager->outlets().toolboxWindow->showToolboxWindow(false);
    manager->minimizeAnnotationToolbox();
    wait(2.0);
    EXPECT_FALSE(manager->outlets().toolboxWindow->isIconized());
    manager->maximizeAnnotationToolbox();
    wait(2.0);
    EXPECT_FALSE(manager->outlets().toolboxWindow->isIconized());
}

TEST_F(SessionDesk, MinimizingSlidesOverTheTopAndBack)
{
    open(12);
    const platform::Rect atHome = manager->outlets().toolboxWindow->frame();
    EXPECT_EQ(atHome.maxY(), 900.0);
    manager->minimizeAnnotationToolbox();
    wait(2.0);
    EXPECT_EQ(
        manager->outlets().toolboxWindow->frame(),
        atHome.offsetBy(0.0, manager->outlets().toolSelectionView->frame().size.height + 1.0));
    EXPECT_TRUE(manager->outlets().toolSelectionView->isHidden());
    manager->maximizeAnnotationToolbox();
    wait(2.0);
    EXPECT_EQ(manager->outlets().toolboxWindow->frame(), atHome);
    EXPECT_FALSE(manager->outlets().toolSelectionView->isHidden());
}

TEST_F(SessionDesk, TheDockIsLeftAloneOnlyWhenTheMouseIs)
{
    std::vector<std::uint32_t> options;
    desk.hooks().presentation = [&options](std::uint32_t value) { options.push_back(value); };
    open(12);
    manager->closeAnnotationToolbox();
    EXPECT_THAT(options, ElementsAre(1U, 0U));

    options.clear();
    manager->setIsIgnoreMouseEvent(1);
    manager->openAnnotationToolbox();
    EXPECT_TRUE(manager->outlets().overlayWindow->ignoresMouseEvents());
    manager->closeAnnotationToolbox();
    EXPECT_THAT(options, ElementsAre(0U)) << "a close sets it all the same";
}

TEST_F(SessionDesk, TheApplicationInFrontGetsItsPlaceBack)
{
    std::vector<std::int32_t> activated;
    desk.hooks().activate = [&activated](std::int32_t pid) { activated.push_back(pid); };
    desk.applications().setFront({4711, "org.example.Slides"});
    open(12);
    manager->closeAnnotationToolbox();
    EXPECT_THAT(activated, ElementsAre(4711));
}

TEST_F(SessionDesk, TheClientLearnsWhichSettingsAPresentationNeeds)
{
    desk.applications().setRunning({"com.microsoft.Powerpoint", "com.apple.iWork.Keynote"});
    EventLog log(12, {"sendCommandHandle"});
    open(12);
    EXPECT_THAT(log.events, ElementsAre("sendCommandHandle 20 3"));
    log.events.clear();
    desk.applications().setAccessibility(true);
    manager->openAnnotationToolbox();
    EXPECT_THAT(log.events, ElementsAre("sendCommandHandle 20 2"));
}

TEST_F(SessionDesk, ButtonsAreRefreshedOnceMoreAfterTheGenerationsDelay)
{
    open(12);
    {
        EventLog log(12, {"undoreoEvent"});
        manager->openAnnotationToolbox();
        log.events.clear();
        drain();
        EXPECT_EQ(log.events.size(), 1U) << "with no delay in the first generation";
    }
    manager->terminate();
    open(17);
    EventLog log(17, {"undoreoEvent"});
    wait(1.99);
    EXPECT_THAT(log.events, IsEmpty());
    wait(0.02);
    EXPECT_EQ(log.events.size(), 1U);
}

TEST_F(SessionDesk, AnOpenSessionIsSavedEverySixtySecondsAndOnceMoreOnLeaving)
{
    open(12);
    localStroke({300.0, 300.0}, {400.0, 400.0});
    const std::string file = saveFile("save.dat");
    EXPECT_FALSE(std::filesystem::exists(file));
    wait(59.9);
    EXPECT_FALSE(std::filesystem::exists(file));
    wait(0.2);
    EXPECT_TRUE(std::filesystem::exists(file));

    std::filesystem::remove(file);
    manager->closeAnnotationToolbox();
    EXPECT_TRUE(std::filesystem::exists(file));
    std::filesystem::remove(file);
    wait(200.0);
    EXPECT_FALSE(std::filesystem::exists(file)) << "a closed session is not saved any more";
}

TEST_F(SessionDesk, WhatWasDrawnComesBackInAnotherProcess)
{
    open(12);
    localStroke({300.0, 300.0}, {400.0, 400.0});
    manager->closeAnnotationToolbox();
    manager->terminate();

    open(12);

    EXPECT_EQ(annotationCount(), 1U);
    EXPECT_TRUE(manager->outlets().button("undoButton")->isEnabled());
}

TEST_F(SessionDesk, YesterdaysWorkIsNotBroughtBack)
{
    const std::vector<std::pair<std::uint32_t, double>> limits{{12, 7200.0}, {18, 120.0}};
    for (const auto &[plugin, limit] : limits) {
        const std::string name = plugin == 12 ? "save.dat" : "save_1.dat";
        open(plugin);
        localStroke({300.0, 300.0}, {400.0, 400.0});
        manager->closeAnnotationToolbox();
        const std::string file = saveFile(name);
        manager->terminate();
        ASSERT_TRUE(desk.files().setAge(file, limit + 1.0));
        open(plugin);
        EXPECT_EQ(annotationCount(), 0U) << plugin;
        EXPECT_TRUE(std::filesystem::exists(file));
        manager->terminate();

        ASSERT_TRUE(desk.files().setAge(file, limit - 1.0));
        open(plugin);
        EXPECT_EQ(annotationCount(), 1U) << plugin;
        manager->terminate();
    }
}

TEST_F(SessionDesk, EachGenerationHasItsOwnFile)
{
    open(12);
    EXPECT_EQ(canvas().annoDefaultDataFileName(), "save.dat");
    manager->terminate();
    open(16);
    EXPECT_EQ(canvas().annoDefaultDataFileName(), "save_iap.dat");
    manager->terminate();
    open(17);
    EXPECT_EQ(canvas().annoDefaultDataFileName(), "save_1.dat");
}

TEST_F(SessionDesk, ADamagedFileIsSetAsideAndTheCanvasStartsClean)
{
    make(12);
    const std::string file = saveFile("save.dat");
    const platform::Data garbage{'n', 'o', ' ', 'a', 'r', 'c', 'h', 'i', 'v', 'e'};
    desk.files().createFolder(AppConstants::instance().DefaultAppDataPath);
    ASSERT_TRUE(desk.files().writeAtomically(file, garbage));
    OrvFrameworkLogger::shared().setStandardOutput(true);
    OrvFrameworkLogger::shared().setLevel("OrvAnnotation", 4);

    manager->showWindow();
    manager->openAnnotationToolbox();

    EXPECT_EQ(annotationCount(), 0U);
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr(file + " can't be read and was set aside as")));
    manager->closeAnnotationToolbox();
    std::vector<std::string> kept;
    for (const auto &entry :
         std::filesystem::directory_iterator(AppConstants::instance().DefaultAppDataPath)) {
        if (entry.path().filename().string().starts_with("save.dat.damaged-")) {
            kept.push_back(entry.path());
        }
    }
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(desk.files().read(kept[0], 1000), garbage);
    EXPECT_TRUE(std::filesystem::exists(file)) << "the clean canvas has been saved beside it";
}

TEST_F(SessionDesk, AnUnwritableFolderIsLoggedAndLosesNothing)
{
    open(12);
    localStroke({300.0, 300.0}, {400.0, 400.0});
    std::filesystem::remove_all(AppConstants::instance().DefaultAppDataPath);
    std::filesystem::create_symlink("/proc/nowhere",
                                    saveFile("").substr(0, saveFile("").size() - 1));
    OrvFrameworkLogger::shared().setStandardOutput(true);
    OrvFrameworkLogger::shared().setLevel("OrvAnnotation", 4);
    manager->closeAnnotationToolbox();
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr("save.dat was not written"),
                                       HasSubstr("defaults.dat was not written")));
    EXPECT_EQ(annotationCount(), 1U);
}

TEST_F(SessionDesk, EscapeClosesAnnotationMode)
{
    open(12);
    desk.input().sendKey(platform::EventType::keyDown, 53, u"\x1b");
    drain();
    EXPECT_TRUE(canvas().isHidden());
    EXPECT_THAT(desk.windowServer().orderedWindows(), IsEmpty());
}

TEST_F(SessionDesk, ADisplayAskedForWhileOpenCountsAtTheNextOpening)
{
    desk.displays().setDisplays(
        {platform::Screen{1, platform::Rect::make(0, 0, 1440, 900), 1.0},
         platform::Screen{2, platform::Rect::make(1440, 0, 800, 600), 1.0}});
    open(12);
    manager->setDisplayID(2);
    wait(1.0);
    EXPECT_EQ(manager->outlets().overlayWindow->frame().size.width, 1440.0);
    EXPECT_TRUE(manager->isResetDisplay());
    manager->closeAnnotationToolbox();
    manager->openAnnotationToolbox();
    EXPECT_EQ(manager->outlets().overlayWindow->frame(), platform::Rect::make(1440, 0, 800, 600));
    EXPECT_EQ(canvas().frame().size, (platform::Size{800.0, 600.0}));
    EXPECT_FALSE(manager->isResetDisplay());
}

TEST_F(SessionDesk, ADisplayThatIsGoneGivesAnEmptyFrame)
{
    open(12);
    manager->closeAnnotationToolbox();
    manager->setDisplayID(99);
    manager->openAnnotationToolbox();
    EXPECT_EQ(manager->outlets().overlayWindow->frame(), platform::Rect{});
}

TEST_F(SessionDesk, UndoAndRedoRequestsWantSomethingToWorkOn)
{
    open(12);
    EventLog log(12, {"undoreoEvent"});
    wait(1.0);
    log.events.clear();
    manager->handleUndoRequest();
    manager->handleRedoRequest();
    drain();
    EXPECT_THAT(log.events, IsEmpty()) << "no undo and no refresh";

    localStroke({300.0, 300.0}, {400.0, 400.0});
    manager->handleUndoRequest();
    EXPECT_EQ(annotationCount(), 1U) << "it waits for the main thread's turn";
    drain();
    EXPECT_EQ(annotationCount(), 0U);
    manager->handleRedoRequest();
    drain();
    EXPECT_EQ(annotationCount(), 1U);
}

TEST_F(SessionDesk, AWipedScreenIsUndoneFromTheToolboxButNotByTheClient)
{
    open(12);
    localStroke({300.0, 300.0}, {400.0, 400.0});
    manager->handleEraseAllRequest();
    wait(1.0);
    ASSERT_EQ(annotationCount(), 0U);
    manager->handleUndoRequest();
    drain();
    EXPECT_EQ(annotationCount(), 0U);
    manager->outlets().button("undoButton")->performClick();
    EXPECT_EQ(annotationCount(), 1U);
}

TEST_F(SessionDesk, ScalesOfAnimationsFollowTheDisplayInSinglePrecision)
{
    make(12);
    EXPECT_EQ(manager->getScreenScale(0, {1024.0, 9999.0}, 0.5F), 0.5F);
    EXPECT_EQ(manager->getScreenScale(0, {2048.0, 1.0}, 0.5F), 1.0F);
    EXPECT_EQ(manager->getScreenScale(1, {1.0, 768.0}, 0.5F), 0.5F);
    EXPECT_EQ(manager->getScreenScale(1, {1.0, 900.0}, 0.5F),
              0.5F * static_cast<float>(900.0 / 768.0));
}

TEST_F(SessionDesk, TogglingEntersAndLeaves)
{
    open(12);
    manager->toggleAnnotationMode();
    EXPECT_TRUE(canvas().isHidden());
    manager->toggleAnnotationMode();
    EXPECT_FALSE(canvas().isHidden());
}

TEST_F(SessionDesk, TheEditMenuAndTheFixedOneTakeTurns)
{
    open(12);
    EXPECT_FALSE(manager->outlets().editToolMenuView->isHidden());
    manager->setEditModeToolMenu(false);
    EXPECT_TRUE(manager->outlets().editToolMenuView->isHidden());
    EXPECT_FALSE(manager->outlets().fixedToolMenuView->isHidden());
}

} // namespace
} // namespace orv::test
