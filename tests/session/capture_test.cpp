#include "SessionDesk.h"

#include "canvas/RawDataFiles.h"
#include "platform/foundation/Exception.h"
#include "platform/raster/Pictures.h"
#include "session/ScreenPictures.h"
#include "support/NotedEffects.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace orv::test {
namespace {

namespace fs = std::filesystem;
using platform::Rect;
using platform::Screen;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::uint32_t kDesktop = 0x3366AA;

class Capture : public SessionDesk {
protected:
    [[nodiscard]] static fs::path userFolder() { return AppConstants::instance().AppUserDataPath; }
    [[nodiscard]] std::uint32_t pixelOf(const std::string &path, int x, int y)
    {
        const auto picture = platform::readPicture(path);
        EXPECT_TRUE(picture) << path;
        return picture ? picture->pixel(x, y) & 0xFFFFFFU : 0;
    }
    static bool isNear(std::uint32_t color, std::uint32_t wanted)
    {
        for (const unsigned shift : {0U, 8U, 16U}) {
            const int a = static_cast<int>((color >> shift) & 0xFFU);
            const int b = static_cast<int>((wanted >> shift) & 0xFFU);
            if (std::abs(a - b) > 12) {
                return false;
            }
        }
        return true;
    }
    /// A stroke so wide that its middle survives any picture compression.
    void wideStroke()
    {
        manager->handleSetToolRequest({8, 0, 80.0F, 0, 0xFFDC0000});
        localStroke({600.0, 450.0}, {800.0, 450.0});
    }
    [[nodiscard]] std::vector<std::string> filesIn(const char *folder) const
    {
        std::vector<std::string> names;
        for (const auto &entry : fs::recursive_directory_iterator(userFolder() / folder)) {
            if (entry.is_regular_file()) {
                names.push_back(fs::relative(entry.path(), userFolder() / folder).string());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    void logEverything()
    {
        OrvFrameworkLogger::shared().setStandardOutput(true);
        OrvFrameworkLogger::shared().setLevel("OrvAnnotation", 4);
    }
};

TEST_F(Capture, ASnapshotIsAPictureItsCleanBackgroundAndItsData)
{
    open(17);
    wideStroke();

    const std::string path = manager->saveNewSnapshot();

    EXPECT_EQ(path, (userFolder() / "Snapshot" / "IMG 2026-01-02 03-04-05.jpg").string());
    EXPECT_THAT(filesIn("Snapshot"), ElementsAre(".RawData/IMG 2026-01-02 03-04-05.RawBG",
                                                 ".RawData/IMG 2026-01-02 03-04-05.data",
                                                 "IMG 2026-01-02 03-04-05.jpg"));
    EXPECT_TRUE(isNear(pixelOf(path, 700, 450), 0xDC0000));
    EXPECT_TRUE(isNear(pixelOf(path, 100, 100), kDesktop));
    const RawDataFiles raw(path);
    EXPECT_TRUE(isNear(pixelOf(raw.background, 700, 450), kDesktop)) << "no ink on it";
    EXPECT_EQ(annotationCount(), 1U) << "the canvas keeps what is on it";
}

TEST_F(Capture, ASnapshotOpensAgainWithItsInkToEdit)
{
    open(17);
    wideStroke();
    const std::string path = manager->saveNewSnapshot();
    canvas().clearForNewAnnotations();

    canvas().enterSnapshotEditingModeWithImageFile(path);

    EXPECT_EQ(canvas().annotationModeKey(), "AnnotationModeSnapshot");
    EXPECT_EQ(annotationCount(), 1U);
    EXPECT_EQ(canvas().paths().snapshotImageFilePath, RawDataFiles(path).background);
    EXPECT_TRUE(canvas().isEditMode());
    canvas().undoAnnotation();
    EXPECT_EQ(annotationCount(), 0U);
}

TEST_F(Capture, ASnapshotThatIsEditedKeepsItsBackgroundAndItsPlace)
{
    open(17);
    const std::string path = manager->saveNewSnapshot();
    canvas().enterSnapshotEditingModeWithImageFile(path);
    wideStroke();
    const RawDataFiles raw(path);
    const auto before = fs::last_write_time(raw.background);
    const auto data = fs::file_size(raw.data);

    EXPECT_EQ(manager->saveCurrentSnapshot(), path);

    EXPECT_EQ(fs::last_write_time(raw.background), before);
    EXPECT_GT(fs::file_size(raw.data), data);
    EXPECT_TRUE(isNear(pixelOf(path, 700, 450), 0xDC0000));
}

TEST_F(Capture, NoSnapshotToSaveIsNothing)
{
    open(17);
    EXPECT_EQ(manager->saveCurrentSnapshot(), std::nullopt);
    EXPECT_THAT(filesIn("Snapshot"), IsEmpty());
}

TEST_F(Capture, ASecondPageOfTheSameSecondTakesThePlaceOfTheFirst)
{
    open(17);
    manager->handleOthersMode(1, 0, true);
    wideStroke();
    const std::string first = manager->saveNewFlipchart(1, true);
    ASSERT_TRUE(isNear(pixelOf(first, 700, 450), 0xDC0000));

    EXPECT_EQ(manager->saveNewFlipchart(1, true), first);
    EXPECT_EQ(filesIn("Flipchart").size(), 2U);
    EXPECT_TRUE(isNear(pixelOf(first, 700, 450), 0xFFFFFF));
}

TEST_F(Capture, WithoutWindowsThereIsNothingToTake)
{
    make(17);
    EXPECT_EQ(manager->saveNewSnapshot(), "");
    EXPECT_EQ(manager->saveCurrentSnapshot(), std::nullopt);
    EXPECT_EQ(manager->saveNewFlipchart(1, true), "");
    manager->handleOthersMode(1, 0, true);
}

TEST_F(Capture, TheNameIsThatOfTheSecondOfTheSave)
{
    open(17);
    const std::string first = manager->saveNewSnapshot();
    wait(2.0);
    const std::string second = manager->saveNewSnapshot();
    EXPECT_NE(first, second);
    EXPECT_EQ(filesIn("Snapshot").size(), 6U);
}

TEST_F(Capture, TheClientIsToldOnceAPictureIsThere)
{
    open(17);
    EventLog events(17, {"snapshotTaken"});
    manager->handleDoSave(1);
    EXPECT_THAT(events.events, IsEmpty()) << "on the main thread's next turn";
    drain();
    EXPECT_THAT(events.events, ElementsAre("snapshotTaken 0 0"));
    for (const std::uint32_t action : {0U, 2U, 3U}) {
        manager->handleDoSave(action);
        drain();
    }
    EXPECT_EQ(events.events.size(), 1U);
}

TEST_F(Capture, AFlipchartPageIsSavedAndEmptied)
{
    open(17);
    manager->handleOthersMode(1, 0, true);
    EXPECT_EQ(canvas().annotationModeKey(), "AnnotationModeFlipchart");
    EXPECT_EQ(canvas().currentBackdrop(), 1) << "a white sheet without a chooser";
    wideStroke();

    const std::string path = manager->saveNewFlipchart(1, true);

    EXPECT_EQ(path, (userFolder() / "Flipchart" / "IMG 2026-01-02 03-04-05.jpg").string());
    EXPECT_THAT(filesIn("Flipchart"),
                ElementsAre(".RawData/IMG 2026-01-02 03-04-05.data", "IMG 2026-01-02 03-04-05.jpg"))
        << "a page has no clean background";
    EXPECT_TRUE(isNear(pixelOf(path, 700, 450), 0xDC0000));
    EXPECT_TRUE(isNear(pixelOf(path, 100, 100), 0xFFFFFF));
    EXPECT_EQ(annotationCount(), 0U);

    canvas().enterFlipchartEditingModeWithImageFile(path);
    EXPECT_EQ(annotationCount(), 1U);
    EXPECT_EQ(canvas().currentBackdrop(), 1);
    EXPECT_EQ(canvas().paths().flipchartImageFilePath, path);
}

TEST_F(Capture, APageThatWasSavedBeforeIsSavedInItsPlace)
{
    open(17);
    manager->handleOthersMode(1, 0, true);
    wideStroke();
    manager->saveCurrentFlipchart(1, true);
    ASSERT_EQ(filesIn("Flipchart").size(), 2U) << "a new page gets a name";
    const std::string path = (userFolder() / "Flipchart" / "IMG 2026-01-02 03-04-05.jpg").string();
    canvas().enterFlipchartEditingModeWithImageFile(path);
    wait(5.0);
    wideStroke();
    manager->saveCurrentFlipchart(1, true);
    EXPECT_EQ(filesIn("Flipchart").size(), 2U);
}

TEST_F(Capture, LeavingAFlipchartSavesItTellsTheClientAndReturns)
{
    open(17);
    manager->handleOthersMode(1, 0, true);
    wideStroke();
    EventLog events(17, {"switchModeEvent"});
    manager->handleOthersMode(1, 0, false);
    EXPECT_EQ(canvas().annotationModeKey(), "AnnotationModeStandard");
    EXPECT_EQ(filesIn("Flipchart").size(), 2U);
    EXPECT_EQ(events.events.size(), 2U);

    manager->handleOthersMode(1, 0, true);
    manager->handleOthersMode(1, 0, false);
    EXPECT_EQ(filesIn("Flipchart").size(), 2U) << "an empty page is not kept";
}

TEST_F(Capture, TheSnapshotsPictureShrinksIntoTheGalleryButtonAndHoldsTheMainThread)
{
    open(12);
    const double before = desk.mainThread().now();
    manager->saveNewSnapshot();
    EXPECT_NEAR(desk.mainThread().now() - before, 900.0 / 768.0, 1e-3);

    const auto &view = canvas().subviews().back();
    EXPECT_TRUE(view->isHidden()) << "it stays, faded out";
    const Rect button = manager->outlets().button("galleryButton")->frame();
    const auto toolbox = manager->outlets().toolboxWindow->frame().origin;
    EXPECT_EQ(view->frame(), button.offsetBy(toolbox.x, toolbox.y));
}

TEST_F(Capture, InTheSecondGenerationItShrinksIntoTheMiddle)
{
    open(17);
    manager->saveNewSnapshot();
    EXPECT_EQ(canvas().subviews().back()->frame(), Rect::make(720.0, 450.0, 0.0, 0.0));
}

TEST_F(Capture, APageSlidesOffByItselfInTheFirstGenerationOnly)
{
    const std::vector<std::pair<std::int32_t, Rect>> ways{
        {0, Rect::make(-1440.0, 0.0, 1440.0, 900.0)},
        {1, Rect::make(1440.0, 0.0, 1440.0, 900.0)},
        {2, Rect::make(0.0, -900.0, 1440.0, 900.0)},
        {3, Rect::make(0.0, 900.0, 1440.0, 900.0)},
        {7, Rect::make(1440.0, 0.0, 1440.0, 900.0)}};
    open(12);
    for (const auto &[direction, end] : ways) {
        canvas().enterFlipchartEditingMode(1);
        localStroke({600.0, 450.0}, {800.0, 450.0});
        const double before = desk.mainThread().now();
        manager->saveNewFlipchart(direction, true);
        EXPECT_EQ(desk.mainThread().now(), before) << "nobody waits";
        EXPECT_EQ(annotationCount(), 0U);
        const auto view = canvas().subviews().back();
        const double seconds = direction == 2 || direction == 3 ? 900.0 / 768.0 : 1440.0 / 1024.0;
        wait(seconds - 0.1);
        EXPECT_NE(view->frame(), end) << direction;
        wait(0.2);
        EXPECT_EQ(view->frame(), end) << direction;
        EXPECT_FALSE(manager->isAnimating());
    }
}

TEST_F(Capture, OfAllAnimationsOnlyTheLastKeepsItsPicture)
{
    open(12);
    manager->saveNewSnapshot();
    manager->saveNewSnapshot();
    const auto &views = canvas().subviews();
    ASSERT_EQ(views.size(), 2U);
    const auto hasPicture = [](const std::shared_ptr<platform::View> &view) {
        return dynamic_cast<platform::ImageView &>(*view).image() != nullptr;
    };
    EXPECT_FALSE(hasPicture(views.front()));
    EXPECT_TRUE(hasPicture(views.back()));
}

TEST_F(Capture, InTheSecondGenerationAPageJustGoes)
{
    open(17);
    canvas().enterFlipchartEditingMode(1);
    wideStroke();
    manager->saveNewFlipchart(1, true);
    EXPECT_THAT(canvas().subviews(), IsEmpty());
}

TEST_F(Capture, TheLaserPointerIsOffForThePictureAndOnAgainAlsoWhenItFails)
{
    open(17);
    std::vector<std::string> calls;
    canvas().setEffects(std::make_unique<NotedEffects>(calls));
    manager->saveNewSnapshot();
    EXPECT_THAT(calls, IsEmpty()) << "it was not on";

    canvas().effects()->doLaserPointer(true);
    calls.clear();
    manager->saveNewSnapshot();
    EXPECT_THAT(calls, ElementsAre("laser off", "laser on"));

    calls.clear();
    desk.screenCapture().setFails(true);
    manager->saveNewFlipchart(1, true);
    EXPECT_THAT(calls, ElementsAre("laser off", "laser on"));
}

TEST_F(Capture, WithoutAPictureNothingIsSentShownOrEmptied)
{
    open(12);
    canvas().enterFlipchartEditingMode(1);
    localStroke({600.0, 450.0}, {800.0, 450.0});
    EventLog events(12, {"snapshotTaken"});
    desk.screenCapture().setFails(true);
    logEverything();

    manager->saveNewSnapshot();
    manager->saveNewFlipchart(1, true);

    EXPECT_THAT(events.events, IsEmpty());
    EXPECT_THAT(canvas().subviews(), IsEmpty());
    EXPECT_EQ(annotationCount(), 1U);
    EXPECT_THAT(filesIn("Snapshot"), IsEmpty()) << "no data without its background";
    EXPECT_THAT(systemLog, Contains(HasSubstr("was not written: the screen gave no picture")));
}

TEST_F(Capture, AFolderThatCannotBeWrittenIsLoggedAndLosesNothing)
{
    open(17);
    wideStroke();
    fs::remove_all(userFolder());
    std::ofstream(userFolder()) << "a file in the way";
    EventLog events(17, {"snapshotTaken"});
    logEverything();

    manager->saveNewSnapshot();
    drain();

    EXPECT_THAT(events.events, IsEmpty());
    EXPECT_EQ(annotationCount(), 1U);
    EXPECT_THAT(systemLog, Contains(HasSubstr(".jpg was not written")));
}

TEST_F(Capture, AFolderThatWasRemovedWhileOpenComesBackWithTheSave)
{
    open(17);
    fs::remove_all(userFolder().parent_path());
    manager->saveNewSnapshot();
    drain();
    EXPECT_EQ(filesIn("Snapshot").size(), 3U);
}

TEST_F(Capture, AWindowIsFoundByItsNameTheHighestFirst)
{
    EXPECT_THROW(static_cast<void>(getWindowID(0)), platform::Exception);
    open(12);
    const int toolbox = manager->outlets().toolboxWindow->windowNumber();
    const int overlay = manager->outlets().overlayWindow->windowNumber();
    platform::Window stranger(Rect::make(0.0, 0.0, 10.0, 10.0), 0);
    stranger.setTitle("Something else");
    stranger.setLevel(2000);
    stranger.orderFront();
    EXPECT_EQ(getWindowID(0), toolbox);
    EXPECT_EQ(getWindowID(1), overlay);
    EXPECT_EQ(getWindowID(2), toolbox) << "past the end it is the first";
    manager->outlets().toolboxWindow->orderOut();
    EXPECT_EQ(getWindowID(1), overlay) << "the only one";
}

TEST_F(Capture, OnASecondDisplayTheRectangleIsTurnedOver)
{
    const Screen first{1, Rect::make(0.0, 0.0, 1440.0, 900.0), 1.0};
    const Screen second{2, Rect::make(1440.0, 100.0, 800.0, 600.0), 1.0};
    desk.displays().setDisplays({first, second});
    EXPECT_EQ(SnapshotWithScrnRect(first), first.frame);
    EXPECT_EQ(SnapshotWithScrnRect(second), Rect::make(1440.0, 200.0, 800.0, 600.0));
    EXPECT_EQ(SnapshotWithScrnRect(std::nullopt), Rect::make(0.0, 900.0, 0.0, 0.0));
}

TEST_F(Capture, InkOnAnotherDisplayIsNotInTheCleanBackground)
{
    desk.displays().setDisplays({{1, Rect::make(0.0, 0.0, 1440.0, 900.0), 1.0},
                                 {2, Rect::make(1440.0, 0.0, 800.0, 600.0), 1.0}});
    make(17);
    manager->setDisplayID(2);
    manager->showWindow();
    manager->openAnnotationToolbox();
    manager->openAnnotationToolbox();
    drain();
    manager->handleSetToolRequest({8, 0, 80.0F, 0, 0xFFDC0000});
    localStroke({1700.0, 300.0}, {1900.0, 300.0});

    const std::string path = manager->saveNewSnapshot();

    EXPECT_EQ(platform::readPicture(path)->size(), (platform::Size{800.0, 600.0}));
    EXPECT_TRUE(isNear(pixelOf(path, 360, 300), 0xDC0000));
    EXPECT_TRUE(isNear(pixelOf(RawDataFiles(path).background, 360, 300), kDesktop));
}

TEST_F(Capture, TheCleanBackgroundLiesBelowTheCanvasesOfAllDisplays)
{
    desk.displays().setDisplays({{1, Rect::make(0.0, 0.0, 1440.0, 900.0), 1.0},
                                 {2, Rect::make(1440.0, 0.0, 800.0, 600.0), 1.0}});
    open(17);
    wideStroke();

    const std::string path = manager->saveNewSnapshot();

    EXPECT_TRUE(isNear(pixelOf(path, 700, 450), 0xDC0000));
    EXPECT_TRUE(isNear(pixelOf(RawDataFiles(path).background, 700, 450), kDesktop))
        << "the other display's canvas, which is above this one, is not where to look from";
}

TEST_F(Capture, ModesThatHaveNothingToShowYetDoNoHarm)
{
    open(17);
    std::vector<std::string> calls;
    canvas().setEffects(std::make_unique<NotedEffects>(calls));
    manager->handleOthersMode(1, 1, true);
    manager->handleOthersMode(1, 1, false);
    manager->handleOthersMode(2, 1, true);
    manager->handleOthersMode(5, 0, true);
    EXPECT_EQ(canvas().annotationModeKey(), "AnnotationModeStandard");
    canvas().setIsEditMode(false);
    manager->handleOthersMode(2, 1, false);
    EXPECT_TRUE(canvas().isEditMode());
    manager->handleOthersMode(3, 0, true);
    manager->handleOthersMode(4, 9, false);
    manager->leaveOthersMode();
    EXPECT_THAT(calls, ElementsAre("spotlight on", "cover off", "spotlight off", "cover off"));
}

} // namespace
} // namespace orv::test
