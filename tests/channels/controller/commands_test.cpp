#include "HostDesk.h"

#include "channels/controller/RecordWords.h"

#include <gmock/gmock.h>

#include <chrono>

namespace orv::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

std::string logged(const std::string &text)
{
    return "1 -[OrvAnnotation][DEBUG] " + text;
}

/// A session that is open, with everything logged and nothing in the mailbox.
class OpenSession : public HostDesk {
protected:
    void openWith(std::uint32_t id)
    {
        controller->setDebug(true);
        if (id >= 16 && id <= 18) {
            open(id);
        } else {
            usePlugin(id);
            send(0);
        }
        wait(3.0);
        takeLog();
        takeRecords();
    }
    void pressAndRelease()
    {
        const auto view = manager()->annotationsView();
        platform::Event event;
        event.location = {10.0, 10.0};
        event.windowNumber = view->getWindow()->windowNumber();
        event.type = platform::EventType::leftMouseDown;
        view->getWindow()->sendEvent(event);
        event.type = platform::EventType::leftMouseUp;
        view->getWindow()->sendEvent(event);
        drain();
        takeLog();
        takeRecords();
    }
};

TEST_F(HostDesk, ARecordOfAnotherPlugInDoesNothingAndLogsNothing)
{
    usePlugin(17);
    useDebug();
    plugin = 16;
    send(0, 0, {1});
    EXPECT_EQ(manager(), nullptr);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(HostDesk, BeforeAPlugInIsActiveRecordsForZeroGoToTheFirstGeneration)
{
    useDebug();
    send(83);
    EXPECT_THAT(
        log, ElementsAre(logged("-[AnnotationController ProcessCommand:] - pluginID(0) wparam(83) "
                                "lparam(0)")));
}

TEST_F(HostDesk, AnIdentifierAbove65535NeverMatches)
{
    controller->SetActiveOpt(0, 65536 + 17);
    stCommand_mgs record;
    record.pluginID = 17;
    record.ext[0] = 1;
    controller->CommandClient2App(record);
    EXPECT_EQ(manager(), nullptr);
}

TEST_F(HostDesk, CommandsWithoutASessionDoNothing)
{
    usePlugin(17);
    useDebug();
    for (const std::uint32_t number :
         {2U, 16U, 17U, 18U, 19U, 21U, 0xEFFBU, 0xEFFCU, 0xEFFDU, 0xEFFEU}) {
        send(number, 1);
    }
    EXPECT_THAT(log, IsEmpty());
    EXPECT_THAT(mailbox().records, IsEmpty());
    send(1, 8);
    send(0, 3, {1});
    EXPECT_THAT(log, ElementsAre(HasSubstr("HandleDrawType:"), HasSubstr("SwitchMode:pInfo:")));
    EXPECT_EQ(manager(), nullptr);
}

TEST_F(HostDesk, AHideWithoutASessionLeavesNothingSubscribed)
{
    usePlugin(17);
    close();
    EXPECT_EQ(manager(), nullptr);
    EXPECT_FALSE(state().m_bNotificationsSubscribed);
    EXPECT_FALSE(state().m_bInAnnotationMode);
}

TEST_F(OpenSession, FirstGeneration82LogsAndDoesNothingAnd83Undoes)
{
    openWith(12);
    pressAndRelease();
    ASSERT_EQ(annotationCount(), 1U);

    send(82);
    EXPECT_THAT(takeLog(), Contains(logged("-[AnnotationController RedoAndUndo:]")));
    EXPECT_EQ(annotationCount(), 1U);

    send(83);
    EXPECT_EQ(annotationCount(), 0U);
    send(82);
    EXPECT_EQ(annotationCount(), 0U) << "this generation has no redo";
}

TEST_F(OpenSession, FirstGenerationIgnoresWhatIsNotInItsTable)
{
    openWith(12);
    for (const std::uint32_t number : {3U, 31U, 35U, 81U, 85U, 87U, 90U, 95U, 97U, 0xFFFFFFFFU}) {
        send(number, 1);
        EXPECT_THAT(takeLog(), ElementsAre(HasSubstr("ProcessCommand:"))) << number;
    }
}

TEST_F(OpenSession, SecondGenerationMasksBit12AndTheUpperHalfOnly)
{
    openWith(17);
    pressAndRelease();

    send(0x8011, 1);
    EXPECT_EQ(annotationCount(), 1U);
    EXPECT_THAT(takeLog(), IsEmpty());

    send(0x1011, 1);
    EXPECT_EQ(annotationCount(), 0U);
    send(0x70011, 2);
    EXPECT_EQ(annotationCount(), 1U);
    send(0xFFFE, 9);
    EXPECT_THAT(takeLog(), Contains(logged("skipped the keyboard event"))) << "as 0xEFFE";
}

TEST_F(OpenSession, EraseAllWantsExactlyOne)
{
    openWith(17);
    pressAndRelease();
    send(19, 2);
    wait(1.0);
    EXPECT_EQ(annotationCount(), 1U);
    send(19, 1);
    wait(1.0);
    EXPECT_EQ(annotationCount(), 0U);
}

TEST_F(OpenSession, SettingsOpenOneAtATime)
{
    std::vector<std::string> scripts;
    desk.hooks().script = [&scripts](const std::string &text) { scripts.push_back(text); };
    openWith(17);

    send(20, 3);
    ASSERT_EQ(scripts.size(), 1U) << "with both bits only the first runs";
    EXPECT_THAT(scripts[0], HasSubstr("com.apple.preference.security"));
    send(20, 2);
    ASSERT_EQ(scripts.size(), 2U);
    EXPECT_THAT(scripts[1], HasSubstr("keystroke \",\" using command down"));
    send(20, 4);
    EXPECT_EQ(scripts.size(), 2U);
}

TEST_F(OpenSession, AModeOutsideTheTableIsLoggedAndNothingElse)
{
    openWith(17);
    for (const std::uint32_t mode : {5U, 0xFFFFFFFFU}) {
        send(0, mode, {1, 2});
        EXPECT_THAT(takeLog(), ElementsAre(logged(fmt::format(
                                   "-[AnnotationController SwitchMode:pInfo:] Received command - "
                                   "SwitchMode, Mode:{} Sub:2 Show:1",
                                   static_cast<std::int32_t>(mode)))));
    }
    EXPECT_THAT(takeRecords(), IsEmpty());
}

TEST_F(OpenSession, ToolbarRequestsWaitForNoSpecialModeAndPagesForNoDialog)
{
    openWith(12);
    manager()->setIsEnterSpecialMode(1);
    manager()->outlets().toolboxWindow->hideToolboxWindow(false);
    send(34, 1);
    EXPECT_TRUE(manager()->outlets().toolboxWindow->isIconized()) << "ignored in a special mode";
    send(32);
    EXPECT_THAT(takeLog(), Contains(logged("-[AnnotationController NextAppPageUp]")));

    manager()->setIsEnterSpecialMode(0);
    send(34, 1);
    EXPECT_FALSE(manager()->outlets().toolboxWindow->isIconized());
    send(34, 0);
    wait(0.29);
    EXPECT_FALSE(manager()->outlets().toolboxWindow->isIconized());
    wait(1.5);
    EXPECT_TRUE(manager()->outlets().toolboxWindow->isIconized());
}

TEST_F(OpenSession, PagesTurnInASpecialModeButNotDuringADialog)
{
    openWith(12);
    const auto queuesSomething = [this](std::uint32_t number) {
        stCommand_mgs record;
        record.pluginID = 12;
        record.wparam = number;
        controller->CommandClient2App(record);
        return desk.mainThread().waitAndDrain(std::chrono::milliseconds(0));
    };
    for (const std::uint32_t page : {32U, 33U}) {
        manager()->setIsEnterSpecialMode(1);
        EXPECT_TRUE(queuesSomething(page)) << page;
        manager()->setIsEnterSpecialMode(2);
        EXPECT_FALSE(queuesSomething(page)) << page;
    }
    EXPECT_FALSE(queuesSomething(34)) << "the toolbar waits for no special mode at all";
    manager()->setIsEnterSpecialMode(0);
    EXPECT_TRUE(queuesSomething(34));
}

TEST(RecordWords, MouseWordsAreSwappedAndAPinchInTheSamePlaceIsNot)
{
    stCommand_mgs record;
    record.ext = {0xFF, 0xFF, 0xFF, 0xFE, 0x12, 0x34};
    EXPECT_EQ(bigEndian32(record, 0), 0xFFFFFFFEU);
    EXPECT_EQ(pinchLength(record), static_cast<std::int32_t>(0xFEFFFFFFU));
    EXPECT_EQ(littleEndian16(record, 4), 0x3412U);
    record.ext = {0xFE, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(pinchLength(record), -2) << "a pinch that closes";
}

TEST_F(OpenSession, ADrawTypeIsLoggedAndSetsTheTool)
{
    openWith(17);
    send(1, 8, {2, 0, 1, 0, 20, 0, 255, 255, 128, 0});
    EXPECT_THAT(takeLog(),
                Contains(logged("-[AnnotationController HandleDrawType:] \n\t- DrawType:8\n\t- "
                                "DrawSubType:2\n\t- Spacing:1\n\t- Size:20\n\t- "
                                "Color:(FF,FF,80,00) - (255,255,128,0)")));
    const auto tool = manager()->currentTool();
    EXPECT_EQ(tool->name(), "pen");
    EXPECT_EQ(tool->annotationSize(), 20.0F);
    EXPECT_TRUE(tool->annotationDash());
    EXPECT_FALSE(tool->fitMode());
    EXPECT_EQ(tool->annotationColor(),
              platform::Color(1.0, static_cast<double>(128.0F / 255.0F), 0.0, 1.0));

    send(1, 1, {0, 0, 0, 0, 7, 0, 128, 0, 0, 255});
    EXPECT_EQ(manager()->currentTool()->name(), "highlighter");
    EXPECT_FALSE(manager()->currentTool()->annotationDash());
}

TEST_F(OpenSession, MouseWordsAreBigEndianAndMakeAStroke)
{
    openWith(17);
    mouse(5, 100, 200);
    mouse(10, 300, 250);
    mouse(6, 300, 250);
    ASSERT_EQ(annotationCount(), 1U);
    const auto view = manager()->annotationsView();
    const auto stroke = std::dynamic_pointer_cast<PathAnnotation>(
        view->document().annotations(view->annotationModeKey())->front());
    EXPECT_EQ(stroke->path().currentPoint(), (platform::Point{300.0, 650.0}));
    EXPECT_THAT(takeRecords(), Contains("11 0 1 0 0 0")) << "one to undo, none to redo";
}

TEST_F(OpenSession, AutoClearIsOnOnlyForOne)
{
    openWith(17);
    EXPECT_TRUE(manager()->m_bAutoClear());
    send(2, 0);
    EXPECT_FALSE(manager()->m_bAutoClear());
    send(2, 1);
    EXPECT_TRUE(manager()->m_bAutoClear());
    send(2, 2);
    EXPECT_FALSE(manager()->m_bAutoClear());
}

TEST_F(OpenSession, FileTransferStatusIsLoggedWithItsNumber)
{
    openWith(17);
    send(0xEFFC, 3);
    EXPECT_THAT(takeLog(), ElementsAre(logged("-[AnnotationController FileTransferStatus:] [3]")));
}

TEST_F(HostDesk, NullSendersAreRefusedAndTheOldOneStays)
{
    useDebug();
    controller->SetClientCommandCHSender(nullptr);
    controller->SetClientDataCHSender(nullptr);
    controller->SetClientCommandCHSender(takeRecord);
    controller->SetClientDataCHSender(takeData);
    EXPECT_THAT(log, ElementsAre("4 -[OrvAnnotation][ERROR] SetClientCommandCHSender write Fail",
                                 "4 -[OrvAnnotation][ERROR] SetClientDataCHSender write Fail",
                                 "2 -[OrvAnnotation][INFO] SetClientCommandCHSender write OK",
                                 "2 -[OrvAnnotation][INFO] SetClientDataCHSender write OK"));
}

TEST_F(HostDesk, ANullSenderLeavesTheOneBeforeItInPlace)
{
    controller->SetClientCommandCHSender(nullptr);
    controller->SendCommandToClient({});
    EXPECT_EQ(mailbox().records.size(), 1U);
}

TEST_F(VirtualDesk, WithoutASenderARecordIsLostWithALineOfLevelFour)
{
    struct Host : OrvAnnotationDelegate {
        std::vector<std::string> lines;
        void annotation(AnnotationController &, std::int32_t level,
                        const std::string &line) override
        {
            lines.push_back(fmt::format("{} {}", level, line));
        }
        virtual ~Host() = default;
    } host;
    AnnotationController controller;
    controller.setDelegate(&host);
    controller.SendCommandToClient({});
    controller.SendDataToClient({1, 2});
    EXPECT_THAT(host.lines,
                ElementsAre("4 -[OrvAnnotation][ERROR] -[AnnotationController CommandApp2Client:] "
                            "sendCommandCHData invalid",
                            "4 -[OrvAnnotation][ERROR] -[AnnotationController DataApp2Client:] "
                            "sendDataCHData invalid"));
}

TEST_F(HostDesk, DataAndFilesGoOutInOnePiece)
{
    controller->SendDataToClient({1, 2, 3});
    ASSERT_EQ(mailbox().data.size(), 1U);
    EXPECT_THAT(mailbox().data[0], ElementsAre(1, 2, 3));

    ASSERT_TRUE(desk.files().writeAtomically(home.path() + "/note", {7, 8}));
    controller->SendFileToClient(home.path() + "/", "note");
    ASSERT_EQ(mailbox().data.size(), 2U);
    EXPECT_THAT(mailbox().data[1], ElementsAre(7, 8));

    controller->SendFileToClient(home.path(), "none");
    EXPECT_EQ(mailbox().data.size(), 2U);
}

TEST_F(OpenSession, TheToolChangedRecordCarriesSizeAndColour)
{
    openWith(17);
    send(1, 8, {0, 0, 0, 0, 0x34, 0x12, 255, 10, 20, 30});
    takeRecords();
    controller->ToolChanged();
    ASSERT_EQ(mailbox().records.size(), 1U);
    const stCommand_mgs &record = mailbox().records[0];
    EXPECT_EQ(record.wparam, 6U);
    EXPECT_EQ(record.lparam, 1U);
    EXPECT_EQ(record.ext[4], 0x34);
    EXPECT_EQ(record.ext[5], 0x12);
    EXPECT_EQ(record.ext[6], 0);
    EXPECT_EQ(record.ext[7], 0) << "bits 16 to 23 of the packed colour are empty";
    EXPECT_EQ(record.ext[8], 0);
    EXPECT_EQ(record.ext[9], 30);
}

TEST_F(OpenSession, AMarkerFileIsTouchedOnlyWithASession)
{
    std::vector<std::vector<std::string>> started;
    desk.hooks().process = [&started](const std::vector<std::string> &command) {
        started.push_back(command);
    };
    controller->Createkillmefile();
    EXPECT_THAT(started, IsEmpty());
    openWith(17);
    controller->Createkillmefile();
    ASSERT_EQ(started.size(), 1U);
    EXPECT_THAT(started[0], ElementsAre("/usr/bin/touch", "/tmp/.OrvWhiteboardStatus"));
}

TEST_F(OpenSession, LinesComeWithTheControllerAndTheirLevel)
{
    openWith(17);
    send(0, 5);
    ASSERT_FALSE(senders.empty());
    EXPECT_EQ(senders.back(), controller.get());
}

} // namespace
} // namespace orv::test
