#include "CanvasDesk.h"

#include "canvas/RawDataFiles.h"
#include "platform/raster/Pictures.h"
#include "support/EventLog.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace orv::test {
namespace {

using platform::Color;
using platform::Image;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char *kStandard = AnnotationsView::annotationModeKeyStandard;
constexpr const char *kSnapshot = AnnotationsView::annotationModeKeySnapshot;
constexpr const char *kFlipchart = AnnotationsView::annotationModeKeyFlipchart;
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;

class Modes : public CanvasDesk {
protected:
    /// A picture file of one colour in the device's folder of snapshots.
    std::string picture(const std::string &name, int width, int height, std::uint32_t color = kRed)
    {
        const std::string folder = home.path() + "/Documents/Orvane Whiteboard/Tablet/Snapshot/";
        std::filesystem::create_directories(folder);
        Image image(width, height);
        std::fill_n(image.data(), width * height, color);
        EXPECT_TRUE(platform::writePng(folder + name, image));
        return folder + name;
    }
    void ink() { stroke({10.0, 10.0}, {20.0, 20.0}); }
    [[nodiscard]] bool hasLists(const char *key) const
    {
        return canvas->document().annotations(key) != nullptr &&
               canvas->document().clearedScreens(key) != nullptr &&
               canvas->document().undoHistory(key) != nullptr;
    }
    /// Of the backdrop, from the top left.
    [[nodiscard]] std::uint32_t backdropAt(int x, int y) const
    {
        return window->backgroundPattern()->pixel(x, y);
    }
};

/// The byte fields of a mode's notice, in the order in which they are posted.
class ModeNotices {
public:
    ModeNotices()
    {
        platform::NotificationCenter::local().addObserver(
            this, eventName("switchModeEvent", 16),
            [this](std::string_view, const EventDictionary &event) {
                const auto data = getDictDataByKey(&event, "rParam");
                std::string text = std::to_string(getDictIntByKey(&event, "wParam")) + " " +
                                   std::to_string(getDictIntByKey(&event, "lParam"));
                for (const std::uint8_t byte : data.value_or(std::vector<std::uint8_t>{})) {
                    text += " " + std::to_string(byte);
                }
                notices.push_back(text);
            });
    }
    ~ModeNotices() { platform::NotificationCenter::local().removeObserver(this); }
    ModeNotices(const ModeNotices &) = delete;
    ModeNotices &operator=(const ModeNotices &) = delete;

    std::vector<std::string> notices;
};

std::vector<std::string> noticeOf(std::uint32_t mode, std::uint32_t sub, std::uint32_t toolbar,
                                  std::uint32_t show, bool extFlag, bool ackFlag)
{
    ModeNotices log;
    sendSwitchModeAckInfo(mode, sub, toolbar, show, extFlag, ackFlag);
    return log.notices;
}

TEST_F(Modes, APictureWithoutDataOpensPlainlyWithEmptyLists)
{
    const std::string path = picture("one.png", 100, 100);
    ink();
    ModeNotices log;
    canvas->enterSnapshotEditingModeWithImageFile(path);

    EXPECT_EQ(mode(), kSnapshot);
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, path);
    EXPECT_EQ(canvas->paths().snapshotImageFilePathPendingLoad, path);
    EXPECT_TRUE(hasLists(kSnapshot));
    EXPECT_FALSE(canvas->hasAnnotations());
    EXPECT_EQ(canvas->document().annotationCount(kStandard), 1U) << "kept for the way back";
    EXPECT_TRUE(canvas->isChange()) << "an entry does not reset it";
    const auto notices = log.notices;
    EXPECT_EQ(notices, noticeOf(2, 1, 2, 1, true, true));
}

TEST_F(Modes, StandardModeFindsItsInkAgainAndNothingElse)
{
    ink();
    canvas->enterFlipchartEditingMode(1);
    ink();
    ink();
    ModeNotices log;
    canvas->enterStandardAnnotationMode();

    EXPECT_EQ(annotations().size(), 1U);
    EXPECT_FALSE(hasLists(kFlipchart));
    EXPECT_FALSE(hasLists(kSnapshot));
    EXPECT_FALSE(canvas->isChange());
    EXPECT_FALSE(canvas->isPressed());
    EXPECT_EQ(canvas->currentBackdrop(), 0);
    EXPECT_EQ(window->backgroundColor(), Color::clear());
    const auto notices = log.notices;
    EXPECT_EQ(notices, noticeOf(0, 0, 1, 1, true, false));
}

TEST_F(Modes, AnEraserGivesWayBeforeAPageOrASnapshotLoads)
{
    canvas->setCurrentTool(std::make_shared<FakeTool>(annotation_type::eraser));
    const std::string path = picture("one.png", 10, 10);
    canvas->enterFlipchartEditingMode(1);
    EXPECT_EQ(session.count("selectDefaultTool"), 1);
    canvas->enterSnapshotEditingModeWithImageFile(path);
    EXPECT_EQ(session.count("selectDefaultTool"), 2);
    canvas->enterFlipchartEditingModeWithImageFile(path);
    EXPECT_EQ(session.count("selectDefaultTool"), 3);
}

TEST_F(Modes, AFlipchartWithInkIsSavedOnTheWayToAnotherPage)
{
    const std::string path = picture("one.png", 10, 10);
    canvas->enterFlipchartEditingMode(1);
    canvas->enterSnapshotEditingModeWithImageFile(path);
    EXPECT_EQ(session.count("save page 2 animated"), 0) << "nothing on it";

    canvas->enterFlipchartEditingMode(1);
    ink();
    canvas->enterFlipchartEditingModeWithImageFile(path);
    EXPECT_EQ(session.count("save page 2 animated"), 1);
    EXPECT_EQ(canvas->paths().flipchartImageFilePath, path);
    EXPECT_EQ(mode(), kFlipchart);
}

TEST_F(Modes, AChangedSnapshotIsNotGivenUpUnasked)
{
    const std::string first = picture("one.png", 10, 10);
    const std::string second = picture("two.png", 10, 10, kWhite);
    canvas->enterSnapshotEditingModeWithImageFile(first);
    ink();
    const auto before = canvas->document().annotations(kSnapshot);
    const auto backdrop = window->backgroundPattern();

    canvas->enterSnapshotEditingModeWithImageFile(second);
    EXPECT_EQ(session.count(std::string("confirm ") + kSnapshot), 1);
    canvas->enterFlipchartEditingModeWithImageFile(second);
    EXPECT_EQ(session.count(std::string("confirm ") + kFlipchart), 1);

    EXPECT_EQ(mode(), kSnapshot);
    EXPECT_EQ(canvas->document().annotations(kSnapshot), before);
    EXPECT_EQ(window->backgroundPattern(), backdrop);
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, first);
    EXPECT_EQ(canvas->paths().snapshotImageFilePathPendingLoad, second);

    canvas->enterSnapshotEditingModeWithImageFilePendingLoad();
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, second);
    EXPECT_FALSE(canvas->hasAnnotations());
}

TEST_F(Modes, ASpecialModeAndAnUnchangedSnapshotAskNothing)
{
    const std::string first = picture("one.png", 10, 10);
    const std::string second = picture("two.png", 10, 10);
    canvas->enterSnapshotEditingModeWithImageFile(first);
    ink();
    session.specialMode = 1;
    canvas->enterSnapshotEditingModeWithImageFile(second);
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, second);

    session.specialMode = 0;
    ink();
    canvas->setIsChange(false);
    canvas->enterSnapshotEditingModeWithImageFile(first);
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, first);
    EXPECT_THAT(session.calls, Not(Contains(::testing::StartsWith("confirm"))));
}

TEST_F(Modes, AWipedSnapshotCountsAsChangedToo)
{
    canvas->enterSnapshotEditingModeWithImageFile(picture("one.png", 10, 10));
    ink();
    canvas->clearAnnotations(nullptr);
    canvas->enterSnapshotEditingModeWithImageFile(picture("two.png", 10, 10));
    EXPECT_EQ(session.count(std::string("confirm ") + kSnapshot), 1);
}

TEST_F(Modes, ASnapshotIsLeftOnlyWithoutChanges)
{
    canvas->enterSnapshotEditingModeWithImageFile(picture("one.png", 10, 10));
    canvas->setIsChange(true);
    EXPECT_FALSE(canvas->exitSnapshotEditingModeWithoutConfirmation());
    EXPECT_EQ(mode(), kSnapshot);
    canvas->setIsChange(false);
    EXPECT_TRUE(canvas->exitSnapshotEditingModeWithoutConfirmation());
    EXPECT_EQ(mode(), kStandard);
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, "");
}

TEST_F(Modes, ANewPageDiscardsTheListsOfTheOldOne)
{
    canvas->enterFlipchartEditingMode(1);
    ink();
    ModeNotices log;
    canvas->enterFlipchartEditingMode(2);
    EXPECT_THAT(annotations(), IsEmpty());
    EXPECT_TRUE(hasLists(kFlipchart));
    EXPECT_EQ(canvas->currentBackdrop(), 2);
    const auto notices = log.notices;
    EXPECT_EQ(notices, noticeOf(1, 0, 1, 1, true, false));
}

TEST_F(Modes, WhatMayNotBeEditedIsToldSo)
{
    canvas->setIsEditMode(false);
    ModeNotices log;
    canvas->enterFlipchartEditingMode(1);
    canvas->enterSnapshotEditingModeNotify();
    std::vector<std::string> expected = noticeOf(1, 0, 4, 1, true, false);
    expected.push_back(noticeOf(2, 1, 3, 1, true, true).front());
    EXPECT_EQ(std::vector<std::string>(log.notices.begin(), log.notices.begin() + 2), expected);
    EXPECT_THAT(session.calls, Contains("fixed menu"));
}

TEST_F(Modes, NoticesFollowTheModeOnTheWayInAndOut)
{
    const auto notices = [this](bool in) {
        ModeNotices log;
        if (in) {
            canvas->enterCurrentEditingModeNotify();
        } else {
            canvas->leaveCurrentEditingModeNotify();
        }
        return log.notices;
    };
    EXPECT_EQ(notices(true), noticeOf(0, 0, 1, 1, true, false));
    EXPECT_THAT(notices(false), IsEmpty());
    canvas->setAnnotationModeKey(kSnapshot);
    EXPECT_EQ(notices(true), noticeOf(2, 1, 2, 1, true, true));
    EXPECT_EQ(notices(false), noticeOf(2, 0, 1, 0, true, true));
    canvas->setAnnotationModeKey(kFlipchart);
    EXPECT_EQ(notices(true), noticeOf(1, 0, 1, 1, true, false));
    EXPECT_EQ(notices(false), noticeOf(1, 0, 1, 0, true, true));
}

TEST_F(Modes, ConfirmingAPageSavesItOnlyWithInk)
{
    canvas->enterFlipchartEditingMode(1);
    canvas->confirmSaveFlipchart();
    EXPECT_EQ(session.count("save page 3 animated"), 0);
    ink();
    canvas->confirmSaveFlipchart();
    EXPECT_EQ(session.count("save page 3 animated"), 1);
}

TEST_F(Modes, ATallPictureIsCentredBetweenWhiteBars)
{
    canvas->setCurrentBackdropUsingImageFile(picture("tall.png", 900, 1800));

    ASSERT_EQ(window->backgroundPattern()->size(), (platform::Size{1440.0, 900.0}));
    EXPECT_EQ(backdropAt(494, 450), kWhite);
    EXPECT_EQ(backdropAt(496, 450), kRed);
    EXPECT_EQ(backdropAt(944, 450), kRed);
    EXPECT_EQ(backdropAt(946, 450), kWhite);
    EXPECT_EQ(backdropAt(720, 0), kRed);
}

TEST_F(Modes, AWidePictureFillsTheWidth)
{
    canvas->setCurrentBackdropUsingImageFile(picture("wide.png", 2880, 900));
    EXPECT_EQ(backdropAt(0, 450), kRed);
    EXPECT_EQ(backdropAt(720, 224), kWhite);
    EXPECT_EQ(backdropAt(720, 226), kRed);
}

TEST_F(Modes, ASmallPictureKeepsItsSizeAndStandsInTheMiddle)
{
    canvas->setCurrentBackdropUsingImageFile(picture("small.png", 40, 20));
    EXPECT_EQ(backdropAt(700, 440), kRed);
    EXPECT_EQ(backdropAt(739, 459), kRed);
    EXPECT_EQ(backdropAt(699, 450), kWhite);
    EXPECT_EQ(backdropAt(740, 450), kWhite);
    EXPECT_EQ(backdropAt(720, 460), kWhite);
}

TEST_F(Modes, APictureThatCannotBeReadLeavesAWhiteSheet)
{
    const std::string path = home.path() + "/no picture.png";
    std::ofstream(path) << "text";
    canvas->setCurrentBackdropUsingImageFile(path);
    EXPECT_EQ(backdropAt(720, 450), kWhite);
    canvas->setCurrentBackdropUsingImageFile("/nowhere.png");
    EXPECT_EQ(backdropAt(0, 0), kWhite);
}

TEST_F(Modes, PaperAndDrawingsFillTheCanvasAndOtherNumbersAreNone)
{
    const auto shows = [this](std::int32_t number) {
        canvas->setCurrentBackdrop(number);
        return window->backgroundPattern() != nullptr;
    };
    for (const std::int32_t number : {2, 3, 4, 5, 6, 8}) {
        ASSERT_TRUE(shows(number)) << number;
        EXPECT_EQ(window->backgroundPattern()->size(), (platform::Size{1440.0, 900.0})) << number;
        EXPECT_EQ(backdropAt(1439, 0) >> 24U, 0xFFU) << number << " is opaque";
    }
    canvas->setFlipchartImageFilePath("/page.jpg");
    for (const std::int32_t number : {7, 9, -1, 1000}) {
        EXPECT_FALSE(shows(number)) << number;
        EXPECT_EQ(window->backgroundColor(), Color::clear()) << number;
        EXPECT_EQ(canvas->paths().flipchartImageFilePath, "/page.jpg");
    }
    EXPECT_FALSE(shows(0));
    EXPECT_EQ(canvas->paths().flipchartImageFilePath, "");
    EXPECT_FALSE(shows(1));
    EXPECT_EQ(window->backgroundColor(), Color::white());
}

TEST_F(Modes, TheDrawingGoesThroughOneFileAndShowsEvenWithoutIt)
{
    canvas->setCurrentBackdrop(6);
    EXPECT_TRUE(std::filesystem::exists(home.path() + "/tmp/.whiteboard.jpg"));
    const auto drawn = window->backgroundPattern();

    std::filesystem::remove(home.path() + "/tmp/.whiteboard.jpg");
    std::filesystem::create_directory(home.path() + "/tmp/.whiteboard.jpg");
    canvas->setCurrentBackdrop(8);
    ASSERT_TRUE(window->backgroundPattern());
    EXPECT_NE(*window->backgroundPattern(), *drawn);
}

TEST_F(Modes, AUsersPictureStandsBehindAPageOnceItIsNamed)
{
    canvas->setBackdropImageFilePath(picture("mine.png", 1440, 900));
    canvas->enterFlipchartEditingMode(7);
    EXPECT_EQ(canvas->currentBackdrop(), 7);
    EXPECT_EQ(backdropAt(720, 450), kRed);
}

TEST_F(Modes, ABackdropIsMadeAnewAtTheSizeOfANewDisplay)
{
    canvas->enterFlipchartEditingMode(6);
    window->setFrame(platform::Rect::make(0.0, 0.0, 800.0, 600.0), false);
    canvas->setFrame(platform::Rect::make(0.0, 0.0, 800.0, 600.0));
    canvas->resetDisplay();
    EXPECT_EQ(window->backgroundPattern()->size(), (platform::Size{800.0, 600.0}));

    canvas->enterSnapshotEditingModeWithImageFile(picture("one.png", 1600, 1200));
    window->setFrame(platform::Rect::make(0.0, 0.0, 400.0, 300.0), false);
    canvas->resetDisplay();
    EXPECT_EQ(window->backgroundPattern()->size(), (platform::Size{400.0, 300.0}));
    EXPECT_EQ(backdropAt(200, 150), kRed);

    canvas->setBackdropImageFilePath(picture("mine.png", 400, 300, 0xFF00FF00));
    canvas->enterFlipchartEditingMode(7);
    canvas->resetDisplay();
    EXPECT_EQ(backdropAt(200, 150), 0xFF00FF00);

    canvas->enterStandardAnnotationMode();
    canvas->resetDisplay();
    EXPECT_EQ(window->backgroundPattern(), nullptr);
}

TEST_F(Modes, AnEraserShowsTheBackdropAndNeverTheDesktop)
{
    AnnotationRegistry::shared();
    canvas->enterFlipchartEditingMode(1);
    canvas->setIsHidden(false);
    stroke({100.0, 100.0}, {200.0, 100.0});
    drain();
    const auto surface = desk.windowServer().surface(window->windowNumber());
    EXPECT_EQ(surface->contents()->pixel(5, 5), kWhite);

    canvas->enterFlipchartEditingMode(2);
    stroke({100.0, 100.0}, {200.0, 100.0});
    drain();
    EXPECT_EQ(surface->contents()->pixel(5, 5) >> 24U, 0xFFU);
}

TEST(RawData, LiesBesideThePicture)
{
    const RawDataFiles raw("/a/Snapshot/IMG 2026-01-02 03-04-05.jpg");
    EXPECT_EQ(raw.folder, "/a/Snapshot/.RawData");
    EXPECT_EQ(raw.data, "/a/Snapshot/.RawData/IMG 2026-01-02 03-04-05.data");
    EXPECT_EQ(raw.background, "/a/Snapshot/.RawData/IMG 2026-01-02 03-04-05.RawBG");
    EXPECT_EQ(stemOf("/a/b.c/d"), "d");
    EXPECT_EQ(stemOf("/a/.hidden"), ".hidden");
    EXPECT_EQ(folderOf("d"), "");
}

TEST_F(Modes, ASnapshotWithoutItsCleanBackgroundIsAPlainPicture)
{
    const std::string path = picture("one.png", 10, 10);
    const RawDataFiles raw(path);
    std::filesystem::create_directories(raw.folder);
    canvas->setAnnotationModeKey(kStandard);
    ink();
    canvas->saveSanpshotData(raw.data);
    canvas->enterSnapshotEditingModeWithImageFile(path);
    EXPECT_FALSE(canvas->hasAnnotations());
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, path);
}

TEST_F(Modes, DamagedDataLeavesThePictureToLookAtAndIsLogged)
{
    const std::string path = picture("one.png", 1440, 900);
    const RawDataFiles raw(path);
    std::filesystem::create_directories(raw.folder);
    std::ofstream(raw.data) << "no archive";
    std::ofstream(raw.background) << "";
    ink();

    canvas->enterSnapshotEditingModeWithImageFile(path);
    EXPECT_EQ(mode(), kSnapshot);
    EXPECT_EQ(backdropAt(720, 450), kRed);
    EXPECT_EQ(canvas->document().annotationCount(kStandard), 1U);

    canvas->setIsChange(false);
    canvas->enterFlipchartEditingModeWithImageFile(path);
    EXPECT_EQ(mode(), kFlipchart);
    EXPECT_EQ(backdropAt(720, 450), kRed);
    EXPECT_TRUE(hasLists(kFlipchart));
}

} // namespace
} // namespace orv::test
