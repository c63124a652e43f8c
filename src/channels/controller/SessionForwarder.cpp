#include "channels/controller/SessionForwarder.h"

#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"
#include "platform/ports/Processes.h"

#include <fmt/format.h>

#include <functional>
#include <string>

namespace orv {

namespace {

using ManagerPtr = std::shared_ptr<AnnotationManager>;

constexpr const char *kUniversalaccessScript =
    "tell application \"System Preferences\"\n"
    "activate (reveal anchor \"Privacy\" of pane \"com.apple.preference.security\")\n"
    "end tell";

constexpr const char *kKeynoteScript =
    "on appIsRunning(appName)\n"
    "tell application \"System Events\" to (name of processes) contains appName\n"
    "end appIsRunning\n"
    "\n"
    "if appIsRunning(\"Keynote\") then\n"
    "tell application \"Keynote\" to activate\n"
    " tell application \"System Events\"\n"
    " tell process \"Keynote\"\n"
    " keystroke \",\" using command down\n"
    " end tell\n"
    " end tell\n"
    "end if\n";

void logName(const char *operation)
{
    logLine(1, fmt::format("-[AnnotationController {}]", operation));
}

// The session stays alive until the queued request has run, whatever the controller does.
void onMain(const ManagerPtr &manager, std::function<void(AnnotationManager &)> request)
{
    platform::Platform::current().mainThread().post(
        [manager, request = std::move(request)] { request(*manager); });
}

void runAppleScript(const char *script)
{
    platform::Platform::current().mainThread().background(
        [script] { platform::Platform::current().processes().runScript(script); });
}

constexpr std::int32_t kToolbarHidden = 2;

} // namespace

void SessionForwarder::NextAppPageUp()
{
    const auto &manager = state_.m_annotationManager;
    if (!manager) {
        return;
    }
    logName("NextAppPageUp");
    if (manager->isEnterSpecialMode() < kToolbarHidden) {
        onMain(manager, [](AnnotationManager &session) { session.handlePrevPageRequest(); });
    }
}

void SessionForwarder::NextAppPageDown()
{
    const auto &manager = state_.m_annotationManager;
    if (!manager) {
        return;
    }
    logName("NextAppPageDown");
    if (manager->isEnterSpecialMode() < kToolbarHidden) {
        onMain(manager, [](AnnotationManager &session) { session.handleNextPageRequest(); });
    }
}

void SessionForwarder::AppPageUpAndDown(std::uint32_t direction)
{
    constexpr std::uint32_t up = 2;
    constexpr std::uint32_t down = 3;
    if (direction == up) {
        NextAppPageUp();
    } else if (direction == down) {
        NextAppPageDown();
    }
}

void SessionForwarder::ShowAnnotationToolbar()
{
    const auto &manager = state_.m_annotationManager;
    if (!manager) {
        return;
    }
    logName("ShowAnnotationToolbar");
    if (manager->isEnterSpecialMode() == 0) {
        onMain(manager, [](AnnotationManager &session) { session.maximizeAnnotationToolbox(); });
    }
}

void SessionForwarder::HideAnnotationToolbar()
{
    const auto &manager = state_.m_annotationManager;
    if (!manager) {
        return;
    }
    logName("HideAnnotationToolbar");
    if (manager->isEnterSpecialMode() == 0) {
        onMain(manager, [](AnnotationManager &session) { session.minimizeAnnotationToolbox(); });
    }
}

void SessionForwarder::RedoAndUndo(std::uint32_t action)
{
    constexpr std::uint32_t undo = 1;
    constexpr std::uint32_t redo = 2;
    const auto &manager = state_.m_annotationManager;
    if (!manager) {
        return;
    }
    logName("RedoAndUndo:");
    if (action == undo) {
        onMain(manager, [](AnnotationManager &session) { session.handleUndoRequest(); });
    } else if (action == redo) {
        onMain(manager, [](AnnotationManager &session) { session.handleRedoRequest(); });
    }
}

void SessionForwarder::EraseAll()
{
    const auto &manager = state_.m_annotationManager;
    if (!manager) {
        return;
    }
    logName("EraseAll");
    onMain(manager, [](AnnotationManager &session) { session.handleEraseAllRequest(); });
}

void SessionForwarder::DoSave(std::uint32_t action)
{
    if (const auto manager = state_.m_annotationManager) {
        logName("DoSave:");
        manager->handleDoSave(action);
    }
}

void SessionForwarder::DoVideoRecording(std::uint32_t action)
{
    if (const auto manager = state_.m_annotationManager) {
        logName("DoVideoRecording:");
        manager->handleVideoRecording(action);
    }
}

void SessionForwarder::controlMouseEvent(const ControlEvent &event)
{
    if (const auto &manager = state_.m_annotationManager) {
        onMain(manager,
               [event](AnnotationManager &session) { session.handleControlMouseEvent(event); });
    }
}

void SessionForwarder::controlKeyboardEvent(const ControlEvent &event)
{
    if (const auto &manager = state_.m_annotationManager) {
        onMain(manager,
               [event](AnnotationManager &session) { session.handleControlKeyboardEvent(event); });
    }
}

void SessionForwarder::SpotlightPichAct(std::uint32_t action, std::int32_t pichLength)
{
    constexpr std::uint32_t move = 1;
    const auto &manager = state_.m_annotationManager;
    if (!manager) {
        return;
    }
    if (action == move) {
        onMain(manager, [pichLength](AnnotationManager &session) {
            session.handleSpotlightPichMove(pichLength);
        });
    } else {
        const bool begin = action == 0;
        onMain(manager,
               [begin](AnnotationManager &session) { session.handleSpotlightPichAct(begin); });
    }
}

void SessionForwarder::FileTransferStatus(std::uint32_t status)
{
    constexpr std::uint32_t closeDialog = 4;
    const auto &manager = state_.m_annotationManager;
    if (!manager) {
        return;
    }
    logLine(1, fmt::format("-[AnnotationController FileTransferStatus:] [{}]", status));
    if (status == 0 || status == 2 || status == 3) {
        onMain(manager, [status](AnnotationManager &session) {
            session.updateFileTransferStatusDlg(status);
        });
    } else if (status == closeDialog) {
        onMain(manager, [](AnnotationManager &session) { session.closeFileTransferStatusDlg(); });
    }
}

void SessionForwarder::openUniversalaccessSetting()
{
    runAppleScript(kUniversalaccessScript);
}

void SessionForwarder::openKeynoteSetting()
{
    runAppleScript(kKeynoteScript);
}

} // namespace orv
