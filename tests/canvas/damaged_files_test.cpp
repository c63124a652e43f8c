#include "StorageDesk.h"

#include "canvas/CanvasSaver.h"
#include "platform/foundation/Exception.h"

#include <gmock/gmock.h>

#include <sys/resource.h>

#include <csignal>

// Files that can't be read, and places that can't be written.

namespace orv::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class DamagedFiles : public StorageDesk {
protected:
    /// Only what is reported as an error.
    void listenForErrors()
    {
        OrvFrameworkLogger::shared().setLevel("OrvAnnotation", 4);
        systemLog.clear();
    }
    void write(const std::string &path, const std::string &text)
    {
        ASSERT_TRUE(desk.files().writeAtomically(path, platform::Data(text.begin(), text.end())));
    }
    /// The session as it was before a load that fails.
    void expectUntouched(const std::string &data)
    {
        canvas->enterFlipchartEditingMode(1);
        canvas->setFlipchartImageFilePath("/a/page.jpg");
        stroke({1.0, 1.0}, {2.0, 2.0});

        EXPECT_THROW(static_cast<void>(canvas->loadAnnotationData(data, false)),
                     platform::Exception);

        EXPECT_EQ(mode(), flipchart);
        EXPECT_EQ(counts(flipchart), "1 0 0");
        EXPECT_EQ(counts(standard), "0 0 0");
        EXPECT_EQ(canvas->currentBackdrop(), 1);
        EXPECT_EQ(canvas->paths().flipchartImageFilePath, "/a/page.jpg");
        EXPECT_TRUE(canvas->isChange());
    }
};

/// No file may grow beyond so many bytes while it lives: a disk that is full.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &former_);
        formerHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = former_;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, formerHandler_);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit former_{};
    void (*formerHandler_)(int) = nullptr;
};

TEST_F(DamagedFiles, AFullDiskLeavesTheOldFileAndTheInk)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->saveDefaultAnnotationDataAndWait();
    const platform::Data old = bytesOf(defaultFile());
    stroke({3.0, 3.0}, {4.0, 4.0});
    listenForErrors();
    {
        const FullDisk disk(64);
        canvas->saveDefaultAnnotationDataAndWait();
        canvas->saveDefaultAnnotationData();
        drain();
    }

    EXPECT_EQ(bytesOf(defaultFile()), old);
    EXPECT_EQ(counts(standard), "2 0 0");
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr(defaultFile() + " was not written"),
                                       HasSubstr(defaultFile() + " was not written")));
    EXPECT_THAT(filesIn(AppConstants::instance().DefaultAppDataPath), ElementsAre("save_iap.dat"));
    canvas->saveDefaultAnnotationDataAndWait();
    restart();
    EXPECT_EQ(counts(standard), "2 0 0") << "with room again, the next save holds all";
}

TEST_F(DamagedFiles, ASaveThatCannotBeEncodedLeavesTheOldFileAndSaysWhy)
{
    write(defaultFile(), "old");
    listenForErrors();

    saveAtOnce(
        {defaultFile(), "test", []() -> platform::Data { throw platform::Exception("too deep"); }});

    EXPECT_EQ(bytesOf(defaultFile()), (platform::Data{'o', 'l', 'd'}));
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr("too deep"),
                                       HasSubstr("test " + defaultFile() + " was not written")));
}

TEST_F(DamagedFiles, AFolderThatIsGoneIsLoggedAndTheInkStays)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    std::filesystem::remove_all(AppConstants::instance().DefaultAppDataPath);
    listenForErrors();

    canvas->saveDefaultAnnotationDataAndWait();
    canvas->saveSanpshotData(home.path() + "/none/one.data");
    canvas->saveFlipchartData(home.path() + "/none/two.data");

    EXPECT_THAT(
        systemLog,
        ElementsAre(
            HasSubstr("saveDefaultAnnotationData:] " + defaultFile() + " was not written"),
            HasSubstr("saveSanpshotData:] " + home.path() + "/none/one.data was not written"),
            HasSubstr("saveFlipchartData:] " + home.path() + "/none/two.data was not written")));
    EXPECT_EQ(counts(standard), "1 0 0");
}

TEST_F(DamagedFiles, AFileInTheWayOfTheFolderIsLoggedAndTheInkStays)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    std::filesystem::remove_all(AppConstants::instance().DefaultAppDataPath);
    write(home.path() + "/.local/share/Orvane Whiteboard", "in the way");
    listenForErrors();

    canvas->saveDefaultAnnotationDataAndWait();
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr("was not written")));
    EXPECT_EQ(counts(standard), "1 0 0");

    restart();
    EXPECT_EQ(mode(), standard);
    EXPECT_EQ(counts(standard), "0 0 0");
}

TEST_F(DamagedFiles, AFolderInTheWayOfTheFileIsSetAside)
{
    std::filesystem::create_directory(defaultFile());
    stroke({1.0, 1.0}, {2.0, 2.0});
    listenForErrors();

    canvas->saveDefaultAnnotationDataAndWait();
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr(defaultFile() + " was not written")));
    EXPECT_EQ(counts(standard), "1 0 0");

    systemLog.clear();
    desk.files().setAge(defaultFile(), 0.0);
    restart();
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr(defaultFile() + " can't be read and was set "
                                                                 "aside as")));
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->saveDefaultAnnotationDataAndWait();
    restart();
    EXPECT_EQ(counts(standard), "1 0 0");
}

TEST_F(DamagedFiles, ADamagedDefaultFileIsSetAsideAndTheCanvasStartsClean)
{
    write(defaultFile(), "no archive");
    listenForErrors();

    restart();

    EXPECT_EQ(mode(), standard);
    EXPECT_EQ(counts(standard), "0 0 0");
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr("can't be read and was set aside as")));
    EXPECT_FALSE(desk.files().exists(defaultFile()));
    EXPECT_THAT(filesIn(AppConstants::instance().DefaultAppDataPath),
                ElementsAre(HasSubstr("save_iap.dat.damaged-")));
}

TEST_F(DamagedFiles, TwoOfOneSecondAreBothKept)
{
    for (const char *text : {"no archive", "none either"}) {
        write(defaultFile(), text);
        restart();
    }

    EXPECT_THAT(filesIn(AppConstants::instance().DefaultAppDataPath),
                ElementsAre(HasSubstr("save_iap.dat.damaged-"), ::testing::EndsWith("-2")));
}

TEST_F(DamagedFiles, AnOldDamagedFileIsLeftAlone)
{
    write(defaultFile(), "no archive");
    ASSERT_TRUE(desk.files().setAge(defaultFile(), 8000.0));
    listenForErrors();

    restart();

    EXPECT_TRUE(systemLog.empty());
    EXPECT_TRUE(desk.files().exists(defaultFile()));
}

TEST_F(DamagedFiles, AnUnknownModeCountsAsDamagedAndIsNamed)
{
    copyFixture("unknown_mode.dat", defaultFile());
    desk.files().setAge(defaultFile(), 0.0);
    listenForErrors();

    restart();

    EXPECT_EQ(counts(standard), "0 0 0");
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr("there is no annotation mode "
                                                 "\"AnnotationModeFilm\"")));
}

TEST_F(DamagedFiles, RawDataThatIsNoArchiveLeavesTheSessionAsItWas)
{
    const std::string data = dataPath("Tablet/Flipchart/.RawData/page.data");
    write(data, "no archive");

    expectUntouched(data);
    EXPECT_TRUE(desk.files().exists(data)) << "raw data stays beside its picture";
}

TEST_F(DamagedFiles, RawDataThatIsDamagedAtItsEndLeavesTheSessionAsItWas)
{
    const std::string data = dataPath("Tablet/Flipchart/.RawData/page.data");
    copyFixture("damaged_at_the_end.data", data);

    expectUntouched(data);
}

TEST_F(DamagedFiles, RawDataThatIsAFolderLeavesTheSessionAsItWas)
{
    const std::string data = dataPath("Tablet/Flipchart/.RawData/page.data");
    std::filesystem::create_directory(data);

    expectUntouched(data);
}

TEST_F(DamagedFiles, RawDataThatIsTooLargeLeavesTheSessionAsItWas)
{
    const std::string data = dataPath("Tablet/Flipchart/.RawData/page.data");
    write(data, "");
    std::filesystem::resize_file(data, (1ULL << 30U) + 1U);

    expectUntouched(data);
}

TEST_F(DamagedFiles, APictureWithDamagedRawDataIsShownPlainly)
{
    const std::string path = picture("Tablet/Snapshot/one.png");
    picture("Tablet/Snapshot/.RawData/one.RawBG", 0xFF0000FFU);
    write(dataPath("Tablet/Snapshot/.RawData/one.data"), "no archive");
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->setIsChange(false);
    listenForErrors();

    canvas->enterSnapshotEditingModeWithImageFile(path);

    EXPECT_EQ(mode(), snapshot);
    EXPECT_EQ(counts(snapshot), "0 0 0");
    EXPECT_EQ(counts(standard), "1 0 0");
    EXPECT_EQ(canvas->paths().snapshotImageFilePath, path);
    EXPECT_EQ(backdropPixel(), 0xFF00FF00U);
    EXPECT_THAT(systemLog, Contains(HasSubstr("one.data can't be read")));
}

TEST_F(DamagedFiles, EveryShorterPieceOfAFileIsRefusedWhole)
{
    drawALittle();
    canvas->saveDefaultAnnotationDataAndWait();
    const platform::Data whole = bytesOf(defaultFile());
    OrvFrameworkLogger::shared().setStandardOutput(false);
    for (std::size_t length = 0; length < whole.size(); length += 7) {
        const platform::Data piece(whole.begin(),
                                   whole.begin() + static_cast<std::ptrdiff_t>(length));
        ASSERT_TRUE(desk.files().writeAtomically(defaultFile(), piece));

        restart();

        EXPECT_EQ(counts(standard), "0 0 0") << length;
        EXPECT_FALSE(desk.files().exists(defaultFile())) << length;
    }
}

} // namespace
} // namespace orv::test
