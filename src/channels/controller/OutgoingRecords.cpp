#include "channels/controller/OutgoingRecords.h"

#include "platform/ports/Files.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

#include <algorithm>

namespace orv {

namespace {

// A file that is larger is not handed over in one piece.
constexpr std::uint64_t kLargestFile = 1ULL << 32U;

void put16(stCommand_mgs &record, std::size_t offset, std::uint32_t value)
{
    record.ext.at(offset) = static_cast<std::uint8_t>(value);
    record.ext.at(offset + 1) = static_cast<std::uint8_t>(value >> 8U);
}

} // namespace

stCommand_mgs OutgoingRecords::record(std::uint32_t wparam, std::uint32_t lparam) const
{
    stCommand_mgs record;
    record.pluginID = static_cast<std::uint16_t>(state_.m_dwActUniqueID);
    record.headerWord2 = 1;
    record.wparam = wparam;
    record.lparam = lparam;
    return record;
}

void OutgoingRecords::CommandApp2Client(const stCommand_mgs &record)
{
    if (state_.sendCommandCHData == nullptr) {
        logLine(4, "-[AnnotationController CommandApp2Client:] sendCommandCHData invalid");
        return;
    }
    state_.sendCommandCHData(&record, sizeof record, state_.m_dwActUniqueID);
}

bool OutgoingRecords::DataApp2Client(const std::vector<std::uint8_t> &data)
{
    logLine(1, fmt::format("-[AnnotationController DataApp2Client:] PlguinID:{} datasize:{}",
                           state_.m_dwActUniqueID, data.size()));
    if (state_.sendDataCHData == nullptr) {
        logLine(4, "-[AnnotationController DataApp2Client:] sendDataCHData invalid");
        return false;
    }
    state_.sendDataCHData(data.data(), data.size(), state_.m_dwActUniqueID);
    return true;
}

bool OutgoingRecords::DataFileApp2Client(const std::string &folder, const std::string &file)
{
    const auto bytes =
        platform::Platform::current().files().read(platform::joinPath(folder, file), kLargestFile);
    return bytes && DataApp2Client(*bytes);
}

void OutgoingRecords::SyncAnnotationMode(bool shown)
{
    state_.m_bInAnnotationMode = shown;
    logLine(1, fmt::format("-[AnnotationController SyncAnnotationMode:] [{}]", shown ? 1 : 0));
    SendCommandToClient(record(3, shown ? 1 : 0));
}

void OutgoingRecords::SyncAnnotation2Mode(const EventDictionary &dictionary)
{
    const std::int32_t mode = getDictIntByKey(&dictionary, "wParam");
    const auto flags = static_cast<std::uint32_t>(getDictIntByKey(&dictionary, "lParam"));
    const auto data = getDictDataByKey(&dictionary, "rParam");
    const bool extFlag = (flags & 1U) != 0;
    // Every sender sets the flag, so that a close leaves the belief true too.
    if (mode == 0) {
        state_.m_bInAnnotationMode = extFlag;
    }
    stCommand_mgs record =
        this->record(((flags >> 1U) & 1U) << 15U, static_cast<std::uint32_t>(mode));
    if (data) {
        std::copy_n(data->begin(), std::min(data->size(), record.ext.size()), record.ext.begin());
    }
    record.ext[3] = extFlag ? 1 : 0;
    logLine(1, fmt::format("-[AnnotationController SyncAnnotation2Mode:] Sent command - "
                           "SwitchMode, Mode:{} Sub:{} Show:{} Toolbar:{} Ext[0]:{}",
                           mode, record.ext[1], record.ext[0], record.ext[2], record.ext[3]));
    SendCommandToClient(record);
}

void OutgoingRecords::SyncAnnotation2UnDo(std::uint32_t undoCount, std::uint32_t redoCount)
{
    stCommand_mgs record = this->record(17, 0);
    put16(record, 0, undoCount);
    put16(record, 2, redoCount);
    SendCommandToClient(record);
}

void OutgoingRecords::HelpRequested()
{
    SendCommandToClient(record(0, 1));
}

void OutgoingRecords::ShowKeyboard()
{
    SendCommandToClient(record(1, 1));
}

void OutgoingRecords::HideKeyboard()
{
    SendCommandToClient(record(1, 0));
}

void OutgoingRecords::SnapshotSuccess()
{
    logLine(1, "-[AnnotationController SnapshotSuccess]");
    stCommand_mgs record = this->record(state_.isAnnotation2() ? 18 : 2, 1);
    if (state_.isAnnotation2()) {
        record.ext[3] = 1;
    }
    SendCommandToClient(record);
}

void OutgoingRecords::VideoRecordingAck(const EventDictionary &dictionary)
{
    logLine(1, "-[AnnotationController VideoRecordingAck:]");
    if (!state_.isAnnotation2()) {
        return;
    }
    const auto wparam = static_cast<std::uint32_t>(getDictIntByKey(&dictionary, "wparam"));
    const auto lparam = static_cast<std::uint32_t>(getDictIntByKey(&dictionary, "lparam"));
    const std::uint32_t status = lparam >> 16U;
    stCommand_mgs record = this->record(wparam, status);
    put16(record, 0, status);
    put16(record, 2, lparam);
    SendCommandToClient(record);
}

void OutgoingRecords::ToolChanged()
{
    stCommand_mgs record = this->record(6, 1);
    if (const auto &manager = state_.m_annotationManager) {
        const std::uint32_t color = manager->getCurrentToolColor();
        put16(record, 4, manager->getCurrentToolSize());
        record.ext[7] = static_cast<std::uint8_t>(color >> 16U);
        record.ext[8] = static_cast<std::uint8_t>(color >> 8U);
        record.ext[9] = static_cast<std::uint8_t>(color);
    }
    SendCommandToClient(record);
}

void OutgoingRecords::SwitchSpecialMode(std::uint32_t mode, bool act)
{
    SendCommandToClient(record(mode, act ? 1 : 0));
}

void OutgoingRecords::HandleCommandEvent(std::uint32_t command, std::uint32_t act)
{
    logLine(1, fmt::format("-[AnnotationController HandleCommandEvent:act:] [{:04x}][{}]", command,
                           act));
    SendCommandToClient(record(command, act));
}

} // namespace orv
