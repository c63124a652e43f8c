#include "StorageDesk.h"

#include "annotations/LineAnnotation.h"
#include "annotations/StampAnnotation.h"
#include "annotations/TextAnnotation.h"

#include <gmock/gmock.h>

// What lies beside saved pictures, and files that other programs have written.

namespace orv::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

std::vector<std::string> kindsOf(const AnnotationList &list)
{
    std::vector<std::string> kinds;
    for (const auto &annotation : list) {
        kinds.push_back(annotation->className());
    }
    return kinds;
}

class EditablePictures : public StorageDesk {
protected:
    /// A data file beside a picture in a gallery folder, and its background.
    std::string rawData(const std::string &fixture, const std::string &relative)
    {
        const std::string path = dataPath(relative + ".data");
        copyFixture(fixture, path);
        picture(relative + ".RawBG");
        return path;
    }
};

TEST_F(EditablePictures, ASnapshotTakesTheInkOfTheModeInWhichItWasTaken)
{
    drawALittle();
    const std::string data = dataPath("Tablet/Snapshot/.RawData/one.data");
    picture("Tablet/Snapshot/.RawData/one.RawBG");

    canvas->saveSanpshotData(data);

    EXPECT_THAT(keysOf(data), ElementsAre("annotationModeKey", "annotationBackdrop",
                                          "snapshotAnnotations", "snapshotClearedScreens",
                                          "snapshotUndoHistory", "snapshotImageFilePath"));
    EXPECT_EQ(mode(), standard) << "a save moves nothing";
    ASSERT_TRUE(canvas->loadAnnotationData(data, false));
    EXPECT_EQ(mode(), snapshot);
    EXPECT_EQ(counts(snapshot), "1 1 1");
    EXPECT_EQ(counts(standard), "1 1 1");
    EXPECT_EQ(canvas->paths().snapshotImageFilePath,
              dataPath("Tablet/Snapshot/.RawData/one.RawBG"));
    EXPECT_FALSE(canvas->isChange());
}

TEST_F(EditablePictures, ASnapshotOfAFlipchartGetsItsPaperAsBackground)
{
    canvas->enterFlipchartEditingMode(1);
    const std::string data = dataPath("Tablet/Snapshot/.RawData/one.data");
    forget();

    canvas->saveSanpshotData(data);

    EXPECT_THAT(systemLog, ElementsAre("-[OrvAnnotation][INFO] >> SAVE SNAPSHOT DATA <<",
                                       "-[OrvAnnotation][DEBUG] [" + data + "]",
                                       "-[OrvAnnotation][DEBUG] Save Whiteboard data to bg ..."));
    EXPECT_EQ(numberIn(data, "annotationBackdrop"), 0);
    const auto background = desk.pictures().picture(dataPath("Tablet/Snapshot/.RawData/one.RawBG"));
    ASSERT_NE(background, nullptr);
    EXPECT_EQ(background->size().width, 1440.0);
    EXPECT_EQ(background->pixel(700, 400), 0xFFFFFFFFU);
}

TEST_F(EditablePictures, ASnapshotOfAFlipchartOnAPictureGetsThePicture)
{
    canvas->setBackdropImageFilePath(picture("Tablet/Background/mine.png", 0xFF0000FFU));
    canvas->enterFlipchartEditingMode(7);

    canvas->saveSanpshotData(dataPath("Tablet/Snapshot/.RawData/one.data"));

    const auto background = desk.pictures().picture(dataPath("Tablet/Snapshot/.RawData/one.RawBG"));
    ASSERT_NE(background, nullptr);
    const std::uint32_t pixel = background->pixel(700, 400);
    EXPECT_GT(pixel & 0xFFU, 0xF0U);
    EXPECT_LT((pixel >> 8U) & 0xFFFFU, 0x0808U);
}

TEST_F(EditablePictures, OnlyAFlipchartWithABackdropWritesABackground)
{
    canvas->saveSanpshotData(dataPath("Tablet/Snapshot/.RawData/one.data"));
    canvas->enterFlipchartEditingMode(0);
    canvas->saveSanpshotData(dataPath("Tablet/Snapshot/.RawData/two.data"));

    EXPECT_THAT(filesIn(dataPath("Tablet/Snapshot/.RawData")), ElementsAre("one.data", "two.data"));
}

TEST_F(EditablePictures, APageHoldsItsListsAndItsBackdrop)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->setBackdropImageFilePath(dataPath("Tablet/Background/mine.png"));
    canvas->enterFlipchartEditingMode(2);
    drawALittle();
    const std::string data = dataPath("Tablet/Flipchart/.RawData/page.data");
    forget();

    canvas->saveFlipchartData(data);

    EXPECT_THAT(keysOf(data),
                ElementsAre("annotationModeKey", "flipchartAnnotations", "flipchartClearedScreens",
                            "flipchartUndoHistory", "annotationBackdrop", "backdropImageFilePath"));
    EXPECT_EQ(numberIn(data, "annotationBackdrop"), 2);
    EXPECT_EQ(stringIn(data, "backdropImageFilePath"), "Tablet/Background/mine.png");
    EXPECT_THAT(systemLog, ElementsAre("-[OrvAnnotation][INFO] >> SAVE FLIPCHART DATA <<",
                                       "-[OrvAnnotation][DEBUG] flipchart currentBackdrop:2"));
    canvas->enterStandardAnnotationMode();
    ASSERT_TRUE(canvas->loadAnnotationData(data, false));
    EXPECT_EQ(counts(flipchart), "1 1 1");
    EXPECT_EQ(canvas->currentBackdrop(), 2);
    EXPECT_EQ(canvas->paths().backdropImageFilePath, dataPath("Tablet/Background/mine.png"));
}

TEST_F(EditablePictures, ItLoadsAtAnyAge)
{
    const std::string data = rawData("snapshot_of_phone.data", "Tablet/Snapshot/.RawData/one");
    ASSERT_TRUE(desk.files().setAge(data, 1e9));

    EXPECT_TRUE(canvas->loadAnnotationData(data, false));
    EXPECT_FALSE(canvas->loadAnnotationData(data, true));
}

TEST_F(EditablePictures, ASnapshotsPathMovesToTheFolderInWhichItsDataLies)
{
    const std::string data = rawData("snapshot_of_phone.data", "Desk/Snapshot/.RawData/one");

    ASSERT_TRUE(canvas->loadAnnotationData(data, false));

    EXPECT_EQ(canvas->paths().snapshotImageFilePath, dataPath("Desk/Snapshot/.RawData/one.RawBG"));
    EXPECT_FALSE(canvas->isEditMode()) << "another device's";
    EXPECT_EQ(backdropPixel(), 0xFF00FF00U);
    EXPECT_EQ(counts(snapshot), "1 1 2");
    EXPECT_EQ(canvas->currentBackdrop(), 0) << "a snapshot's number is not read";
}

TEST_F(EditablePictures, ASnapshotInTheDevicesOwnFolderMayBeEdited)
{
    const std::string data = rawData("snapshot_of_phone.data", "Tablet/Snapshot/.RawData/one");
    canvas->setIsEditMode(false);

    ASSERT_TRUE(canvas->loadAnnotationData(data, false));

    EXPECT_EQ(canvas->paths().snapshotImageFilePath,
              dataPath("Tablet/Snapshot/.RawData/one.RawBG"));
    EXPECT_TRUE(canvas->isEditMode());
}

TEST_F(EditablePictures, AnOldSnapshotWithoutAUserFolderComesIntoTheDevicesOwn)
{
    const std::string data = home.path() + "/old.data";
    copyFixture("old_snapshot.data", data);
    picture("Tablet/Snapshot/.RawData/old.RawBG");

    ASSERT_TRUE(canvas->loadAnnotationData(data, false));

    EXPECT_EQ(canvas->paths().snapshotImageFilePath,
              dataPath("Tablet/Snapshot/.RawData/old.RawBG"));
    EXPECT_TRUE(canvas->isEditMode());
    EXPECT_EQ(backdropPixel(), 0xFF00FF00U);
    ASSERT_THAT(kindsOf(annotations()), ElementsAre("PencilAnnotation", "LineAnnotation"));
    EXPECT_FALSE(annotations()[0]->dashMode());
    EXPECT_EQ(annotations()[1]->annotationStyle(), 0);
}

TEST_F(EditablePictures, APageOnAPictureOfAnotherDeviceReopensOnItAndIsFixed)
{
    const std::string data = dataPath("Phone/Flipchart/.RawData/page.data");
    copyFixture("page_on_picture.data", data);
    picture("Phone/Background/mine.png", 0xFF0000FFU);

    ASSERT_TRUE(canvas->loadAnnotationData(data, false));

    EXPECT_EQ(mode(), flipchart);
    EXPECT_EQ(canvas->currentBackdrop(), 7);
    EXPECT_EQ(canvas->paths().backdropImageFilePath, dataPath("Phone/Background/mine.png"));
    EXPECT_EQ(backdropPixel(), 0xFF0000FFU);
    EXPECT_FALSE(canvas->isEditMode());
    EXPECT_EQ(counts(flipchart), "1 0 0");
}

TEST_F(EditablePictures, APageOnAPictureMovesToTheFolderInWhichItsDataLies)
{
    const std::string data = dataPath("Tablet/Flipchart/.RawData/page.data");
    copyFixture("page_on_picture.data", data);

    ASSERT_TRUE(canvas->loadAnnotationData(data, false));

    EXPECT_EQ(canvas->paths().backdropImageFilePath, dataPath("Tablet/Background/mine.png"));
    EXPECT_TRUE(canvas->isEditMode());
    EXPECT_EQ(backdropPixel(), 0xFFFFFFFFU) << "the picture is not there";
}

TEST_F(EditablePictures, APageOnAPictureWithoutListsTakesNoInkAndDoesNoHarm)
{
    const std::string data = dataPath("Tablet/Flipchart/.RawData/page.data");
    copyFixture("page_without_lists.data", data);
    canvas->setBackdropImageFilePath("/a/former.png");

    ASSERT_TRUE(canvas->loadAnnotationData(data, false));

    EXPECT_EQ(mode(), flipchart);
    EXPECT_EQ(counts(flipchart), "none");
    EXPECT_EQ(canvas->paths().backdropImageFilePath, "");
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->undoAnnotation();
    canvas->redoAnnotation();
    canvas->clearAnnotations(nullptr);
    canvas->saveDefaultAnnotationDataAndWait();
    EXPECT_EQ(counts(standard), "0 0 0");
}

TEST_F(EditablePictures, AFileThatIsMissingAnswersFalseAndMovesNothing)
{
    canvas->enterFlipchartEditingMode(1);

    EXPECT_FALSE(canvas->loadAnnotationData(dataPath("Tablet/Flipchart/none.data"), false));

    EXPECT_EQ(mode(), flipchart);
}

TEST_F(EditablePictures, EveryKindOfAnotherProgramsFileComesBackInactive)
{
    copyFixture("every_kind.dat", defaultFile());
    desk.files().setAge(defaultFile(), 0.0);

    restart();

    EXPECT_THAT(kindsOf(annotations()),
                ElementsAre("PencilAnnotation", "HighlighterAnnotation", "EraserAnnotation",
                            "EllipseAnnotation", "RectangleAnnotation", "TextAnnotation",
                            "LineAnnotation", "StampAnnotation"));
    for (const auto &annotation : annotations()) {
        EXPECT_FALSE(annotation->isActive()) << annotation->className();
        EXPECT_EQ(annotation->containerView(), nullptr) << annotation->className();
    }
    const auto text = std::dynamic_pointer_cast<TextAnnotation>(annotations()[5]);
    EXPECT_THAT(text->lines(), ElementsAre(u"Gr\u00fc\u00dfe", u""));
    EXPECT_EQ(annotations()[6]->annotationStyle(), 2);
    EXPECT_EQ(std::dynamic_pointer_cast<StampAnnotation>(annotations()[7])->stampType(), "smile");
    EXPECT_EQ(counts(standard), "8 3 2");
    EXPECT_THAT(kindsOf(*clearedScreens()[2]), ElementsAre("LineAnnotation"));
    EXPECT_THAT(kindsOf(undoHistory()), ElementsAre("TextAnnotation", "Annotation"));
    drain();
}

TEST_F(EditablePictures, WhatEveryKindWritesComesBackTheSame)
{
    copyFixture("every_kind.dat", defaultFile());
    desk.files().setAge(defaultFile(), 0.0);
    restart();
    canvas->saveDefaultAnnotationDataAndWait();
    const platform::Data first = bytesOf(defaultFile());

    restart();
    canvas->saveDefaultAnnotationDataAndWait();

    EXPECT_EQ(bytesOf(defaultFile()), first);
    EXPECT_EQ(counts(standard), "8 3 2");
}

TEST_F(EditablePictures, AListThatTheFileLacksStaysAsItWas)
{
    drawALittle();
    const std::string data = dataPath("only_undone.dat");
    copyFixture("only_undone.dat", data);
    const auto drawn = annotations();

    ASSERT_TRUE(canvas->loadAnnotationData(data, false));

    EXPECT_EQ(annotations(), drawn);
    EXPECT_EQ(counts(standard), "1 1 1");
    EXPECT_EQ(undoHistory()[0]->annotationType(), annotation_type::pen);
}

TEST_F(EditablePictures, OnlyTheListsOfTheFilesModeAreLookedAt)
{
    const std::string data = dataPath("all.dat");
    copyFixture("lists_of_all_modes.dat", data);

    ASSERT_TRUE(canvas->loadAnnotationData(data, false)) << "the snapshot's list is damaged";

    EXPECT_EQ(counts(standard), "1 0 0");
    EXPECT_EQ(counts(flipchart), "2 0 0");
    EXPECT_EQ(counts(snapshot), "none");
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, "");
}

TEST_F(EditablePictures, AFileWithoutAModeIsOneOfStandardMode)
{
    const std::string data = dataPath("without_mode.dat");
    copyFixture("without_mode.dat", data);
    canvas->enterFlipchartEditingMode(1);

    ASSERT_TRUE(canvas->loadAnnotationData(data, false));

    EXPECT_EQ(mode(), standard);
    EXPECT_EQ(counts(standard), "1 0 0");
}

TEST_F(EditablePictures, TheEraserIsLaidAsideWhenAPageIsBroughtBack)
{
    const std::string data = dataPath("all.dat");
    copyFixture("lists_of_all_modes.dat", data);
    use(annotation_type::eraser);
    forget();

    ASSERT_TRUE(canvas->loadAnnotationData(data, false));

    EXPECT_THAT(session.calls, Contains("selectDefaultTool"));
}

} // namespace
} // namespace orv::test
