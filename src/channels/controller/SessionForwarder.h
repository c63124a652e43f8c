#pragma once

#include "channels/controller/ControllerState.h"

#include <cstdint>

namespace orv {

/// Takes the client's requests to the session: what draws is queued to the main thread without
/// waiting, the rest runs on the caller's. Without a session each does nothing.
class SessionForwarder {
public:
    explicit SessionForwarder(ControllerState &state) : state_(state) {}

    /// Not while a dialog or a transfer is on.
    void NextAppPageUp();
    void NextAppPageDown();
    /// 2 up, 3 down.
    void AppPageUpAndDown(std::uint32_t direction);
    /// Not in any special mode.
    void ShowAnnotationToolbar();
    void HideAnnotationToolbar();
    /// 1 undo, 2 redo.
    void RedoAndUndo(std::uint32_t action);
    void EraseAll();
    void DoSave(std::uint32_t action);
    void DoVideoRecording(std::uint32_t action);
    void controlMouseEvent(const ControlEvent &event);
    void controlKeyboardEvent(const ControlEvent &event);
    void SpotlightPichAct(std::uint32_t action, std::int32_t pichLength);
    void FileTransferStatus(std::uint32_t status);
    /// On a worker thread of their own.
    void openUniversalaccessSetting();
    void openKeynoteSetting();

private:
    ControllerState &state_;
};

} // namespace orv
