#include "StorageDesk.h"
#include "support/EventLog.h"

#include <gmock/gmock.h>

// The default file: what a canvas keeps across restarts.

namespace orv::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

TEST_F(StorageDesk, WhatWasDrawnInStandardModeComesBackWithUndoAndRedo)
{
    drawALittle();
    canvas->saveDefaultAnnotationDataAndWait();

    restart();

    EXPECT_EQ(mode(), standard);
    EXPECT_EQ(counts(standard), "1 1 1");
    EXPECT_TRUE(toolbox.undo->isEnabled());
    EXPECT_TRUE(toolbox.redo->isEnabled());
    EXPECT_FALSE(canvas->isChange());
}

TEST_F(StorageDesk, TheButtonsFollowWhatCameBack)
{
    stroke({10.0, 10.0}, {20.0, 20.0});
    canvas->undoAnnotation();
    canvas->saveDefaultAnnotationDataAndWait();
    toolbox.undo->setEnabled(true);
    toolbox.redo->setEnabled(false);

    restart();

    EXPECT_FALSE(toolbox.undo->isEnabled());
    EXPECT_TRUE(toolbox.redo->isEnabled());
}

TEST_F(StorageDesk, AWipeThatWasUndoneCanBeRedoneAfterwards)
{
    stroke({10.0, 10.0}, {20.0, 20.0});
    canvas->clearAnnotations(nullptr);
    canvas->undoAnnotation();
    canvas->saveDefaultAnnotationDataAndWait();

    restart();

    ASSERT_EQ(counts(standard), "1 0 1");
    EXPECT_EQ(undoHistory()[0]->annotationType(), annotation_type::clearScreen);
    EXPECT_EQ(undoHistory()[0]->className(), "Annotation");
}

TEST_F(StorageDesk, TheFileOfStandardModeHoldsTheModeAndThreeLists)
{
    canvas->saveDefaultAnnotationDataAndWait();

    EXPECT_THAT(keysOf(defaultFile()),
                ElementsAre("annotationModeKey", "standardAnnotations", "standardClearedScreens",
                            "standardUndoHistory"));
}

TEST_F(StorageDesk, TheFileOfFlipchartModeHoldsBothDocumentsAndThePaths)
{
    stroke({10.0, 10.0}, {20.0, 20.0});
    canvas->enterFlipchartEditingMode(3);
    canvas->setFlipchartImageFilePath(dataPath("Tablet/Flipchart/page.jpg"));
    drawALittle();

    canvas->saveDefaultAnnotationDataAndWait();

    EXPECT_THAT(keysOf(defaultFile()),
                ElementsAre("annotationModeKey", "standardAnnotations", "standardClearedScreens",
                            "standardUndoHistory", "flipchartAnnotations",
                            "flipchartClearedScreens", "flipchartUndoHistory", "annotationBackdrop",
                            "flipchartImageFilePath", "backdropImageFilePath"));
    EXPECT_EQ(stringIn(defaultFile(), "annotationModeKey"), flipchart);
    EXPECT_EQ(numberIn(defaultFile(), "annotationBackdrop"), 3);
    EXPECT_EQ(stringIn(defaultFile(), "flipchartImageFilePath"), "Tablet/Flipchart/page.jpg");
    EXPECT_EQ(stringIn(defaultFile(), "backdropImageFilePath"), "(none)");
}

TEST_F(StorageDesk, TheFileOfSnapshotModeHoldsBothDocumentsAndThePicture)
{
    canvas->enterSnapshotEditingModeWithImageFile(picture("Tablet/Snapshot/one.png"));

    canvas->saveDefaultAnnotationDataAndWait();

    EXPECT_THAT(keysOf(defaultFile()),
                ElementsAre("annotationModeKey", "standardAnnotations", "standardClearedScreens",
                            "standardUndoHistory", "snapshotAnnotations", "snapshotClearedScreens",
                            "snapshotUndoHistory", "snapshotImageFilePath"));
    EXPECT_EQ(stringIn(defaultFile(), "snapshotImageFilePath"), "Tablet/Snapshot/one.png");
}

TEST_F(StorageDesk, ASnapshotComesBackWithItsInkAndCountsAsChangedWhereItMayBeEdited)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->enterSnapshotEditingModeWithImageFile(picture("Tablet/Snapshot/one.png"));
    drawALittle();
    canvas->saveDefaultAnnotationDataAndWait();

    restart();

    EXPECT_EQ(mode(), snapshot);
    EXPECT_EQ(counts(snapshot), "1 1 1");
    EXPECT_EQ(counts(standard), "1 0 0");
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, dataPath("Tablet/Snapshot/one.png"));
    EXPECT_EQ(backdropPixel(), 0xFF00FF00U);
    EXPECT_TRUE(canvas->isEditMode());
    EXPECT_TRUE(canvas->isChange());
}

TEST_F(StorageDesk, ASnapshotOfAnotherDeviceComesBackUnchangedAndFixed)
{
    canvas->enterSnapshotEditingModeWithImageFile(picture("Phone/Snapshot/one.png"));
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->saveDefaultAnnotationDataAndWait();
    forget();

    restart();

    EXPECT_EQ(canvas->paths().snapshotImageFilePath, dataPath("Phone/Snapshot/one.png"));
    EXPECT_FALSE(canvas->isEditMode());
    EXPECT_FALSE(canvas->isChange());
    EXPECT_EQ(session.calls.back(), "fixed menu");
}

TEST_F(StorageDesk, AFlipchartComesBackOnItsPaper)
{
    canvas->enterFlipchartEditingMode(1);
    canvas->setFlipchartImageFilePath(dataPath("Tablet/Flipchart/page.jpg"));
    drawALittle();
    canvas->saveDefaultAnnotationDataAndWait();

    restart();

    EXPECT_EQ(mode(), flipchart);
    EXPECT_EQ(canvas->currentBackdrop(), 1);
    EXPECT_EQ(window->backgroundColor(), platform::Color::white());
    EXPECT_EQ(counts(flipchart), "1 1 1") << "the new page came before the lists";
    EXPECT_EQ(canvas->paths().flipchartImageFilePath, dataPath("Tablet/Flipchart/page.jpg"));
    EXPECT_FALSE(canvas->isChange());
}

TEST_F(StorageDesk, AFlipchartWithoutABackdropForgetsItsPage)
{
    canvas->enterFlipchartEditingMode(0);
    canvas->setFlipchartImageFilePath(dataPath("Tablet/Flipchart/page.jpg"));
    canvas->saveDefaultAnnotationDataAndWait();

    restart();

    EXPECT_EQ(mode(), flipchart);
    EXPECT_EQ(canvas->paths().flipchartImageFilePath, "");
}

TEST_F(StorageDesk, TheUsersPictureOfTheDefaultFileIsLookedForInTheDevicesOwnFolder)
{
    picture("Tablet/Background/mine.png", 0xFF0000FFU);
    canvas->setBackdropImageFilePath(picture("Phone/Background/mine.png"));
    canvas->enterFlipchartEditingMode(7);
    canvas->saveDefaultAnnotationDataAndWait();

    restart();

    EXPECT_EQ(canvas->paths().backdropImageFilePath, dataPath("Tablet/Background/mine.png"));
    EXPECT_EQ(canvas->currentBackdrop(), 7);
    EXPECT_EQ(backdropPixel(), 0xFF0000FFU);
    EXPECT_TRUE(canvas->isEditMode());
}

TEST_F(StorageDesk, AnOldFileIsIgnoredAndAYoungerOneRestored)
{
    const std::vector<std::pair<std::uint32_t, double>> limits{{16, 7200.0}, {18, 120.0}};
    for (const auto &[plugin, limit] : limits) {
        AppConstants::instance().setAppActUniqueID(plugin);
        makeCanvas();
        canvas->setAnnotationModeKey(standard);
        stroke({1.0, 1.0}, {2.0, 2.0});
        canvas->saveDefaultAnnotationDataAndWait();
        const std::string file = defaultFile(canvas->annoDefaultDataFileName());

        ASSERT_TRUE(desk.files().setAge(file, limit + 0.5));
        restart();
        EXPECT_EQ(counts(standard), "0 0 0") << plugin;
        EXPECT_EQ(mode(), standard);

        ASSERT_TRUE(desk.files().setAge(file, limit));
        restart();
        EXPECT_EQ(counts(standard), "1 0 0") << plugin;
    }
}

TEST_F(StorageDesk, TheFilesTimeIsThatOfTheLastSave)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->saveDefaultAnnotationDataAndWait();
    wait(5000.0);
    canvas->saveDefaultAnnotationDataAndWait();
    wait(5000.0);

    restart();

    EXPECT_EQ(counts(standard), "1 0 0");
}

TEST_F(StorageDesk, EachDisplayHasAFileOfItsOwnAndFindsItAgain)
{
    AppConstants::instance().setAppActUniqueID(17);
    desk.displays().setDisplays(
        {platform::Screen{1, platform::Rect::make(0, 0, 1440, 900), 1.0},
         platform::Screen{2, platform::Rect::make(1440, 0, 800, 600), 1.0}});
    const auto openOn = [this](platform::DisplayID display) {
        canvas = std::make_shared<AnnotationsView>(platform::Rect{});
        window = std::make_shared<AnnotationOverlayWindow>(display, canvas);
        canvas->loadDefaultAnnotationData();
    };
    openOn(1);
    canvas->setCurrentTool(pen);
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->saveDefaultAnnotationDataAndWait();
    openOn(2);
    canvas->setCurrentTool(pen);
    stroke({1.0, 1.0}, {2.0, 2.0});
    stroke({3.0, 3.0}, {4.0, 4.0});
    canvas->saveDefaultAnnotationDataAndWait();

    EXPECT_THAT(filesIn(AppConstants::instance().DefaultAppDataPath),
                ElementsAre("save_1.dat", "save_2.dat"));
    openOn(1);
    EXPECT_EQ(counts(standard), "1 0 0");
    openOn(2);
    EXPECT_EQ(counts(standard), "2 0 0");
}

TEST_F(StorageDesk, TheLogTellsOfASave)
{
    canvas->saveDefaultAnnotationDataAndWait();
    EXPECT_THAT(systemLog,
                ElementsAre("-[OrvAnnotation][INFO] >> SAVE ANNOTATION DATA [save_iap.dat] <<"));

    canvas->enterFlipchartEditingMode(1);
    canvas->setFlipchartImageFilePath("/a/page.jpg");
    forget();
    canvas->saveDefaultAnnotationDataAndWait();
    EXPECT_THAT(systemLog,
                ElementsAre("-[OrvAnnotation][INFO] >> SAVE ANNOTATION DATA [save_iap.dat] <<",
                            "-[OrvAnnotation][DEBUG] flipchartImageFilePath : [/a/page.jpg]",
                            "-[OrvAnnotation][DEBUG] backdropImageFilePath : [(null)]"));
}

TEST_F(StorageDesk, TheLogTellsOfALoad)
{
    canvas->saveDefaultAnnotationDataAndWait();
    forget();

    restart();

    EXPECT_THAT(systemLog,
                AllOf(Contains("-[OrvAnnotation][INFO] -[AnnotationsView "
                               "loadAnnotationData:check:] savedDataPath : [" +
                               defaultFile() + "]"),
                      Contains("-[OrvAnnotation][DEBUG] << RESTORE ANNOTATION DATA >>")));
}

TEST_F(StorageDesk, AMissingFileIsNoNewsAndGivesStandardMode)
{
    canvas->enterFlipchartEditingMode(1);
    canvas->setIsPressed(true);
    forget();

    canvas->loadDefaultAnnotationData();

    EXPECT_EQ(mode(), standard);
    EXPECT_FALSE(canvas->ownIsPressed());
    EXPECT_THAT(systemLog, Not(Contains(HasSubstr("RESTORE"))));
}

TEST_F(StorageDesk, ALoadMakesTheFolderThatIsMissing)
{
    std::filesystem::remove_all(AppConstants::instance().DefaultAppDataPath);

    canvas->loadDefaultAnnotationData();

    EXPECT_TRUE(desk.files().exists(AppConstants::instance().DefaultAppDataPath));
}

TEST_F(StorageDesk, TheClientHearsOfTheModesOnTheWay)
{
    canvas->enterFlipchartEditingMode(1);
    canvas->saveDefaultAnnotationDataAndWait();
    makeCanvas();
    const EventLog log(16, {"switchModeEvent"});

    canvas->loadDefaultAnnotationData();

    EXPECT_THAT(log.events, ElementsAre("switchModeEvent 0 5", "switchModeEvent 1 5"));
}

} // namespace
} // namespace orv::test
