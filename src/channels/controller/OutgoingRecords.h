#pragma once

#include "OrvAnnotation/Events.h"
#include "OrvAnnotation/Records.h"
#include "channels/controller/ControllerState.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orv {

/// Builds the records for the client and hands them to the host's senders.
///
/// Thread   any, under the monitor; the senders are called on the same thread.
/// Fails    without a sender the record is lost, and a line of level 4 says so.
class OutgoingRecords {
public:
    explicit OutgoingRecords(ControllerState &state) : state_(state) {}

    /// First generation: the session has opened or closed.
    void SyncAnnotationMode(bool shown);
    /// Second generation: a mode has changed; takes the user info of "switchModeEvent".
    void SyncAnnotation2Mode(const EventDictionary &dictionary);
    void SyncAnnotation2UnDo(std::uint32_t undoCount, std::uint32_t redoCount);
    void HelpRequested();
    void ShowKeyboard();
    void HideKeyboard();
    void SnapshotSuccess();
    /// Takes a dictionary with the keys "wparam" and "lparam".
    void VideoRecordingAck(const EventDictionary &dictionary);
    void ToolChanged();
    void SwitchSpecialMode(std::uint32_t mode, bool act);
    void HandleCommandEvent(std::uint32_t command, std::uint32_t act);

    void SendCommandToClient(const stCommand_mgs &record) { CommandApp2Client(record); }
    /// All bytes in one call. False without a sender.
    bool DataApp2Client(const std::vector<std::uint8_t> &data);
    /// The whole file. False when it can't be read or there is no sender.
    bool DataFileApp2Client(const std::string &folder, const std::string &file);

private:
    [[nodiscard]] stCommand_mgs record(std::uint32_t wparam, std::uint32_t lparam) const;
    void CommandApp2Client(const stCommand_mgs &record);

    ControllerState &state_;
};

} // namespace orv
