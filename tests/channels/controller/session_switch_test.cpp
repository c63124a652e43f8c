#include "HostDesk.h"

#include "platform/foundation/Exception.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(HostDesk, OpeningTheSecondGenerationAcknowledgesByteByByte)
{
    open(17);
    const auto records = takeRecords();
    // Remote input is welcomed on the calling thread; the acknowledgement waits for the main one.
    EXPECT_THAT(records, Contains("effd 1 0 0 0 0"));
    EXPECT_THAT(records, Contains("effe 1 0 0 0 0"));
    EXPECT_THAT(records, Contains("8000 0 1 0 1 1"));
    EXPECT_TRUE(state().m_bInAnnotationMode);
}

TEST_F(HostDesk, ClosingTheSecondGenerationAcknowledgesAndStopsListening)
{
    open(17);
    wait(3.0);
    takeRecords();
    close();
    const auto records = takeRecords();
    EXPECT_THAT(records, Contains("effd 0 0 0 0 0"));
    EXPECT_THAT(records, Contains("effe 0 0 0 0 0"));
    EXPECT_EQ(records.back(), "8000 0 0 0 0 1");
    EXPECT_FALSE(state().m_bNotificationsSubscribed);
    EXPECT_TRUE(state().m_bInAnnotationMode)
        << "the acknowledgement carries the flag that says so, a moment later";
    EXPECT_NE(manager(), nullptr) << "the session is kept";
}

TEST_F(HostDesk, TheFirstGenerationTogglesAndReportsWithItsOwnRecords)
{
    usePlugin(12);
    send(0);
    // The text tool's menu gives its start values to the canvas, and the pen takes over from it:
    // twice the client is told to put its keyboard away.
    EXPECT_THAT(takeRecords(), ElementsAre("3 1 0 0 0 0", "4 1 0 0 0 0", "7 1 0 0 0 0",
                                           "1 0 0 0 0 0", "1 0 0 0 0 0"));
    send(0);
    EXPECT_THAT(takeRecords(), ElementsAre("4 0 0 0 0 0", "7 0 0 0 0 0", "3 0 0 0 0 0"));
    EXPECT_FALSE(state().m_bInAnnotationMode);
    send(0);
    EXPECT_THAT(takeRecords(), Contains("3 1 0 0 0 0"));
}

TEST_F(HostDesk, ShowHideShowKeepsOneSessionWithItsFirstDevice)
{
    controller->setDeviceName("First");
    open(17);
    const auto first = manager();
    close();
    controller->setDeviceName("Second");
    open(17);
    EXPECT_EQ(manager(), first);
    EXPECT_EQ(AppConstants::instance().DeviceName(), "First");
}

TEST_F(HostDesk, AnotherPlugInGetsAnotherSessionAndTheOldOneIsNotTerminated)
{
    useDebug();
    controller->setDebug(true);
    open(17);
    const std::weak_ptr<AnnotationManager> first = manager();
    close();
    takeLog();
    open(16);
    EXPECT_NE(manager(), first.lock());
    EXPECT_THAT(log, Contains(HasSubstr("change plug-in ID : [17][16]")));
    for (const std::string &line : log) {
        EXPECT_EQ(line.find("[AnnotationManager terminate]"), std::string::npos) << line;
    }
}

TEST_F(HostDesk, AnEmptyDeviceNameLeavesTheDefault)
{
    controller->setDeviceName("");
    open(17);
    EXPECT_EQ(AppConstants::instance().DeviceName(), "Default Data");
}

TEST_F(HostDesk, TheDebugFlagOpensTheLogFromTheNextShowOn)
{
    open(17);
    EXPECT_THAT(log, IsEmpty());
    close();
    controller->setDebug(true);
    open(17);
    EXPECT_THAT(log, Contains(HasSubstr("[AnnotationManager openAnnotationToolbox]")));
    EXPECT_EQ(OrvFrameworkLogger::shared().getLevel("OrvAnnotation"), 0U);
    close();
    controller->setDebug(false);
    open(17);
    EXPECT_EQ(OrvFrameworkLogger::shared().getLevel("OrvAnnotation"), 4U);
}

TEST_F(HostDesk, TheDebugColoursReachTheSession)
{
    const std::map<std::string, std::string> dict{{"pBorderColorHex", "#010203"}};
    controller->setDebugDict(&dict);
    open(17);
    EXPECT_EQ(manager()->debugSetting()->pBorderColorHex(), "#010203");
    EXPECT_EQ(manager()->debugSetting()->pDebugInfoColorHex(), "");
    EXPECT_EQ(manager()->debugSetting()->offset(), 10.0);
}

TEST_F(HostDesk, RecoveryHidesTheSessionAndKeepsIt)
{
    open(17);
    const auto session = manager();
    controller->RecoveryDesktop();
    EXPECT_EQ(manager(), session);
    EXPECT_FALSE(state().m_bInAnnotationMode);
    EXPECT_FALSE(state().m_bNotificationsSubscribed);
    EXPECT_TRUE(session->canvasHandler()->isHidden());
    drain();
    takeRecords();
    session->requestHelp();
    drain();
    EXPECT_THAT(takeRecords(), IsEmpty()) << "nobody listens any more";
}

TEST_F(HostDesk, AControllerThatGoesTerminatesItsSession)
{
    open(17);
    const auto session = manager();
    systemLog.clear();
    controller.reset();
    EXPECT_EQ(session->canvasHandler(), nullptr);
    EXPECT_EQ(session->annotationsView(), nullptr);
    // The logger is a new one by then, without a delegate.
    EXPECT_THAT(systemLog, ElementsAre(HasSubstr("-[AnnotationManager terminate] Window="),
                                       HasSubstr("-[AnnotationManager terminate] finally")));
    session->handleUndoRequest();
    session->handleEraseAllRequest();
    session->openAnnotationToolbox();
    session->closeAnnotationToolbox();
    session->handleControlMouseEvent({5, 1, 1});
    session->handleSetToolRequest({});
    drain();
}

TEST_F(HostDesk, WhatIsQueuedWhenTheControllerGoesIsHarmless)
{
    open(17);
    stCommand_mgs record;
    record.pluginID = 17;
    record.wparam = 19;
    record.lparam = 1;
    controller->CommandClient2App(record);
    record.wparam = 0xEFFD;
    record.lparam = 5;
    controller->CommandClient2App(record);
    controller.reset();
    mailbox().records.clear();
    drain();
    wait(5.0);
    EXPECT_THAT(mailbox().records, IsEmpty());
}

TEST_F(HostDesk, EventsOfAnotherPlugInOrProcessAreDropped)
{
    open(17);
    wait(3.0);
    takeRecords();
    EXPECT_TRUE(
        controller->parts().receivers->checkActUniqueID(17, AppConstants::instance().AppActPid()));
    EXPECT_FALSE(
        controller->parts().receivers->checkActUniqueID(16, AppConstants::instance().AppActPid()));
    EXPECT_FALSE(controller->parts().receivers->checkActUniqueID(
        17, AppConstants::instance().AppActPid() + 1));

    AppConstants::instance().setAppActUniqueID(16);
    sendNotifyMeesage("helpRequested", 1, 0);
    drain();
    EXPECT_THAT(takeRecords(), IsEmpty());
    AppConstants::instance().setAppActUniqueID(17);
}

TEST_F(HostDesk, AnEventAfterTheSessionHasGoneReachesNobody)
{
    open(17);
    takeRecords();
    state().m_annotationManager.reset();
    sendNotifyMeesage("helpRequested", 1, 0);
    sendNotifyMeesage("spotlightEvent", 1, 0);
    drain();
    EXPECT_THAT(takeRecords(), IsEmpty());
}

TEST_F(HostDesk, EventsBecomeTheirRecords)
{
    open(17);
    wait(3.0);
    takeRecords();
    sendNotifyMeesage("textModeEvent", 1, 0);
    sendNotifyMeesage("textModeEvent", 0, 0);
    sendNotifyMeesage("helpRequested", 1, 0);
    sendNotifyMeesage("snapshotTaken", 0, 0);
    sendNotifyMeesage("videoRecording", 0x8015, 0x10002);
    drain();
    EXPECT_THAT(takeRecords(), ElementsAre("1 1 0 0 0 0", "1 0 0 0 0 0", "0 1 0 0 0 0",
                                           "12 1 0 0 0 1", "8015 1 1 0 2 0"));
    sendNotifyMeesage("shadeModeEvent", 1, 0);
    sendNotifyMeesage("spotlightEvent", 0, 0);
    sendNotifyMeesage("pagebtnStatus", 7, 0);
    sendNotifyMeesage("sendCommandHandle", 20, 3);
    sendNotifyMeesage("toolChanged", 1, 1);
    EXPECT_THAT(takeRecords(),
                ElementsAre("8 1 0 0 0 0", "9 0 0 0 0 0", "10 1 0 0 0 0", "14 3 0 0 0 0"))
        << "these do not wait for the main thread";
}

TEST_F(HostDesk, TheFirstGenerationHasItsOwnNumbers)
{
    usePlugin(12);
    controller->setDebug(true);
    send(0);
    takeRecords();
    sendNotifyMeesage("snapshotTaken", 0, 0);
    drain();
    sendNotifyMeesage("pagebtnStatus", 0, 0);
    EXPECT_THAT(takeRecords(), ElementsAre("2 1 0 0 0 0", "a 0 0 0 0 0"));
    takeLog();
    sendNotifyMeesage("videoRecording", 0x15, 0);
    sendSwitchModeAckInfo(0, 0, 1, 1, true, true);
    drain();
    EXPECT_THAT(takeRecords(), IsEmpty());
    EXPECT_THAT(takeLog(), ElementsAre(HasSubstr("-[AnnotationController VideoRecordingAck:]")));
}

TEST_F(HostDesk, CountsAreCarriedInSixteenBits)
{
    open(17);
    wait(3.0);
    takeRecords();
    sendNotifyMeesage("undoreoEvent", 70000, 2);
    EXPECT_THAT(takeRecords(),
                ElementsAre(fmt::format("11 0 {} {} 2 0", 70000 & 0xFF, (70000 >> 8) & 0xFF)));
}

TEST_F(HostDesk, AModeSwitchWithoutDataKeepsOnlyItsExtFlag)
{
    open(17);
    wait(3.0);
    takeRecords();
    sendNotifyMeesage("switchModeEvent", 3, 1);
    drain();
    EXPECT_THAT(takeRecords(), ElementsAre("0 3 0 0 0 1"));
    sendSwitchModeAckInfo(1, 1, 4, 1, false, true);
    drain();
    EXPECT_THAT(takeRecords(), ElementsAre("8000 1 1 1 4 0"));
}

TEST_F(HostDesk, ListeningStaysOnTheNamesOfTheMomentItBegan)
{
    open(17);
    wait(3.0);
    takeRecords();
    controller->SetActiveOpt(0, 16);
    sendNotifyMeesage("spotlightEvent", 1, 0);
    ASSERT_EQ(mailbox().records.size(), 1U);
    EXPECT_EQ(mailbox().records[0].pluginID, 16) << "the record carries the ID of the moment";
}

TEST_F(HostDesk, WhoListensIsNotRegisteredASecondTime)
{
    open(17);
    open(16);
    wait(3.0);
    mailbox().records.clear();
    ASSERT_EQ(manager()->appActUniqueID(), 16U);
    sendNotifyMeesage("spotlightEvent", 1, 0);
    EXPECT_THAT(takeRecords(), IsEmpty()) << "the observers still stand on the names of 17";

    controller->RecoveryDesktop();
    open(16);
    wait(3.0);
    takeRecords();
    sendNotifyMeesage("spotlightEvent", 1, 0);
    EXPECT_THAT(takeRecords(), ElementsAre("9 1 0 0 0 0"));
}

TEST_F(HostDesk, LeftEmptyOperationsAndPacketsDoNothing)
{
    open(17);
    takeRecords();
    controller->SyncAnnotation2Mode(true, true);
    controller->SetDataCHProcess(3);
    controller->DataClient2App({});
    drain();
    EXPECT_THAT(takeRecords(), IsEmpty());
}

TEST_F(HostDesk, AnExceptionThatLeavesATaskIsLoggedWithItsCallStack)
{
    useDebug();
    desk.mainThread().post([] { throw platform::Exception("a task went wrong"); });
    drain();
    EXPECT_THAT(
        log, ElementsAre(::testing::StartsWith("1 -[OrvAnnotation][DEBUG] a task went wrong\n")));
}

TEST_F(HostDesk, AMissingLayoutIsLoggedAndNothingEscapes)
{
    platform::VirtualSettings settings = deskSettings(home.path());
    settings.resources = home.path() + "/nowhere";
    platform::VirtualPlatform bare(settings);
    platform::Platform::install(&bare);
    useDebug();
    open(17);
    EXPECT_THAT(log, Contains(HasSubstr("AnnotationManager.json can't be read")));
    EXPECT_EQ(manager()->annotationsView(), nullptr);
    close();
    controller.reset();
    platform::Platform::install(&desk);
}

} // namespace
} // namespace orv::test
